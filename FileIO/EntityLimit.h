#pragma once

#include <NereoFileIO/Export.h>

#include <QXmlStreamReader>

namespace Nereo::Io {

/// Lets the entities of the document on the stream's device, of which nothing has been read yet, lengthen it
/// by 8 million characters in all. Qt's own limit is for each reference, so that a file of a megabyte could
/// ask for gigabytes.
NEREOFILEIO_EXPORT void limitEntities(QXmlStreamReader& xml);

} // namespace Nereo::Io
