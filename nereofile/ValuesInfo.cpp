#include "ValuesInfo.h"

#include "Json.h"
#include "Text.h"
#include "Values.h"

#include <NereoFileIO/ControlFile.h>
#include <NereoUtility/StringConversion.h>

#include <algorithm>
#include <iterator>

namespace Nereo::Tool {

namespace {

using Inspection::FileKind;

constexpr int indentation = 2;
constexpr std::size_t mostShown = 40; // a screen

QString addressOfVersion(FileKind kind)
{
    return kind == FileKind::Control ? QStringLiteral("header/1") : QStringLiteral("version");
}

/// From the text of that address.
QString versionIn(FileKind kind, const QString& text)
{
    if (kind != FileKind::Control || text.isEmpty())
        return text;
    Io::ControlFile file; // knows where in its first line the version stands
    file.setHeaderLine1(Util::toStdString(text));
    return file.version().toString();
}

/// What is shown first where not all of a file finds room.
int rankOf(const QString& address)
{
    static constexpr const char* firstOnes[] = {
        "title",           "job",    "program",    "units",       "coordinate-system",
        "transient-data/", "flags/", "constants/", "relaxation/", "solution-control/"};
    const QChar first = address.isEmpty() ? QChar() : address[0]; // which nearly always is enough to know
    const auto found =
        std::find_if(std::begin(firstOnes), std::end(firstOnes), [&address, first](const char* start) {
            return first == QLatin1Char(*start) && address.startsWith(QLatin1String(start));
        });
    return int(found - std::begin(firstOnes));
}

} // namespace

ValuesInfo::ValuesInfo(FileKind kind) : kind_(kind), addressOfVersion_(addressOfVersion(kind)) {}

void ValuesInfo::add(const Inspection::Item& item)
{
    const QString& address = item.address;
    if (address == addressOfVersion_)
        version_ = textOf(item);
    addresses_.add(address);
    const auto known = places_.constFind(address);
    if (known != places_.constEnd()) {
        shown_[*known].text = textOf(item);
        return;
    }
    // One that has come before and isn't shown finds no room now either.
    const Place place {rankOf(address), number_++};
    if (shown_.size() == mostShown) {
        const auto last = std::prev(shown_.end());
        if (last->first < place)
            return;
        places_.remove(last->second.address);
        shown_.erase(last);
    }
    shown_.emplace(place, Shown {address, textOf(item)});
    places_.insert(address, place);
}

void ValuesInfo::writeText(Output& output, const std::string& name)
{
    const qint64 count = addresses_.count();
    const QString version = versionIn(kind_, version_);
    output << QStringLiteral("%1: %2%3, %4\n")
                  .arg(oneLine(Util::toQString(name)), kindName(kind_),
                       version.isEmpty() ? QString() : QStringLiteral(", version ") + version,
                       counted(count, "value"));
    Table table({Table::Left, Table::Left});
    for (const auto& [place, shown] : shown_)
        table.add({shown.address, oneLine(shown.text)});
    output << table.text(indentation);
    const qint64 more = count - qint64(shown_.size());
    if (more > 0)
        output << QStringLiteral("  and %1 more; nereofile get %2 shows them\n")
                      .arg(QString::number(more), oneLine(Util::toQString(name)));
}

void writeJson(Json& json, FileKind kind, const Values& values)
{
    json.key(QStringLiteral("version"));
    const QString address = addressOfVersion(kind);
    const auto version = std::find_if(values.begin(), values.end(), [&address](const Values::Value& value) {
        return value.address == address;
    });
    json.textOrNull(version == values.end() ? QString() : versionIn(kind, version->text));
    json.key(QStringLiteral("values"));
    json.beginObject();
    for (const Values::Value& value : values) {
        json.key(value.address);
        json.value(value.text);
    }
    json.endObject();
}

} // namespace Nereo::Tool
