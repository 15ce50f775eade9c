// Any bytes as the XML form of a configuration. None of them may stop the process, so that they are given to
// the reader as they are.

#include "Formats.h"
#include "Requirement.h"
#include "Texts.h"

#include <FileIO/Nereo2ConfigFileXmlReader.h>
#include <FileIO/Nereo2ConfigFileXmlWriter.h>

using namespace Nereo::Io;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes = inputBytes(data, size);
    Nereo2ConfigFile config = configurationWithoutTexts();
    const bool isLoaded = readBytes<Nereo2ConfigFileXmlReader>(bytes, config);
    const QByteArray saved = writtenBytes<Nereo2ConfigFileXmlWriter>(config);

    require(readBytes<Nereo2ConfigFileXmlReader>(bytes, config) == isLoaded, "a second load has this result");
    requireSame(writtenBytes<Nereo2ConfigFileXmlWriter>(config), saved, "a second load changes nothing");

    Nereo2ConfigFile reloaded = configurationWithoutTexts();
    require(readBytes<Nereo2ConfigFileXmlReader>(saved, reloaded), "what was saved can be loaded");
    requireSame(writtenBytes<Nereo2ConfigFileXmlWriter>(reloaded), withoutReturns(saved),
                "what was saved and loaded is the same");
    return 0;
}
