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

/// Files are opened as text, which takes every carriage return off on the way in.
inline QByteArray withoutReturns(QByteArray bytes)
{
    return bytes.replace('\r', "");
}
