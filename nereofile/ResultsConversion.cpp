#include "ResultsConversion.h"

#include "Arguments.h"
#include "InputPath.h"
#include "Messages.h"
#include "Numbers.h"
#include "Output.h"
#include "Progress.h"
#include "Saving.h"
#include "Text.h"

#include <NereoFileIO/ResultsFile.h>
#include <NereoFileIO/ResultsFileHeader.h>
#include <NereoUtility/StringConversion.h>

#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <unistd.h>

namespace Nereo::Tool {

namespace {

using Field = Io::ResultsFileHeader::Field;

/// The columns of the table, with their names.
struct Columns {
    std::vector<std::string> names;
    std::vector<int> codes;
};

/// Values by node, less the first one, as the load gives them.
struct Rows {
    int firstNode;
    int count;
    std::vector<const double*> columns;
};

std::vector<std::string> namesIn(const QString& list)
{
    std::vector<std::string> names;
    for (const QString& name : list.split(QLatin1Char(',')))
        names.push_back(Util::toStdString(name.trimmed()));
    return names;
}

Columns columnsOf(const Io::ResultsFileHeader& header, const std::vector<std::string>& wanted,
                  const std::string& file)
{
    Columns columns;
    const auto add = [&columns](const Field& field) {
        columns.names.push_back(field.name);
        columns.codes.push_back(field.code);
    };
    for (const Field& field : header.fields()) {
        if (wanted.empty() && field.isUsed())
            add(field);
    }
    for (const std::string& name : wanted) {
        const auto found = std::find_if(header.fields().begin(), header.fields().end(),
                                        [&name](const Field& field) { return field.name == name; });
        if (found == header.fields().end())
            throw Refusal(about(file, QStringLiteral("there is no field %1").arg(Util::toQString(name))));
        if (!found->isUsed())
            throw Refusal(
                about(file, QStringLiteral("no code is known for the field %1").arg(Util::toQString(name))));
        add(*found);
    }
    return columns;
}

/// What can be taken without the machine coming to a halt.
qint64 memoryThere()
{
    return qint64(::sysconf(_SC_PHYS_PAGES)) * qint64(::sysconf(_SC_PAGESIZE));
}

QString reasonOf(const Io::ResultsLoadResult& result)
{
    constexpr qint64 megabyte = 1000 * 1000;
    switch (result.outcome) {
    case Io::ResultsLoadResult::ContradictsItself:
        return QStringLiteral("contradicts itself; nereofile check shows where");
    case Io::ResultsLoadResult::OverLimit:
        return QStringLiteral("needs %1 MB of memory").arg(result.memoryNeeded / megabyte);
    case Io::ResultsLoadResult::NoResultsFile:
        return QStringLiteral("is no results file");
    default:
        return QStringLiteral("can't be read to its end");
    }
}

/// Text in blocks, of which each begins with what didn't find room in the one before.
class Csv {
public:
    explicit Csv(const Sink& sink) : sink_(sink), block_(blockSize) {}

    void write(const Columns& columns, const Rows& rows)
    {
        std::string head = "node";
        for (const std::string& name : columns.names)
            head += ',' + name;
        sink_(head + '\n');
        for (int i = 0; i < rows.count; ++i) {
            makeRoom();
            place_ = writeNumber(place_, rows.firstNode + i);
            for (const double* const column : rows.columns) {
                makeRoom();
                *place_++ = ',';
                place_ = writeNumber(place_, column[i]);
            }
            *place_++ = '\n';
        }
        flush();
    }

private:
    static constexpr std::size_t blockSize = 256 * 1024;
    static constexpr std::size_t mostAtOnce = NumberText::mostCharacters + 2;

    void makeRoom()
    {
        if (std::size_t(block_.data() + blockSize - place_) < mostAtOnce)
            flush();
    }

    void flush()
    {
        sink_({block_.data(), std::size_t(place_ - block_.data())});
        place_ = block_.data();
    }

