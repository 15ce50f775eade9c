// load_results METHOD FILE: loads a results file once and prints the seconds, the growth of the process's
// memory at its peak in bytes, and a sum over the values by which the methods can be compared.

#include "Memory.h"
#include "ResultsLimit.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/ResultsFile.h>

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
    const std::string method = argc == 3 ? argv[1] : "";
    CodeNameTable::instance();
    if (method == "library")
        measure(loadWithLibrary, argv[2]);
    else if (method == "limit")
        measure(loadRunsOnOrdinaryPages, argv[2]);
    else if (method == "tricks")
        measure(loadRunsWithEveryTrick, argv[2]);
    else if (method == "scatter")
        measure(loadScatteredOnOrdinaryPages, argv[2]);
    else if (method == "direct")
        measure(loadDirectly, argv[2]);
    else {
        std::fprintf(stderr, "usage: load_results library|limit|tricks|scatter|direct FILE\n");
        return 2;
    }
    return 0;
}
