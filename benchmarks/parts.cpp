// The parts that loads and saves are made of.

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

} // namespace
