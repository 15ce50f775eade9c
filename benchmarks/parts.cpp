// The parts that loads and saves are made of.

#include "FileIO/NodeRecordTransposer.h"
#include "FileIO/NumberText.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/Nereo2ConfigFile.h>

#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdio>

using namespace Nereo::Io;

namespace {

void codeForName(benchmark::State& state)
{
    const QString name = QStringLiteral("kHydrostatPresFlow");
    for (auto _ : state)
        benchmark::DoNotOptimize(CodeNameTable::instance().codeForName(name));
}
BENCHMARK(codeForName);

void nameForCode(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(CodeNameTable::instance().nameForCode(kHydrostatPresFlow, false));
}
BENCHMARK(nameForCode);

void newConfiguration(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(Nereo2ConfigFile());
}
BENCHMARK(newConfiguration);

/// A block of records in the cache, ascending or with two nodes exchanged; the bytes a second are those of
/// the block.
void transposeBlock(benchmark::State& state)
{
    constexpr int nodeCount = 1600;
    constexpr int fieldCount = 10;
    QByteArray block;
    QDataStream stream(&block, QIODevice::WriteOnly);
    for (int node = 1; node <= nodeCount; ++node) {
        const bool isExchanged = state.range(0) != 0 && node <= 2;
        stream << qint32(isExchanged ? 3 - node : node);
        for (int i = 0; i < fieldCount; ++i)
            stream << double(i);
    }
    QVector<QVector<double>> fields(fieldCount);
    for (auto _ : state) {
        NodeRecordTransposer transposer(fieldCount, nodeCount, QDataStream::BigEndian);
        for (int i = 0; i < fieldCount; ++i)
            transposer.addField(i, fields[i]);
        transposer.store(block.data(), block.size());
    }
    state.SetBytesProcessed(state.iterations() * block.size());
}
BENCHMARK(transposeBlock)->ArgName("exchanged")->Arg(0)->Arg(1);

// A number to text and back, by the library and by what else there is.

constexpr double number = 123.456;

void writeNumber(benchmark::State& state)
{
    char text[longestNumber];
    for (auto _ : state)
        benchmark::DoNotOptimize(Nereo::Io::writeNumber(text, number));
}
BENCHMARK(writeNumber);

void writeNumberByQt(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(QString::number(number));
}
BENCHMARK(writeNumberByQt);

void writeNumberByToChars(benchmark::State& state)
{
    char text[longestNumber];
    for (auto _ : state)
        benchmark::DoNotOptimize(
            std::to_chars(text, text + longestNumber, number, std::chars_format::general, 6));
}
BENCHMARK(writeNumberByToChars);

void writeNumberByPrintf(benchmark::State& state)
{
    char text[longestNumber + 1];
    for (auto _ : state)
        benchmark::DoNotOptimize(std::snprintf(text, sizeof text, "%g", number));
}
BENCHMARK(writeNumberByPrintf);

void parseNumber(benchmark::State& state)
{
    const QString text = QStringLiteral("123.456");
    for (auto _ : state)
        benchmark::DoNotOptimize(Nereo::Io::parseNumber(text));
}
BENCHMARK(parseNumber);

void parseNumberByQt(benchmark::State& state)
{
    const QString text = QStringLiteral("123.456");
    for (auto _ : state)
        benchmark::DoNotOptimize(text.toDouble());
}
BENCHMARK(parseNumberByQt);

} // namespace
