#pragma once

#include <NereoUtility/Export.h>

#include <QString>

#include <string>

namespace Nereo::Util {

/// UTF-8 to QString, as QString::fromUtf8 does it: bytes that are no UTF-8 become U+FFFD.
NEREOUTILITY_EXPORT QString toQString(const std::string& text);

/// QString to UTF-8.
NEREOUTILITY_EXPORT std::string toStdString(const QString& text);

} // namespace Nereo::Util
