// Loads and saves of a control file with many materials, every constant changed, and many flags.

#include <NereoFileIO/ControlFile.h>

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFileInfo>

using namespace Nereo::Io;

namespace {

Material fluidWithCurves(int id)
{
    Material fluid;
    fluid.setId(id);
    fluid.setName("Fluid " + std::to_string(id));
    for (const int code : fluid.propertyCodes()) {
        MaterialProperty& property = fluid.property(code);
        property.setVariationType("piecewise_linear");
        property.setIndependentVariable(5);
        for (int i = 0; i < 20; ++i)
            property.addPoint(273.15 + i, 1.0 / (id + i));
    }
    return fluid;
}

ControlFile largeFile(int scale)
{
    ControlFile file;
    for (int i = 1; i <= 200 * scale; ++i)
        file.materialDatabase().add(fluidWithCurves(i));
    for (int code = 1; code <= 328; ++code)
        file.setConstant(code, code / 3.0);
    for (int i = 0; i < 10000 * scale; ++i) {
        Flag flag;
        flag.setName("flag_" + std::to_string(i));
        flag.setValue(i);
        file.addFlag(flag);
    }
    return file;
}

std::string path()
{
    return QDir::temp().filePath("nereo-benchmark.ctl").toStdString();
}

void saveControlFile(benchmark::State& state)
{
    const ControlFile file = largeFile(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(file.saveTo(path()));
}
BENCHMARK(saveControlFile)->Arg(1)->Arg(4)->Unit(benchmark::kMillisecond);

void loadControlFile(benchmark::State& state)
{
    largeFile(int(state.range(0))).saveTo(path());
    for (auto _ : state) {
        ControlFile file;
        benchmark::DoNotOptimize(file.loadFrom(path()));
    }
    state.counters["bytes"] = double(QFileInfo(QString::fromStdString(path())).size());
    QFile::remove(QString::fromStdString(path()));
}
BENCHMARK(loadControlFile)->Arg(1)->Arg(4)->Unit(benchmark::kMillisecond);

} // namespace
