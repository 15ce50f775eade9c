#include "Arguments.h"
#include "Commands.h"
#include "EffectiveSettings.h"
#include "InputPath.h"
#include "Json.h"
#include "Messages.h"
#include "Output.h"
#include "Values.h"

#include <NereoUtility/StringConversion.h>

#include <algorithm>
#include <optional>

namespace Nereo::Tool {

namespace {

using Inspection::FileKind;
using Inspection::Item;

void visitValues(const InputPath& input, FileKind kind, const Inspection::ItemVisitor& visit)
{
    if (!outline(input.path(), kind, visit))
        throw Refusal(about(input.name(), QStringLiteral("is of no kind that is known; --kind can tell")));
}

/// What is asked for, and what the file has of it.
class Answer {
public:
    struct Entry {
        QString address;
        std::optional<QString> text;
    };

    explicit Answer(const std::vector<std::string>& addresses)
    {
        for (const std::string& address : addresses)
            entries_.push_back({Util::toQString(address), {}});
    }

    /// Those that are asked for, and of these the last of an address; all if none is.
    void read(const InputPath& input, FileKind kind)
    {
        if (entries_.empty()) {
            Values values;
            visitValues(input, kind, [&values](const Item& item) { values.add(item); });
            for (const Values::Value& value : values)
                entries_.push_back({value.address, value.text});
            return;
        }
        QHash<QString, std::optional<QString>> texts;
        for (const Entry& entry : entries_)
            texts.insert(entry.address, std::nullopt);
        visitValues(input, kind, [&texts](const Item& item) {
            const auto asked = texts.find(item.address);
            if (asked != texts.end())
                *asked = textOf(item);
        });
        for (Entry& entry : entries_)
            entry.text = texts[entry.address];
        sayMissing(input, kind);
    }

    const std::vector<Entry>& entries() const { return entries_; }
    bool isWhole() const { return isWhole_; }

private:
    void sayMissing(const InputPath& input, FileKind kind)
    {
        isWhole_ = std::all_of(entries_.begin(), entries_.end(),
                               [](const Entry& entry) { return bool(entry.text); });
        if (isWhole_)
            return;
        QStringList known;
        visitValues(input, kind, [&known](const Item& item) { known.append(item.address); });
        for (const Entry& entry : entries_) {
            if (!entry.text)
                say(about(input.name(), missingText(entry.address, known)));
        }
    }

    std::vector<Entry> entries_;
    bool isWhole_ = true;
};

void writeText(const Answer& answer, bool isBare, Output& output)
{
    for (const Answer::Entry& entry : answer.entries()) {
        if (!entry.text)
            continue;
        if (!isBare)
            output << entry.address << "=";
        output << *entry.text << "\n";
    }
}

void writeJson(const Answer& answer, Output& output)
{
    Json json(output);
    json.beginObject();
    for (const Answer::Entry& entry : answer.entries()) {
        json.key(entry.address);
        if (entry.text)
            json.value(*entry.text);
        else
            json.null();
    }
    json.endObject();
}

} // namespace

ExitCode runGet(const Arguments& arguments, Output& output)
{
    const std::vector<std::string>& operands = arguments.operands();
    const InputPath input(operands.front());
    if (arguments.has("effective"))
        return printEffectiveSettings(input, arguments, output);
    Answer answer({operands.begin() + 1, operands.end()});
    FileKind kind = arguments.kind();
    const QString error = input.openError();
    if (!error.isEmpty())
        throw Refusal(about(input.name(), error));
    if (kind == FileKind::Unknown)
        kind = Inspection::kindOfFile(input.path());
    answer.read(input, kind);
    if (arguments.has("json"))
        writeJson(answer, output);
    else
        writeText(answer, operands.size() == 2, output);
    return answer.isWhole() ? Success : Found;
}

} // namespace Nereo::Tool
