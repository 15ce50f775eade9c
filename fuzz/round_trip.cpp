// A model of any of the kinds with values from the bytes, saved and loaded again: what its format carries has
// to come back. The geometry and boundary input file, which can't be loaded, is only saved.

#include "ConfigurationWithoutTexts.h"
#include "Descriptions.h"
#include "Formats.h"
#include "FuzzModels.h"
#include "Requirement.h"

#include <FileIO/ControlFileTextReader.h>
#include <FileIO/ControlFileTextWriter.h>
#include <FileIO/GbiFileTextWriter.h>
#include <FileIO/MaterialDatabaseFileXmlReader.h>
#include <FileIO/MaterialDatabaseFileXmlWriter.h>
#include <FileIO/Nereo2ConfigFileTextReader.h>
#include <FileIO/Nereo2ConfigFileTextWriter.h>
#include <FileIO/Nereo2ConfigFileXmlReader.h>
#include <FileIO/Nereo2ConfigFileXmlWriter.h>

using namespace Nereo::Io;

namespace {

template <class FormatWriter, class FormatReader, class Model>
void passThroughFile(const Model& model, Model loaded)
{
    const QByteArray saved = savedBytes<FormatWriter>(model);
    require(loadBytes<FormatReader>(saved, loaded), "what was saved can be loaded");
    requireSame(describe(loaded), describe(model), "what was saved is loaded");
    requireSame(savedBytes<FormatWriter>(Model(model)), saved, "a copy is saved as its original");
}

void passConfigurationThroughXml(FuzzBytes& bytes)
{
    passThroughFile<Nereo2ConfigFileXmlWriter, Nereo2ConfigFileXmlReader>(
        takeConfiguration(bytes, takeXmlText), configurationWithoutTexts());
}

void passConfigurationThroughText(FuzzBytes& bytes)
{
    passThroughFile<Nereo2ConfigFileTextWriter, Nereo2ConfigFileTextReader>(
        takeConfiguration(bytes, takeSimplified), configurationWithoutTexts());
}

void passMaterialsThroughFile(FuzzBytes& bytes)
{
    passThroughFile<MaterialDatabaseFileXmlWriter, MaterialDatabaseFileXmlReader>(
        takeMaterials(bytes, takeXmlText), MaterialDatabaseFile());
}

void passControlFileThroughFile(FuzzBytes& bytes)
{
    passThroughFile<ControlFileTextWriter, ControlFileTextReader>(takeControlFile(bytes), ControlFile());
}

void saveGeometryAndBoundaries(FuzzBytes& bytes)
{
    const GbiFile file = takeGbiFile(bytes);
    requireSame(savedBytes<GbiFileTextWriter>(GbiFile(file)), savedBytes<GbiFileTextWriter>(file),
                "a copy is saved as its original");
}

constexpr void (*trips[])(FuzzBytes&) = {
    passConfigurationThroughXml, passConfigurationThroughText, passMaterialsThroughFile,
    passControlFileThroughFile,  saveGeometryAndBoundaries,
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzBytes bytes(inputBytes(data, size));
    bytes.item(trips)(bytes);
    return 0;
}
