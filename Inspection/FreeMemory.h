#pragma once

#include <NereoInspection/Export.h>

#include <QtGlobal>

namespace Nereo::Inspection {

/// How many bytes the system could give this process now without taking them from another one; where it
/// doesn't say, a number that most have.
NEREOINSPECTION_EXPORT qint64 freeMemory();

} // namespace Nereo::Inspection
