#pragma once

#include <QStringList>

namespace Nereo::Inspection {

/// All that files may call a field variable, which for conductivities is two names; not kNone, which is none.
const QStringList& variableNames();

const QStringList& nodeFlagNames();

/// What a field, or the quantity of a condition, may be called.
const QStringList& variableAndFlagNames();

} // namespace Nereo::Inspection
