#pragma once

#include <QString>

#include <string>

namespace Nereo::Io {

/// UTF-8 to QString as Util::toQString() does it, but for a byte order mark at the beginning, which that
/// takes for the mark of an encoding and drops. For a text that a getter gave, in which it is a character: a
/// writer puts it into the file, and a look-up compares it.
QString toExactQString(const std::string& text);

} // namespace Nereo::Io
