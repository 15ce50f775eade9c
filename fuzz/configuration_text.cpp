// Any bytes as the text form of a configuration. The one end that the format has for bad content is an
// exception, which is caught here, so that the bytes are given to the reader as they are.

#include "ConfigurationWithoutTexts.h"
#include "Reloading.h"

#include <FileIO/Nereo2ConfigFileTextReader.h>
#include <FileIO/Nereo2ConfigFileTextWriter.h>

#include <stdexcept>

using namespace Nereo::Io;

namespace {

struct TextForm : Format<Nereo2ConfigFile, Nereo2ConfigFileTextReader, Nereo2ConfigFileTextWriter> {
    static Nereo2ConfigFile fresh() { return configurationWithoutTexts(); }

    /// Whether every key in the bytes is known.
    static bool read(const QByteArray& bytes, Nereo2ConfigFile& config)
    {
        try {
            require(Format::read(bytes, config), "text that could be opened is loaded");
            return true;
        } catch (const std::out_of_range& error) {
            require(QByteArray(error.what()) == "invalid map<K, T> key", "the exception is about the key");
            return false;
        }
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    requireReloadable<TextForm>(loadedTwice<TextForm>(inputBytes(data, size)));
    return 0;
}
