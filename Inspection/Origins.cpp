#include <NereoInspection/Origins.h>

#include "Walker.h"

#include <FileIO/ConfigurationForms.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoUtility/StringConversion.h>

#include <map>

namespace Nereo::Inspection {

namespace {

using Io::Nereo2ConfigFile;

struct KnownOrigin {
    Origin origin = Origin::Default;
    Place place;
};

/// Takes the values of a file as a load does, up to where that ends.
class LoadedValues : public Listener {
public:
    LoadedValues(Nereo2ConfigFile& configuration, std::map<std::string, KnownOrigin>& origins)
        : configuration_(configuration), origins_(origins)
    {
    }

    bool wantsItems() const override { return true; }

    void item(const Item& item) override
    {
        const std::string key = Util::toStdString(item.address);
        if (end_ || !configuration_.contains(key)) // which the version is
            return;
        Io::Setting& setting = configuration_.setting(key);
        if (item.type == Item::Type::Integer)
            setting.setValue(item.value.toInt());
        else if (item.type == Item::Type::Number)
            setting.setValue(item.value.toDouble());
        else
            setting.setValueFromString(Util::toStdString(item.value.toString()));
        origins_[key] = {Origin::File, item.place};
    }

    void finding(const Discovery& discovery) override
    {
        const bool isOfTheName = // which says nothing where the kind is given
            discovery.rule == Rule::XmlWithoutSuffix || discovery.rule == Rule::TextWithXmlSuffix;
        if (end_ || isOfTheName || !endsLoad(discovery.effect.value_or(rowOf(discovery.rule).effect)))
            return;
        FindingListener findings;
        findings.finding(discovery);
        end_ = findings.takeFindings().front();
    }

    const std::optional<Finding>& end() const { return end_; }

private:
    Nereo2ConfigFile& configuration_;
    std::map<std::string, KnownOrigin>& origins_;
    std::optional<Finding> end_;
};

/// Takes a command line, and says what is wrong with it.
QString takeCommandLine(const std::vector<std::string>& arguments, Nereo2ConfigFile& configuration,
                        std::map<std::string, KnownOrigin>& origins)
{
    if (!configuration.loadFromRequiredCommandLineArguments(arguments))
        return QStringLiteral("the command line has no prefix of the job");
    for (const std::string& key : {Nereo2ConfigFile::ExePath, Nereo2ConfigFile::JobPrefix})
        origins[key] = {Origin::CommandLine, {}};
    constexpr std::size_t required = 2;
    if (arguments.size() % 2 != 0)
        return QStringLiteral("the last argument of the command line has no value, and none is taken");
    for (std::size_t i = required; i < arguments.size(); i += 2) {
        const std::vector<std::string> pair {arguments[0], arguments[1], arguments[i], arguments[i + 1]};
        if (!configuration.loadFromOptionalCommandLineArguments(pair))
            return QStringLiteral("the command line has \"%1\", which is no setting")
                .arg(Util::toQString(arguments[i]));
        origins[arguments[i].substr(1)] = {Origin::CommandLine, {}};
    }
    return {};
}

} // namespace

QString originName(Origin origin)
{
    static constexpr const char* names[] = {"default", "file", "command-line"};
    return QLatin1String(names[int(origin)]);
}

EffectiveConfiguration effectiveConfiguration(const std::string& path,
                                              const std::vector<std::string>& commandLine,
                                              const CheckOptions& options)
{
    Nereo2ConfigFile configuration;
    std::map<std::string, KnownOrigin> origins;
    LoadedValues values(configuration, origins);
    const InputFile file(path);
    const FileKind bySuffix =
        Io::isXmlConfiguration(path) ? FileKind::ConfigurationXml : FileKind::ConfigurationText;
    const FileKind kind = options.kind == FileKind::Unknown ? bySuffix : options.kind;
    if (!file.isOpen())
        values.finding({Rule::CannotOpen, {}, {}, file.errorString()});
    else if (kind == FileKind::ConfigurationXml || kind == FileKind::ConfigurationText)
        walkOf(kind)(file, values);

    EffectiveConfiguration effective;
    effective.endOfLoad = values.end();
    if (!commandLine.empty())
        effective.commandLineError = takeCommandLine(commandLine, configuration, origins);
    for (const std::string& key : configuration.keys()) {
        const KnownOrigin& known = origins[key];
        effective.settings.push_back({Util::toQString(key),
                                      Util::toQString(configuration.setting(key).valueAsString()),
                                      known.origin, known.place});
    }
    return effective;
}

} // namespace Nereo::Inspection
