// The parts that loads and saves are made of.

#include "FileIO/NodeRecordTransposer.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/Nereo2ConfigFile.h>

#include <benchmark/benchmark.h>

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

} // namespace