    const Sink& sink_;
    std::vector<char> block_;
    char* place_ = block_.data();
};

std::string npyHead(int rows, std::size_t columns)
{
    const std::string shape =
        columns == 1 ? std::to_string(rows) + "," : std::to_string(rows) + ", " + std::to_string(columns);
    std::string description = "{'descr': '<f8', 'fortran_order': False, 'shape': (" + shape + "), }";
    constexpr std::size_t alignment = 64; // of the values
    const std::string magic("\x93NUMPY\x01\x00", 8);
    const std::size_t before = magic.size() + 2 + description.size() + 1;
    description.append((alignment - before % alignment) % alignment, ' ');
    description += '\n';
    const char size[] = {char(description.size() & 0xFFU), char(description.size() >> 8U)};
    return magic + std::string(size, 2) + description;
}

void writeNpy(const Rows& rows, const Sink& sink)
{
    sink(npyHead(rows.count, rows.columns.size()));
    constexpr std::size_t blockSize = 32 * 1024; // numbers
    std::vector<double> block;
    block.reserve(blockSize);
    const auto flush = [&] {
        qToLittleEndian<double>(block.data(), qsizetype(block.size()), block.data());
        sink({reinterpret_cast<const char*>(block.data()), block.size() * sizeof(double)});
        block.clear();
    };
    for (int i = 0; i < rows.count; ++i) {
        for (const double* const column : rows.columns) {
            block.push_back(column[i]);
            if (block.size() == blockSize)
                flush();
        }
    }
    flush();
}

} // namespace

ResultsConversion::ResultsConversion(const Arguments& arguments, const std::string& target) : target_(target)
{
    const QString suffix = QFileInfo(Util::toQString(target)).suffix();
    isCsv_ = target == "-" || suffix == QLatin1String("csv");
    if (!isCsv_ && suffix != QLatin1String("npy"))
        throw Refusal(about(target, QStringLiteral("results are converted to .csv or .npy")));
    if (arguments.has("fields"))
        fields_ = namesIn(arguments.value("fields"));
    if (arguments.has("nodes"))
        takeNodes(Util::toStdString(arguments.value("nodes")));
}

void ResultsConversion::takeNodes(const std::string& range)
{
    const QStringList ends = Util::toQString(range).split(QLatin1Char(':'));
    bool isFirst = false;
    bool isLast = false;
    firstNode_ = ends.front().toInt(&isFirst);
    lastNode_ = ends.back().toInt(&isLast);
    if (ends.size() != 2 || !isFirst || !isLast || firstNode_ < 1 || lastNode_ < firstNode_)
        throw Refusal(QStringLiteral("convert: \"%1\" isn't FIRST:LAST, two numbers of nodes from 1")
                          .arg(Util::toQString(range)));
}

void ResultsConversion::run(const InputPath& input, Output& output) const
{
    Io::ResultsFileHeader header;
    header.readFrom(input.path());
    const Columns columns = columnsOf(header, fields_, input.name());
    if (!isCsv_ && columns.codes.empty())
        throw Refusal(about(input.name(), QStringLiteral("there is no field whose code is known")));

    Io::ResultsFile file;
    Io::ResultsLoadOptions options;
    options.codes = columns.codes;
    options.firstNode = firstNode_;
    options.lastNode = lastNode_;
    options.memoryLimit = memoryThere();
    {
        Progress progress(Util::toQString(input.name()));
        options.progress = progress.function();
        const Io::ResultsLoadResult result = file.loadFrom(input.path(), options);
        if (!result.isLoaded())
            throw Refusal(about(input.name(), reasonOf(result)));
    }

    std::vector<QVector<double>> fields;
    Rows rows {firstNode_, file.nodeCount(), {}};
    for (const int code : columns.codes) {
        fields.push_back(file.fieldData(code));
        rows.columns.push_back(fields.back().constData());
    }
    saveTo(target_, output, [&](const Sink& sink) {
        if (isCsv_)
            Csv(sink).write(columns, rows);
        else
            writeNpy(rows, sink);
    });
}

} // namespace Nereo::Tool
