#pragma once

#include <NereoFileIO/Nereo2ConfigFile.h>

#include <QByteArray>
#include <QSet>

/// What targets need to compare what is saved and loaded again.

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

/// Whether the bytes are met for the first time. Most inputs are saved as one before them, and to load that
/// again would only take time.
inline bool isNew(const QByteArray& saved)
{
    constexpr int mostRemembered = 10000;

    static QSet<QByteArray> remembered;
    if (remembered.contains(saved))
        return false;
    if (remembered.size() == mostRemembered)
        remembered.clear();
    remembered.insert(saved);
    return true;
}
