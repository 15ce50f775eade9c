// Any bytes as a material database. None of them may stop the process, so that they are given to the reader
// as they are.

#include "Formats.h"
#include "Reloading.h"
#include "Requirement.h"

#include <FileIO/MaterialDatabaseFileXmlReader.h>
#include <FileIO/MaterialDatabaseFileXmlWriter.h>
#include <NereoFileIO/MaterialDatabaseFile.h>

using namespace Nereo::Io;

namespace {

bool read(const QByteArray& bytes, MaterialDatabaseFile& database)
{
    return readBytes<MaterialDatabaseFileXmlReader>(bytes, database);
}

QByteArray written(const MaterialDatabaseFile& database)
{
    return writtenBytes<MaterialDatabaseFileXmlWriter>(database);
}

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
    const QByteArray bytes = inputBytes(data, size);
    MaterialDatabaseFile database;
    const bool isLoaded = read(bytes, database);
    const QByteArray saved = written(database);

    require(read(bytes, database) == isLoaded, "a second load has this result");
    requireSame(written(database), saved, "a second load changes nothing");

    if (!isNew(saved))
        return 0;
    MaterialDatabaseFile reloaded;
    require(read(saved, reloaded) != hasPropertyWithoutType(database),
            "what was saved can be loaded unless a property has no type");
    if (hasPropertyWithoutType(database))
        return 0;
    require(reloaded.count() == database.count(), "what was saved has all materials");

    // The first save leaves out what its variation doesn't use, and a load drops carriage returns.
    const QByteArray savedAgain = written(reloaded);
    require(read(savedAgain, reloaded), "what was saved twice can be loaded");
    if (!hasByteOrderMark(savedAgain))
        requireSame(written(reloaded), savedAgain, "what was saved twice and loaded is the same");
    return 0;
}
