#include "Arguments.h"
#include "Commands.h"
#include "Json.h"
#include "Messages.h"
#include "Output.h"
#include "Text.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoUtility/StringConversion.h>

#include <QRegularExpression>

#include <algorithm>

namespace Nereo::Tool {

namespace {

struct Code {
    int code;
    QString name;
    const char* kind;
};

constexpr const char* fieldVariable = "field-variable";
constexpr const char* nodeFlag = "node-flag";

const Code codes[] = {
#define FIELD_VARIABLE(name, code) {code, QStringLiteral(#name), fieldVariable},
#include <NereoFileIO/FieldVariable.def>
#define NODE_FLAG(name, code) {code, QStringLiteral(#name), nodeFlag},
#include <NereoFileIO/NodeFlag.def>
};

/// All of them by their codes, the names that are further ones of a code among them.
std::vector<Code> allCodes()
{
    std::vector<Code> all(std::begin(codes), std::end(codes));
    for (const Code& code : codes) {
        const QString name = Io::CodeNameTable::instance().nameForCode(code.code, false);
        if (code.kind == fieldVariable && name != code.name)
            all.push_back({code.code, name, fieldVariable});
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const Code& left, const Code& right) { return left.code < right.code; });
    return all;
}

std::vector<Code> codesLike(const QString& wanted)
{
    bool isNumber = false;
    const int number = wanted.toInt(&isNumber);
    const QRegularExpression pattern(QRegularExpression::wildcardToRegularExpression(wanted),
                                     QRegularExpression::CaseInsensitiveOption);
    std::vector<Code> found = allCodes();
    const auto isOther = [&](const Code& code) {
        return isNumber ? code.code != number : !pattern.match(code.name).hasMatch();
    };
    found.erase(std::remove_if(found.begin(), found.end(), isOther), found.end());
    return found;
}

void writeJson(const std::vector<Code>& found, Output& output)
{
    Json json(output);
    json.beginObject();
    json.key(QStringLiteral("codes"));
    json.beginArray();
    for (const Code& code : found) {
        json.beginObject();
        json.member("name", code.name);
        json.member("code", qint64(code.code));
        json.member("kind", QString::fromLatin1(code.kind));
        json.endObject();
    }
    json.endArray();
    json.endObject();
}

void writeText(const std::vector<Code>& found, Output& output)
{
    Table table({Table::Right, Table::Left, Table::Left});
    for (const Code& code : found)
        table.add({QString::number(code.code), code.name, QString::fromLatin1(code.kind)});
    output << table.text();
}

} // namespace

ExitCode runCodes(const Arguments& arguments, Output& output)
{
    const bool isAll = arguments.operands().empty();
    const QString wanted = isAll ? QStringLiteral("*") : Util::toQString(arguments.operands().front());
    const std::vector<Code> found = codesLike(wanted);
    if (arguments.has("json"))
        writeJson(found, output);
    else
        writeText(found, output);
    if (found.empty())
        say(QStringLiteral("no name or code is like %1").arg(wanted));
    return found.empty() ? Found : Success;
}

} // namespace Nereo::Tool
