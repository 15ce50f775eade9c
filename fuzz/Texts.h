#pragma once

#include <NereoFileIO/Nereo2ConfigFile.h>

#include <QByteArray>

/// What the texts of the formats have in common that doesn't survive a save and a load.

/// A configuration in which every text is empty. What is empty isn't saved, so only in here does a load bring
/// everything back that was saved.
inline const Nereo::Io::Nereo2ConfigFile& configurationWithoutTexts()
{
    static const Nereo::Io::Nereo2ConfigFile config = [] {
        Nereo::Io::Nereo2ConfigFile cleared;
        for (const std::string& key : cleared.keys())
            cleared.setting(key).setValueFromString({});
        return cleared;
    }();
    return config;
}

/// A text that begins with a byte order mark loses it whenever it becomes a QString, and so at each save and
/// load.
inline bool hasByteOrderMark(const QByteArray& bytes)
{
    return bytes.contains("\xEF\xBB\xBF");
}
