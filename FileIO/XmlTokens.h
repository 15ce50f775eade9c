#pragma once

#include <QXmlStreamReader>

namespace Nereo::Io {

/// Whether reading on can give another token. QXmlStreamReader::atEnd() can't tell: after a premature end it
/// asks the device, and one whose reads fail may never be at its end.
inline bool hasTokens(const QXmlStreamReader& xml)
{
    return !xml.hasError() && !xml.isEndDocument();
}

} // namespace Nereo::Io
