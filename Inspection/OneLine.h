#pragma once

#include <NereoInspection/Export.h>

#include <QString>

namespace Nereo::Inspection {

/// The text in a line of its own, without what would move a terminal's cursor or change its colours: control
/// characters and ends of lines are written as in JSON.
NEREOINSPECTION_EXPORT QString oneLine(const QString& text);

} // namespace Nereo::Inspection
