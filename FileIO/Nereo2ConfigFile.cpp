#include <NereoFileIO/Nereo2ConfigFile.h>

#include "ConfigurationForms.h"
#include "FileAccess.h"
#include "Nereo2ConfigFileTextReader.h"
#include "Nereo2ConfigFileTextWriter.h"
#include "Nereo2ConfigFileXmlReader.h"
#include "Nereo2ConfigFileXmlWriter.h"

#include <NereoUtility/StringConversion.h>

#include <QFileInfo>

#include <stdexcept>
#include <utility>

namespace Nereo::Io {

namespace {

/// The absolute path of the folder that holds a file. A name with a NUL is no file's: it is taken as it
/// stands, which is what Qt does too, but with a warning.
QString folderOf(const std::string& path)
{
    const QFileInfo file(Util::toQString(path));
    return path.find('\0') == std::string::npos ? file.absolutePath() : file.path();
}

template <class Settings>
auto& find(Settings& settings, const std::string& key)
{
    const auto found = settings.find(key); // the message of at() depends on the standard library
    if (found == settings.end())
        throw std::out_of_range("invalid map<K, T> key");
    return found->second;
}

} // namespace

const std::string Nereo2ConfigFile::DefaultName = "NEREO2_default.xml";

#define CONFIG_SETTING(key, defaultValue) const std::string Nereo2ConfigFile::key = #key;
#include <NereoFileIO/Nereo2ConfigFile.def>

Nereo2ConfigFile::Nereo2ConfigFile()
{
#define CONFIG_SETTING(key, defaultValue) settings_.emplace(key, Setting(key, defaultValue));
#include <NereoFileIO/Nereo2ConfigFile.def>
    defaults_ = settings_;
}

Nereo2ConfigFile::Nereo2ConfigFile(const Nereo2ConfigFile& other) = default;
Nereo2ConfigFile& Nereo2ConfigFile::operator=(const Nereo2ConfigFile& other) = default;

// Each object keeps the defaults, which are the same in all.
Nereo2ConfigFile::Nereo2ConfigFile(Nereo2ConfigFile&& other) : Nereo2ConfigFile()
{
    *this = std::move(other);
}

Nereo2ConfigFile& Nereo2ConfigFile::operator=(Nereo2ConfigFile&& other) noexcept
{
    settings_ = std::move(other.settings_);
    File::operator=(std::move(other));
    return *this;
}

Nereo2ConfigFile::~Nereo2ConfigFile() = default;

std::vector<std::string> Nereo2ConfigFile::keys() const
{
    std::vector<std::string> keys;
    keys.reserve(settings_.size());
    for (const auto& [key, setting] : settings_)
        keys.push_back(key);
    return keys;
}

bool Nereo2ConfigFile::contains(const std::string& key) const
{
    return settings_.count(key) != 0;
}

Setting& Nereo2ConfigFile::setting(const std::string& key)
{
    return find(settings_, key);
}

const Setting& Nereo2ConfigFile::setting(const std::string& key) const
{
    return find(settings_, key);
}

void Nereo2ConfigFile::remove(const std::string& key)
{
    settings_.erase(key);
}

void Nereo2ConfigFile::clear()
{
    settings_.clear();
}

void Nereo2ConfigFile::reset(const std::string& key)
{
    const auto found = defaults_.find(key);
    if (found != defaults_.end())
        settings_[found->first] = found->second;
}

void Nereo2ConfigFile::resetAll()
{
    // One by one, since assigning the whole map would leave references to its settings dangling.
    for (const auto& [key, setting] : defaults_)
        settings_[key] = setting;
}

bool Nereo2ConfigFile::loadFromRequiredCommandLineArguments(const std::vector<std::string>& args)
{
    if (args.size() < 2)
        return false;
    setting(ExePath).value_ = folderOf(args[0]);
    setting(JobPrefix).value_ = Util::toQString(args[1]);
    return true;
}

bool Nereo2ConfigFile::loadFromOptionalCommandLineArguments(const std::vector<std::string>& args)
{
    if (args.size() % 2 != 0)
        return false;
    for (std::size_t i = 2; i < args.size(); i += 2) {
        const QString option = Util::toQString(args[i]);
        if (!option.startsWith(QLatin1Char('-')))
            return false;
        const std::string key = Util::toStdString(option.mid(1));
        if (!contains(key))
            return false;
        setting(key).setValueFromString(args[i + 1]);
    }
    return true;
}

bool Nereo2ConfigFile::doLoadFrom(const std::string& path)
{
    return isXmlConfiguration(path) ? load<Nereo2ConfigFileXmlReader>(path, *this)
                                    : load<Nereo2ConfigFileTextReader>(path, *this);
}

bool Nereo2ConfigFile::doSaveTo(const std::string& path) const
{
    return isXmlConfiguration(path) ? save<Nereo2ConfigFileXmlWriter>(path, *this)
                                    : save<Nereo2ConfigFileTextWriter>(path, *this);
}

} // namespace Nereo::Io
