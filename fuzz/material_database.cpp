// Any bytes as a material database. None of them may stop the process, so that they are given to the reader
// as they are.

#include "Reloading.h"
#include "XmlBytes.h"

#include <FileIO/MaterialDatabaseFileXmlReader.h>
#include <FileIO/MaterialDatabaseFileXmlWriter.h>
#include <NereoFileIO/MaterialDatabaseFile.h>

using namespace Nereo::Io;

namespace {

constexpr qint64 bytesOfAnElementsCharacter = 64; // a material of a thousand bytes takes 24 characters

struct Xml : Format<MaterialDatabaseFile, MaterialDatabaseFileXmlReader, MaterialDatabaseFileXmlWriter> {
    static bool read(const QByteArray& bytes, MaterialDatabaseFile& database)
    {
        return loadBytes<MaterialDatabaseFileXmlReader>(bytes, database,
                                                        xmlBytes(bytes, bytesOfAnElementsCharacter));
    }
};

/// Properties that the type of the material doesn't start with have no type, and a file with one doesn't
/// load.
bool hasPropertyWithoutType(const MaterialDatabaseFile& database)
{
    for (int i = 0; i < database.count(); ++i) {
        const Material& material = database.material(i);
        for (const int code : material.propertyCodes()) {
            if (material.property(code).type().empty())
                return true;
        }
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    MaterialDatabaseFile database = loadedTwice<Xml>(inputBytes(data, size));
    if (hasPropertyWithoutType(database))
        require(!Xml::read(Xml::written(database), database), "a property without a type isn't loaded");
    else
        requireReloadable<Xml>(database);
    return 0;
}
