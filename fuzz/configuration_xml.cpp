// Any bytes as the XML form of a configuration. None of them may stop the process, so that they are given to
// the reader as they are.

#include "ConfigurationWithoutTexts.h"
#include "Reloading.h"
#include "XmlBytes.h"

#include <FileIO/Nereo2ConfigFileXmlReader.h>
#include <FileIO/Nereo2ConfigFileXmlWriter.h>

using namespace Nereo::Io;

namespace {

constexpr qint64 bytesOfATextsCharacter = 16; // while it is copied from one string to another

struct XmlForm : Format<Nereo2ConfigFile, Nereo2ConfigFileXmlReader, Nereo2ConfigFileXmlWriter> {
    static Nereo2ConfigFile fresh() { return configurationWithoutTexts(); }

    static bool read(const QByteArray& bytes, Nereo2ConfigFile& config)
    {
        return loadBytes<Nereo2ConfigFileXmlReader>(bytes, config, xmlBytes(bytes, bytesOfATextsCharacter));
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    requireReloadable<XmlForm>(loadedTwice<XmlForm>(inputBytes(data, size)));
    return 0;
}
