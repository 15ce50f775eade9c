#pragma once

#include <NereoFileIO/Export.h>

#include <QXmlStreamReader>

namespace Nereo::Io {

/// Lets the entities that the document declares lengthen it by 64 million characters in all. Qt's own limit
/// is for each reference, so that a file of a megabyte could ask for gigabytes. The stream must have read
/// nothing of its device yet.
///
/// It reads up to the end of the document type, which tells whether entities are declared; if so, it counts
/// the ampersands of the document and shares the characters among them. Then the device is where it was. One
/// that can't go back, such as a pipe, keeps what was read in memory.
NEREOFILEIO_EXPORT void limitEntities(QXmlStreamReader& xml);

} // namespace Nereo::Io
