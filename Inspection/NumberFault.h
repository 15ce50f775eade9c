#pragma once

#include "Rule.h"

#include <QStringView>

#include <optional>

namespace Nereo::Inspection {

// What is wrong with a text that a load turns into a number with QString::toInt() or toDouble(), which give 0
// for what they can't read. None if it is one.

NEREOINSPECTION_EXPORT std::optional<Rule> integerFault(QStringView text);
NEREOINSPECTION_EXPORT std::optional<Rule> numberFault(QStringView text);

/// How a rule about a number reads where no load takes it.
Rule unreadNumber(Rule rule);

} // namespace Nereo::Inspection
