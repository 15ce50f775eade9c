#pragma once

#include "InputFile.h"
#include "Listener.h"

#include <NereoInspection/FileKind.h>

namespace Nereo::Inspection {

/// The kind of an open file by its content.
FileKind kindOf(const InputFile& file);

/// Tells a listener of everything in an open file of one kind, in one pass and as a load would read it.
using Walk = void (*)(const InputFile& file, Listener& listener);

/// The walk for files of a kind, nullptr if there is none.
Walk walkOf(FileKind kind);

// Each stands in a source of its own, named after the kind.
void walkConfigurationXml(const InputFile& file, Listener& listener);
void walkConfigurationText(const InputFile& file, Listener& listener);
void walkMaterialDatabase(const InputFile& file, Listener& listener);
void walkGeometryBoundary(const InputFile& file, Listener& listener);
void walkControlFile(const InputFile& file, Listener& listener);
void walkResults(const InputFile& file, Listener& listener);

} // namespace Nereo::Inspection
