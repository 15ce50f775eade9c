#pragma once

#include <QIODevice>
#include <QXmlStreamReader>

#include <algorithm>

namespace Nereo::Io {

/// Whether reading on can give another token. QXmlStreamReader::atEnd() can't tell: after a premature end it
/// asks the device, and one whose reads fail may never be at its end.
inline bool hasTokens(const QXmlStreamReader& xml)
{
    return !xml.hasError() && !xml.isEndDocument();
}

/// Lets so many references to entities lengthen the document by some million characters in all. Qt's own
/// limit is for each of them, so that a file of a megabyte could ask for gigabytes.
inline void limitEntities(QXmlStreamReader& xml, qint64 references)
{
    constexpr qint64 mostCharacters = 8 << 20;
    constexpr qint64 mostCharactersEach = 4096; // Qt's
    xml.setEntityExpansionLimit(
        int(std::min(mostCharactersEach, mostCharacters / std::max(references, qint64(1)))));
}

/// The most references that a file of this size has room for. Knowing no better, one has to start with them.
inline qint64 mostReferences(const QIODevice& device)
{
    constexpr qint64 shortestReference = 3; // "&e;"
    return device.size() / shortestReference;
}

/// The references in the whole device, which is left where it was.
inline qint64 countReferences(QIODevice& device)
{
    const qint64 position = device.pos();
    if (!device.seek(0))
        return mostReferences(device);
    qint64 references = 0;
    char block[16384];
    for (qint64 size; (size = device.read(block, sizeof block)) > 0;)
        references += std::count(block, block + size, '&');
    device.seek(position);
    return references;
}

/// Goes to the next token. A document that declares entities has them limited by the references that are
/// there.
inline void readToken(QXmlStreamReader& xml)
{
    xml.readNext();
    if (xml.isDTD() && xml.device() != nullptr && !xml.device()->isSequential())
        limitEntities(xml, countReferences(*xml.device()));
}

} // namespace Nereo::Io
