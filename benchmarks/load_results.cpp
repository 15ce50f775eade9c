// load_results METHOD FILE: loads or scans a results file once and prints the seconds, the growth of the
// process's memory at its peak in bytes, and a sum over the values by which the methods can be compared.

#include "Memory.h"
#include "ResultsLimit.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/ResultsFile.h>
#include <NereoFileIO/ResultsFileHeader.h>
#include <NereoFileIO/ResultsScan.h>

#include <QDataStream>
#include <QFile>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>

using namespace Nereo::Io;

namespace {

// Every 97th value is enough to see that the same was loaded.
double sum(const double* values, std::size_t count)
{
    double sum = 0;
    for (std::size_t i = 0; i < count; i += 97)
        sum += values[i];
    return sum;
}

double sum(const PlainFields& fields)
{
    double total = 0;
    for (const double* column : fields.columns)
        total += sum(column, fields.nodeCount);
    return total;
}

double sum(const ResultsFile& results)
{
    double total = 0;
    for (const int code : results.fieldDataCodes()) {
        const QVector<double> values = results.fieldData(code);
        total += sum(values.constData(), std::size_t(values.size()));
    }
    return total;
}

ResultsFile loadWithLibrary(const std::string& path)
{
    ResultsFile results;
    results.loadFrom(path);
    return results;
}

ResultsFile loadByChoice(const std::string& path, const ResultsLoadOptions& options)
{
    ResultsFile results;
    results.loadFrom(path, options);
    return results;
}

ResultsFile loadAllByChoice(const std::string& path)
{
    return loadByChoice(path, {});
}

ResultsFile loadWithProgress(const std::string& path)
{
    ResultsLoadOptions options;
    options.progress = [](qint64, qint64) { return true; };
    return loadByChoice(path, options);
}

ResultsFile loadOneField(const std::string& path)
{
    ResultsLoadOptions options;
    options.codes = {kP};
    return loadByChoice(path, options);
}

ResultsScan scan(const std::string& path, ResultsScan::Part part)
{
    ResultsScan scan;
    scan.scan(path, part);
    return scan;
}

ResultsScan scanStatistics(const std::string& path)
{
    return scan(path, ResultsScan::Statistics);
}

ResultsScan scanAll(const std::string& path)
{
    return scan(path, ResultsScan::StatisticsAndDamage);
}

ResultsFileHeader readHeader(const std::string& path)
{
    ResultsFileHeader header;
    header.readFrom(path);
    return header;
}

double sum(const ResultsScan& scan)
{
    double total = 0;
    for (const ResultsStatistics& statistics : scan.statistics())
        total += statistics.mean;
    return total;
}

double sum(const ResultsFileHeader& header)
{
    return header.nodeCount();
}

/// The direct way: the format as its description reads, one stream extraction and one look-up a value.
ResultsFile loadDirectly(const std::string& path)
{
    ResultsFile results;
    QFile file(QString::fromStdString(path));
    file.open(QIODevice::ReadOnly);
    QDataStream in(&file);
    qint32 isBigEndian;
    in >> isBigEndian;
    in.setByteOrder(isBigEndian != 0 ? QDataStream::BigEndian : QDataStream::LittleEndian);
    in.skipRawData(294);
    qint32 nodeCount;
    in >> nodeCount;
    results.setNodeCount(nodeCount);
    in.skipRawData(44);
    qint32 fieldCount;
    in >> fieldCount;
    QVector<int> codes(fieldCount);
    for (int& code : codes) {
        char name[21];
        in.readRawData(name, sizeof name);
        code = CodeNameTable::instance().codeForName(QString::fromLatin1(name));
        if (code != kNone)
            results.addFieldDataCode(code);
    }
    in.skipRawData(4);
    for (int i = 0; i < nodeCount; ++i) {
        qint32 node;
        in >> node;
        for (const int code : qAsConst(codes)) {
            double value;
            in >> value;
            if (code != kNone)
                results.setFieldData(code, node, value);
        }
    }
    return results;
}

template <class Load>
void measure(Load load, const std::string& path)
{
    const double memoryBefore = memory("VmRSS:");
    const auto start = std::chrono::steady_clock::now();
    const auto fields = load(path);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    const double growth = memory("VmHWM:") - memoryBefore;
    std::printf("%.6f %.0f %.10g\n", time.count(), growth, sum(fields));
}

} // namespace

int main(int argc, char** argv)
{
    const struct {
        const char* method;
        void (*measure)(const std::string& path);
    } methods[] = {
        {"library",    [](const std::string& path) { measure(loadWithLibrary, path); }             },
        {"limit",      [](const std::string& path) { measure(loadRunsOnOrdinaryPages, path); }     },
        {"tricks",     [](const std::string& path) { measure(loadRunsWithEveryTrick, path); }      },
        {"scatter",    [](const std::string& path) { measure(loadScatteredOnOrdinaryPages, path); }},
        {"direct",     [](const std::string& path) { measure(loadDirectly, path); }                },
        {"choice",     [](const std::string& path) { measure(loadAllByChoice, path); }             },
        {"progress",   [](const std::string& path) { measure(loadWithProgress, path); }            },
        {"one",        [](const std::string& path) { measure(loadOneField, path); }                },
        {"statistics", [](const std::string& path) { measure(scanStatistics, path); }              },
        {"scan",       [](const std::string& path) { measure(scanAll, path); }                     },
        {"header",     [](const std::string& path) { measure(readHeader, path); }                  },
    };
    CodeNameTable::instance();
    for (const auto& [method, measureIt] : methods) {
        if (argc == 3 && std::strcmp(argv[1], method) == 0) {
            measureIt(argv[2]);
            return 0;
        }
    }
    std::fprintf(stderr, "usage: load_results METHOD FILE\nmethods:");
    for (const auto& [method, measureIt] : methods)
        std::fprintf(stderr, " %s", method);
    std::fprintf(stderr, "\n");
    return 2;
}
