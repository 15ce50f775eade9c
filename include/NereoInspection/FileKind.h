#pragma once

#include <NereoInspection/Export.h>

#include <QString>

#include <string>

namespace Nereo::Inspection {

/// What a file holds, and in which form.
enum class FileKind {
    Unknown, ///< none of the others
    ConfigurationXml,
    ConfigurationText,
    Control,
    Materials,
    GeometryBoundary,
    Results
};

/// The kind's name for people and scripts, such as "configuration-xml"; empty for Unknown.
NEREOINSPECTION_EXPORT QString kindName(FileKind kind);

/// The kind of that name, Unknown if there is none.
NEREOINSPECTION_EXPORT FileKind kindOfName(const QString& name);

/// The kind of a file by what stands in it; its name doesn't matter. The beginning of the file tells: the
/// root of a document, the titles of the sections, a setting's key at the start of a line, the first words of
/// a results file. Unknown when nothing tells, as of an empty file, and when the file can't be read.
NEREOINSPECTION_EXPORT FileKind kindOfFile(const std::string& path);

} // namespace Nereo::Inspection
