#pragma once

#include "Listener.h"

namespace Nereo::Inspection {

/// Whether a text is four whole numbers joined by dots.
NEREOINSPECTION_EXPORT bool isVersion(const QString& text);

/// Tells of a version's text that isn't four whole numbers joined by dots. True if it isn't. An empty one is
/// ignored where the load of the kind does so, and read as zeros elsewhere.
NEREOINSPECTION_EXPORT bool checkVersion(const QString& text, bool isEmptyIgnored, const Place& place,
                                         const QString& address, Listener& listener);

} // namespace Nereo::Inspection
