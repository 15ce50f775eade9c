#include "EntityLimit.h"

#include <QFile>

#include <algorithm>
#include <iterator>

namespace Nereo::Io {

namespace {

constexpr qint64 mostCharacters = 8 << 20;
constexpr qint64 mostCharactersEach = 4096; // Qt's
constexpr qint64 shortestReference = 3;     // "&e;"
constexpr qint64 blockSize = 16 * 1024;

/// Whether the encoding writes each ampersand with the byte that it is in ASCII. EBCDIC has another one, and
/// UTF-7 sometimes several.
bool hasAmpersandBytes(const QStringRef& encoding)
{
    static constexpr const char* families[] = {"UTF-8",    "UTF-16",    "UTF-32",
                                               "US-ASCII", "ISO-8859-", "windows-125"};
    const auto isOf = [&](const char* family) {
        return encoding.startsWith(QLatin1String(family), Qt::CaseInsensitive);
    };
    return encoding.isEmpty() || std::any_of(std::begin(families), std::end(families), isOf);
}

/// Whether a document that begins so can declare entities of its own, and tells its references by their
/// ampersands.
bool hasCountableReferences(const QByteArray& start)
{
    const QByteArray ascii = QByteArray(start).replace('\0', QByteArray()); // of UTF-16, too
    if (!ascii.contains("<!DOCTYPE"))
        return false;
    QXmlStreamReader declaration(start);
    declaration.readNext();
    return hasAmpersandBytes(declaration.documentEncoding());
}

qint64 countReferences(QIODevice& device)
{
    qint64 references = 0;
    char block[blockSize];
    for (qint64 size; (size = device.read(block, blockSize)) > 0;)
        references += std::count(block, block + size, '&');
    return references;
}

/// The most references that there can be.
qint64 mostReferences(QIODevice& device)
{
    const auto* const file = qobject_cast<QFileDevice*>(&device);
    if (file != nullptr && !file->isSequential() && hasCountableReferences(device.peek(blockSize))) {
        QFile again(file->fileName()); // so that nothing changes for the stream that is about to read it
        if (again.open(QIODevice::ReadOnly))
            return countReferences(again);
    }
    return device.size() / shortestReference;
}

} // namespace

void limitEntities(QXmlStreamReader& xml)
{
    const qint64 references = std::max(mostReferences(*xml.device()), qint64(1));
    xml.setEntityExpansionLimit(int(std::min(mostCharactersEach, mostCharacters / references)));
}

} // namespace Nereo::Io
