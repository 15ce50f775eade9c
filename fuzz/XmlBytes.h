#pragma once

#include <FileIO/XmlTokens.h>

#include <algorithm>

/// The memory that a document accounts for, where each of its characters takes so many bytes, and each of
/// those by which its entities may lengthen it.
inline qint64 xmlBytes(const QByteArray& document, qint64 bytesOfACharacter)
{
    constexpr qint64 mostCharacters = 64'000'000;
    constexpr qint64 mostCharactersEach = 4096;
    constexpr qint64 shortestReference = 3; // "&e;"

    QXmlStreamReader xml(document);
    xml.setEntityExpansionLimit(0);
    while (Nereo::Io::hasTokens(xml) && !xml.isDTD() && !xml.isStartElement())
        xml.readNext();
    qint64 characters = document.size();
    if (xml.hasError() || !xml.entityDeclarations().isEmpty())
        characters += std::min(mostCharacters, document.size() / shortestReference * mostCharactersEach);
    return characters * bytesOfACharacter;
}
