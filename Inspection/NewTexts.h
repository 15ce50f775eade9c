#pragma once

#include "EditedFile.h"

namespace Nereo::Inspection {

/// The text to be written for a value of the type, and what a load of the kind makes of it. Refuses what a
/// load wouldn't read.
NewText newText(FileKind kind, Item::Type type, const QString& given);

/// The shortest text that is read as the number.
QString shortestText(double number);

} // namespace Nereo::Inspection
