#include "FileKind.h"

#include "FileIO/ControlFileTextWriter.h"
#include "FileIO/FileAccess.h"
#include "FileIO/GbiFileTextWriter.h"
#include "FileIO/MaterialDatabaseFileXmlWriter.h"
#include "FileIO/Nereo2ConfigFileTextWriter.h"
#include "FileIO/Nereo2ConfigFileXmlWriter.h"
#include "support/ResultsBytes.h"

#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/GbiFile.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoFileIO/ResultsFile.h>

#include <QTextStream>
#include <QXmlStreamWriter>

#include <algorithm>
#include <iterator>

namespace Faults {
namespace {

using namespace Nereo::Io;

template <class Content>
std::unique_ptr<File> makeEmpty()
{
    return std::make_unique<Content>();
}

/// What a save writes, without a file.
template <class Content, class FormatWriter>
std::string written(const File& file)
{
    QByteArray bytes;
    {
        typename FormatWriter::Stream stream(&bytes);
        configure(stream);
        FormatWriter(static_cast<const Content&>(file)).write(stream);
    }
    return bytes.toStdString();
}

Material makeMaterial(int id)
{
    Material material(id % 2 == 0 ? "solid" : "fluid");
    material.setName("Stoff " + std::to_string(id) + " <Lüfter>");
    material.setId(id);
    material.setRefTemperature(293.15);
    MaterialProperty& density = material.property("density");
    density.setVariationType("piecewise_linear");
    density.setIndependentVariable(kT);
    density.addPoint(0, 1.5);
    density.addPoint(100, 2.25);
    return material;
}

std::unique_ptr<File> makeConfiguration(int itemCount)
{
    auto config = std::make_unique<Nereo2ConfigFile>();
    config->setting(Nereo2ConfigFile::MaxIter).setValueFromString("500");
    config->setting(Nereo2ConfigFile::StopTime).setValueFromString("0.125");
    std::string path = "C:/Läufe";
    for (int i = 0; i < itemCount; ++i)
        path += " & a folder whose name is rather long, number " + std::to_string(i);
    config->setting(Nereo2ConfigFile::AnalyzePath).setValueFromString(path);
    return config;
}

std::unique_ptr<File> makeControlFile(int itemCount)
{
    auto control = std::make_unique<ControlFile>();
    control->setTitle("Größe 65 × 65");
    control->setUnits(3);
    control->phiSolve(kP).tolerance = 1e-9;
    control->setPhiUnderRelax(kT, 0.3);
    control->setConstant(kPRef, 101325);
    control->inflationData().integer4 = 7;
    for (int i = 0; i < 2 + itemCount / 10; ++i)
        control->materialDatabase().add(makeMaterial(i + 1));
    for (int i = 0; i < itemCount; ++i) {
        Flag flag;
        flag.setName("a_flag_with_a_name_that_is_rather_long_number_" + std::to_string(i));
        flag.setValue(i);
        control->addFlag(flag);
    }
    return control;
}

std::unique_ptr<File> makeMaterialDatabase(int itemCount)
{
    auto database = std::make_unique<MaterialDatabaseFile>();
    for (int i = 0; i < (itemCount + 19) / 20 + 1; ++i) // each is a kilobyte
        database->add(makeMaterial(i + 1));
    return database;
}

std::unique_ptr<File> makeGeometry(int itemCount)
{
    auto geometry = std::make_unique<GbiFile>();
    geometry->setJobName("Höhle");
    geometry->materialDatabase().add(makeMaterial(1));
    for (int i = 0; i < itemCount; ++i) {
        BoundaryCondition condition(i % 2 == 0 ? int(kU) : int(kSlipNode));
        condition.setEntityId(1000000 + i);
        condition.setValue(0.123456);
        condition.addExtraValue(1e-20 * i);
        condition.addExtraValue(654321);
        geometry->addSurfaceBoundaryCondition(condition);
    }
    return geometry;
}

std::string resultsBytes(int itemCount)
{
    ResultsBytes bytes;
    bytes.header(itemCount).run().names({"kU", "kUnheardOf", "kP"});
    for (int node = itemCount; node > 0; --node)
        bytes.record(node, {0.5 * node, -1.0, 101325.0 + node});
    return bytes.bytes().toStdString();
}

std::unique_ptr<File> makeResults(int itemCount)
{
    auto results = std::make_unique<ResultsFile>();
    results->setVersion(Nereo::Util::Version(2023, 1, 7, 0));
    results->setTitle("Lid-driven cavity");
    results->setDateTimeString("2024-05-18 14:22:47");
    results->setNodeCount(itemCount);
    results->setElementCount(77);
    results->setIterations(100, 500);
    results->setTimeSteps(3, 8);
    results->setCurrentTime(1.25);
    results->setTimeStepSize(0.125);
    results->addFieldDataCode(kU);
    results->addFieldDataCode(kP);
    for (int node = 1; node <= itemCount; ++node) {
        results->setFieldData(kU, node, 0.5 * node);
        results->setFieldData(kP, node, 101325.0 + node);
    }
    return results;
}

std::string describeResults(const File& file)
{
    const auto& results = static_cast<const ResultsFile&>(file);
    QString text;
    QTextStream out(&text);
    out << results.version().toString() << QString::fromStdString(results.title()) << ' '
        << QString::fromStdString(results.dateTimeString()) << ' ' << results.nodeCount() << ' '
        << results.elementCount() << ' ' << results.startingIteration() << ' ' << results.currentIteration()
        << ' ' << results.startingTimeStep() << ' ' << results.currentTimeStep() << ' '
        << results.currentTime() << ' ' << results.timeStepSize() << '\n';
    for (const int code : results.fieldDataCodes()) {
        out << code << ':';
        for (const double value : results.fieldData(code))
            out << ' ' << value;
        out << '\n';
    }
    out.flush();
    return text.toStdString();
}

constexpr bool hasNoReader = false;

template <class FormatWriter, class Content>
constexpr FileKind writtenKind(const char* name, const char* fileName,
                               std::unique_ptr<File> (*makeExample)(int), bool hasReader = true)
{
    FileKind kind {};
    kind.name = name;
    kind.fileName = fileName;
    kind.isXml = std::is_same_v<typename FormatWriter::Stream, QXmlStreamWriter>;
    kind.hasReader = hasReader;
    kind.hasWriter = true;
    kind.makeEmpty = makeEmpty<Content>;
    kind.makeExample = makeExample;
    kind.describe = written<Content, FormatWriter>;
    return kind;
}

constexpr FileKind resultsKind()
{
    FileKind kind {};
    kind.name = "Results";
    kind.fileName = "run.res";
    kind.hasReader = true;
    kind.loadAdds = true;
    kind.makeEmpty = makeEmpty<ResultsFile>;
    kind.makeExample = makeResults;
    kind.describe = describeResults;
    return kind;
}

} // namespace

const FileKind fileKinds[] = {
    writtenKind<Nereo2ConfigFileXmlWriter, Nereo2ConfigFile>("ConfigurationXml", "run.xml",
                                                             makeConfiguration),
    writtenKind<Nereo2ConfigFileTextWriter, Nereo2ConfigFile>("ConfigurationText", "run.cfg",
                                                              makeConfiguration),
    writtenKind<ControlFileTextWriter, ControlFile>("ControlFile", "run.ctl", makeControlFile),
    writtenKind<MaterialDatabaseFileXmlWriter, MaterialDatabaseFile>("MaterialDatabase", "materials.xml",
                                                                     makeMaterialDatabase),
    writtenKind<GbiFileTextWriter, GbiFile>("GeometryAndBoundaries", "run.gbi", makeGeometry, hasNoReader),
    resultsKind(),
};

std::vector<FileKind> kindsThatAreWritten()
{
    std::vector<FileKind> kinds;
    std::copy_if(std::begin(fileKinds), std::end(fileKinds), std::back_inserter(kinds),
                 [](const FileKind& kind) { return kind.hasWriter; });
    return kinds;
}

std::string bytesOf(const FileKind& kind, int itemCount)
{
    return kind.hasWriter ? kind.describe(*kind.makeExample(itemCount)) : resultsBytes(itemCount);
}

} // namespace Faults
