#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/File.h>
#include <NereoFileIO/Setting.h>

#include <map>
#include <string>
#include <vector>

namespace Nereo::Io {

/// The configuration of a solver run: a fixed set of named, typed settings with factory defaults.
///
/// A file whose suffix is exactly "xml" is XML; any other ("XML" and none among them) is plain text with one
/// setting a line. Either form leaves out settings whose text is empty, and loading changes only the settings
/// that the file names: call resetAll() first if the others are to have their defaults, and clear a text by
/// setValueFromString("") rather than by a file.
///
/// The set of keys is fixed by the constructor. Keys are case-sensitive and compared byte by byte; there is a
/// constant for each, Nereo2ConfigFile::MaxIter for "MaxIter". Nereo2ConfigFile.def lists them with their
/// defaults.
///
/// Loading XML skips elements that are no keys. Loading text throws std::out_of_range at the first word of a
/// line that is no key, and white space after the last line counts as one; the lines before it have taken
/// effect, and the object stays usable.
class NEREOFILEIO_EXPORT Nereo2ConfigFile : public File {
public:
    static const std::string DefaultName; ///< the customary file name, "NEREO2_default.xml"

#define CONFIG_SETTING(key, defaultValue) static const std::string key;
#include <NereoFileIO/Nereo2ConfigFile.def>

    Nereo2ConfigFile(); ///< every setting with its default
    Nereo2ConfigFile(const Nereo2ConfigFile& other);
    Nereo2ConfigFile& operator=(const Nereo2ConfigFile& other);
    /// Leaves a configuration without settings, until they are reset. May throw std::bad_alloc.
    Nereo2ConfigFile(Nereo2ConfigFile&& other);
    Nereo2ConfigFile& operator=(Nereo2ConfigFile&& other) noexcept;
    ~Nereo2ConfigFile() override;

    std::vector<std::string> keys() const; ///< those that are present, ascending
    bool contains(const std::string& key) const;

    /// The setting with the key. Throws std::out_of_range with "invalid map<K, T> key" when it isn't present.
    /// The reference holds until the setting is removed or the whole configuration is assigned to.
    Setting& setting(const std::string& key);
    const Setting& setting(const std::string& key) const;

    void remove(const std::string& key); ///< until reset; no effect when absent
    void clear();                        ///< removes every setting, until reset
    /// Brings a setting back with its default. A key that never was one has no effect.
    void reset(const std::string& key);
    void resetAll();

    /// Takes ExePath, the absolute path of the folder of the executable args[0], and JobPrefix, args[1], from
    /// a solver's command line. False, with nothing changed, when there are fewer than two arguments. Throws
    /// as setting() does when one of the two settings has been removed.
    bool loadFromRequiredCommandLineArguments(const std::vector<std::string>& args);

    /// Takes settings from the pairs of "-Key" and value that follow the first two arguments of a solver's
    /// command line. False, with nothing changed, when the number of arguments is odd; false too at the first
    /// name without a minus sign or without a setting, where the pairs before it have taken effect.
    bool loadFromOptionalCommandLineArguments(const std::vector<std::string>& args);

protected:
    bool doLoadFrom(const std::string& path) override;
    bool doSaveTo(const std::string& path) const override;

private:
    using Settings = std::map<std::string, Setting>; // in the order in which both formats write them

    Settings settings_;
    Settings defaults_;
};

} // namespace Nereo::Io
