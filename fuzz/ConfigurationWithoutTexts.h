#pragma once

#include <NereoFileIO/Nereo2ConfigFile.h>

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
