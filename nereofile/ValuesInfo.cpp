#include "ValuesInfo.h"

#include "Json.h"
#include "Text.h"
#include "Values.h"

#include <NereoFileIO/ControlFile.h>
#include <NereoUtility/StringConversion.h>

#include <algorithm>

namespace Nereo::Tool {

namespace {

using Inspection::FileKind;

constexpr int indentation = 2;

QString versionOf(FileKind kind, const Values& values)
{
    const char* const address = kind == FileKind::Control ? "header/1" : "version";
    for (const Values::Value& value : values) {
        if (value.address != QLatin1String(address))
            continue;
        if (kind != FileKind::Control)
            return value.text;
        Io::ControlFile file; // knows where in its first line the version stands
        file.setHeaderLine1(Util::toStdString(value.text));
        return file.version().toString();
    }
    return {};
}

/// What is shown first where not all of a file finds room.
int rankOf(const QString& address)
{
    static constexpr const char* firstOnes[] = {
        "title",           "job",    "program",    "units",       "coordinate-system",
        "transient-data/", "flags/", "constants/", "relaxation/", "solution-control/"};
    const auto found =
        std::find_if(std::begin(firstOnes), std::end(firstOnes),
                     [&address](const char* start) { return address.startsWith(QLatin1String(start)); });
    return int(found - std::begin(firstOnes));
}

} // namespace

void writeText(Output& output, const std::string& name, FileKind kind, const Values& values)
{
    constexpr std::size_t most = 40; // a screen
    std::vector<Values::Value> all(values.begin(), values.end());
    std::stable_sort(all.begin(), all.end(), [](const Values::Value& left, const Values::Value& right) {
        return rankOf(left.address) < rankOf(right.address);
    });
    const QString version = versionOf(kind, values);
    output << QStringLiteral("%1: %2%3, %4\n")
                  .arg(oneLine(Util::toQString(name)), kindName(kind),
                       version.isEmpty() ? QString() : QStringLiteral(", version ") + version,
                       counted(qint64(all.size()), "value"));
    Table table({Table::Left, Table::Left});
    for (std::size_t i = 0; i < std::min(all.size(), most); ++i)
        table.add({all[i].address, oneLine(all[i].text)});
    output << table.text(indentation);
    if (all.size() > most)
        output << QStringLiteral("  and %1 more; nereofile get %2 shows them\n")
                      .arg(QString::number(all.size() - most), oneLine(Util::toQString(name)));
}

void writeJson(Json& json, FileKind kind, const Values& values)
{
    json.key(QStringLiteral("version"));
    json.textOrNull(versionOf(kind, values));
    json.key(QStringLiteral("values"));
    json.beginObject();
    for (const Values::Value& value : values) {
        json.key(value.address);
        json.value(value.text);
    }
    json.endObject();
}

} // namespace Nereo::Tool
