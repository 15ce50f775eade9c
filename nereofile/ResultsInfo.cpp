#include "ResultsInfo.h"

#include "InputPath.h"
#include "Json.h"
#include "Messages.h"
#include "Numbers.h"
#include "Progress.h"
#include "Terminal.h"
#include "Text.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/ResultsScan.h>
#include <NereoUtility/StringConversion.h>

#include <QLocale>

#include <algorithm>
#include <unistd.h>

namespace Nereo::Tool {

namespace {

using Io::ResultsFileHeader;
using Io::ResultsStatistics;

constexpr int indentation = 2;

const char* byteOrderName(const ResultsFileHeader& header)
{
    return header.byteOrder() == ResultsFileHeader::LittleEndian ? "little" : "big";
}

/// What a number of the header says, where the file has it.
void memberUnlessAbsent(Json& json, const char* name, qint64 number)
{
    json.key(QString::fromLatin1(name));
    if (number < 0)
        json.null();
    else
        json.value(number);
}

void writeNode(Json& json, const char* name, int node)
{
    json.key(QString::fromLatin1(name));
    if (node == 0)
        json.null();
    else
        json.value(qint64(node));
}

void writeStatistics(Json& json, const ResultsStatistics& statistics)
{
    json.member("minimum", statistics.minimum);
    json.member("maximum", statistics.maximum);
    json.member("mean", statistics.mean);
    writeNode(json, "minimumNode", statistics.minimumNode);
    writeNode(json, "maximumNode", statistics.maximumNode);
    json.member("notFinite", statistics.notFinite);
}

void writeFields(Json& json, const Results& results)
{
    json.key(QStringLiteral("fields"));
    json.beginArray();
    const std::vector<ResultsFileHeader::Field>& fields = results.header.fields();
    for (std::size_t i = 0; i < fields.size(); ++i) {
        json.beginObject();
        json.member("name", Util::toQString(fields[i].name));
        json.key(QStringLiteral("code"));
        if (fields[i].code == Io::kNone)
            json.null();
        else
            json.value(qint64(fields[i].code));
        if (results.hasStatistics && i < results.statistics.size())
            writeStatistics(json, results.statistics[i]);
        json.endObject();
    }
    json.endArray();
}

QString fieldText(const ResultsFileHeader::Field& field)
{
    const QString code = field.code == Io::kNone ? QStringLiteral("?") : QString::number(field.code);
    return QStringLiteral("%1 (%2)").arg(oneLine(Util::toQString(field.name)), code);
}

/// The names side by side, as far as they find room on one screen.
QString fieldsText(const ResultsFileHeader& header, int columns, int indentedBy)
{
    constexpr std::size_t most = 60;
    const std::vector<ResultsFileHeader::Field>& fields = header.fields();
    QStringList names;
    for (std::size_t i = 0; i < std::min(fields.size(), most); ++i)
        names.append(fieldText(fields[i]).replace(QLatin1Char(' '), QChar::Nbsp));
    QString text = names.join(QLatin1String(", "));
    if (fields.size() > most)
        text += QStringLiteral(" and %1 more").arg(fields.size() - most);
    return wrapped(text, columns, indentedBy).replace(QChar::Nbsp, QLatin1Char(' '));
}

QString ofText(qint64 part, qint64 whole)
{
    const QString announced = whole < 0 ? QStringLiteral("an unknown number") : QString::number(whole);
    return QStringLiteral("%1 of %2").arg(QString::number(part), announced);
}

QString exactNumber(double number)
{
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

QString statisticsTable(const Results& results)
{
    Table table(
        {Table::Left, Table::Right, Table::Right, Table::Right, Table::Right, Table::Right, Table::Right});
    table.add({QStringLiteral("field"), QStringLiteral("minimum"), QStringLiteral("at node"),
               QStringLiteral("maximum"), QStringLiteral("at node"), QStringLiteral("mean"),
               QStringLiteral("not finite")});
    for (std::size_t i = 0; i < results.statistics.size(); ++i) {
        const ResultsStatistics& field = results.statistics[i];
        table.add({fieldText(results.header.fields()[i]), shortNumber(field.minimum),
                   QString::number(field.minimumNode), shortNumber(field.maximum),
                   QString::number(field.maximumNode), shortNumber(field.mean),
                   QString::number(field.notFinite)});
    }
    const bool hasRoom =
        !isTerminal(STDOUT_FILENO) || indentation + table.width() <= columnsOf(STDOUT_FILENO);
    return hasRoom ? table.text(indentation) : QString();
}

/// The same below each other, for a terminal that hasn't room for the table.
QString statisticsList(const Results& results)
{
    QString text;
    for (std::size_t i = 0; i < results.statistics.size(); ++i) {
        const ResultsStatistics& field = results.statistics[i];
        Table table({Table::Left, Table::Left});
        table.add({QStringLiteral("minimum"),
                   QStringLiteral("%1 at node %2").arg(shortNumber(field.minimum)).arg(field.minimumNode)});
        table.add({QStringLiteral("maximum"),
                   QStringLiteral("%1 at node %2").arg(shortNumber(field.maximum)).arg(field.maximumNode)});
        table.add({QStringLiteral("mean"), shortNumber(field.mean)});
        table.add({QStringLiteral("not finite"), QString::number(field.notFinite)});
        text += QLatin1String("  ") + fieldText(results.header.fields()[i]) + QLatin1Char('\n')
            + table.text(2 * indentation);
    }
    return text;
}

} // namespace

Results readResults(const InputPath& input, bool wantsStatistics)
{
    Results results;
    if (wantsStatistics) {
        Io::ResultsScan scan;
        Progress progress(Util::toQString(input.name()));
        const Io::ResultsLoadResult result =
            scan.scan(input.path(), Io::ResultsScan::Statistics, progress.function());
        if (result.isLoaded())
            return {scan.header(), scan.statistics(), true};
        say(about(input.name(),
                  QStringLiteral("its values can't be gone through; nereofile check says why")));
    }
    results.header.readFrom(input.path());
    return results;
}

void writeText(Output& output, const std::string& name, const Results& results)
{
    const ResultsFileHeader& header = results.header;
    output << oneLine(Util::toQString(name)) << ": results\n";
    const auto current = [](int now, int from) { return QStringLiteral("%1, from %2").arg(now).arg(from); };
    Table table({Table::Left, Table::Left});
    const auto add = [&table](const char* what, const QString& text) {
        table.add({QLatin1String(what), oneLine(text)});
    };
    add("title", Util::toQString(header.title()));
    add("date", Util::toQString(header.dateTimeString()));
    add("version", header.version().toString());
    add("byte order", QString::fromLatin1(byteOrderName(header)) + QLatin1String("-endian"));
    add("nodes", QString::number(header.nodeCount()));
    add("elements", QString::number(header.elementCount()));
    add("iteration", current(header.currentIteration(), header.startingIteration()));
    add("time step",
        current(header.currentTimeStep(), header.startingTimeStep())
            + QStringLiteral(", of %1").arg(exactNumber(header.timeStepSize())));
    add("time", exactNumber(header.currentTime()));
    add("bytes", ofText(header.bytesThere(), header.bytesAnnounced()));
    add("records", ofText(header.wholeRecords(), header.recordsAnnounced()));
    constexpr int firstColumn = 10; // "byte order"
    constexpr int fieldsColumn = indentation + firstColumn + indentation;
    if (!results.hasStatistics) {
        const QString fields = fieldsText(header, columnsOf(STDOUT_FILENO), fieldsColumn);
        table.add({QStringLiteral("fields"), fields});
    }
    output << table.text(indentation);
    if (results.hasStatistics) {
        const QString inRows = statisticsTable(results);
        output << "\n" << (inRows.isEmpty() ? statisticsList(results) : inRows);
    }
    if (!header.problems().empty())
        output << QStringLiteral("  something is wrong; nereofile check %1 says what\n")
                      .arg(oneLine(Util::toQString(name)));
}

void writeJson(Json& json, const Results& results)
{
    const ResultsFileHeader& header = results.header;
    json.member("version", header.version().toString());
    json.member("title", Util::toQString(header.title()));
    json.member("date", Util::toQString(header.dateTimeString()));
    json.member("byteOrder", QString::fromLatin1(byteOrderName(header)));
    json.member("nodes", qint64(header.nodeCount()));
    json.member("elements", qint64(header.elementCount()));
    json.key(QStringLiteral("iteration"));
    json.beginObject();
    json.member("current", qint64(header.currentIteration()));
    json.member("starting", qint64(header.startingIteration()));
    json.endObject();
    json.key(QStringLiteral("timeStep"));
    json.beginObject();
    json.member("current", qint64(header.currentTimeStep()));
    json.member("starting", qint64(header.startingTimeStep()));
    json.member("size", header.timeStepSize());
    json.endObject();
    json.member("time", header.currentTime());
    memberUnlessAbsent(json, "bytes", header.bytesThere());
    memberUnlessAbsent(json, "bytesAnnounced", header.bytesAnnounced());
    memberUnlessAbsent(json, "wholeRecords", header.wholeRecords());
    writeFields(json, results);
}

} // namespace Nereo::Tool
