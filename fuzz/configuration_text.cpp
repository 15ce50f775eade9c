// Any bytes as the text form of a configuration. The one end that the format has for bad content is an
// exception, which is caught here, so that the bytes are given to the reader as they are.

#include "Formats.h"
#include "Reloading.h"
#include "Requirement.h"

#include <FileIO/Nereo2ConfigFileTextReader.h>
#include <FileIO/Nereo2ConfigFileTextWriter.h>

#include <stdexcept>

using namespace Nereo::Io;

namespace {

/// Whether every key in the bytes is known.
bool read(const QByteArray& bytes, Nereo2ConfigFile& config)
{
    try {
        require(readBytes<Nereo2ConfigFileTextReader>(bytes, config), "text that could be opened is loaded");
        return true;
    } catch (const std::out_of_range& error) {
        require(QByteArray(error.what()) == "invalid map<K, T> key", "the exception is about the key");
        return false;
    }
}

QByteArray written(const Nereo2ConfigFile& config)
{
    return writtenBytes<Nereo2ConfigFileTextWriter>(config);
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
    const QByteArray savedAgain = loadedAndSaved(saved);
    if (!hasByteOrderMark(savedAgain))
        requireSame(loadedAndSaved(savedAgain), savedAgain, "what was saved twice and loaded is the same");
    return 0;
}
