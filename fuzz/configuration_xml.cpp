// Any bytes as the XML form of a configuration. None of them may stop the process, so that they are given to
// the reader as they are.

#include "Formats.h"
#include "Reloading.h"
#include "Requirement.h"

#include <FileIO/Nereo2ConfigFileXmlReader.h>
#include <FileIO/Nereo2ConfigFileXmlWriter.h>

using namespace Nereo::Io;

namespace {

bool read(const QByteArray& bytes, Nereo2ConfigFile& config)
{
    return readBytes<Nereo2ConfigFileXmlReader>(bytes, config);
}

QByteArray written(const Nereo2ConfigFile& config)
{
    return writtenBytes<Nereo2ConfigFileXmlWriter>(config);
}

QByteArray loadedAndSaved(const QByteArray& saved)
{
    Nereo2ConfigFile config = configurationWithoutTexts();
    require(read(saved, config), "what was saved can be loaded");
    return written(config);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes = inputBytes(data, size);
    Nereo2ConfigFile config = configurationWithoutTexts();
    const bool isLoaded = read(bytes, config);
    const QByteArray saved = written(config);

    require(read(bytes, config) == isLoaded, "a second load has this result");
    requireSame(written(config), saved, "a second load changes nothing");

    if (!isNew(saved))
        return 0;
    const QByteArray savedAgain = loadedAndSaved(saved); // without carriage returns, which a load drops
    if (!hasByteOrderMark(savedAgain))
        requireSame(loadedAndSaved(savedAgain), savedAgain, "what was saved twice and loaded is the same");
    return 0;
}
