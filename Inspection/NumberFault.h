#pragma once

#include "Rule.h"

#include <QStringView>

#include <optional>

namespace Nereo::Inspection {

// What is wrong with a text that a load turns into a number with QString::toInt() or toDouble(), which give 0
// for what they can't read. None if it is one.

NEREOINSPECTION_EXPORT std::optional<Rule> integerFault(QStringView text);
NEREOINSPECTION_EXPORT std::optional<Rule> numberFault(QStringView text);

// What is read of a text that is surely read to its end, be it by these functions or by a text stream, as
// most are. None if it takes more to find out.

NEREOINSPECTION_EXPORT std::optional<int> plainInteger(QStringView text);
NEREOINSPECTION_EXPORT std::optional<double> plainNumber(QStringView text);

/// How long such a number is as the first word of a text, which begins with it; 0 if it doesn't.
NEREOINSPECTION_EXPORT int plainNumberLength(QStringView text);

/// Whether a line is so many such numbers, with white space around them, and nothing else.
NEREOINSPECTION_EXPORT bool arePlainNumbers(QStringView line, int count);

/// How a rule about a number reads where no load takes it.
Rule unreadNumber(Rule rule);

} // namespace Nereo::Inspection
