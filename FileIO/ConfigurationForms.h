#pragma once

#include <NereoUtility/StringConversion.h>

#include <QFileInfo>

#include <string>

/// What tells the two forms of the configuration from each other, and the words of the XML form.

namespace Nereo::Io {

inline constexpr char configurationElement[] = "Nereo2Config";
inline constexpr char configurationVersionAttribute[] = "Version";

/// Whether a configuration with this name is XML; otherwise it is text.
inline bool isXmlConfiguration(const std::string& path)
{
    return QFileInfo(Util::toQString(path)).suffix() == QLatin1String("xml");
}

} // namespace Nereo::Io
