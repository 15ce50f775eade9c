#include "ConfigurationValues.h"

#include "NumberFault.h"

#include <NereoUtility/StringConversion.h>

namespace Nereo::Inspection {

namespace {

using Io::Setting;

Item::Type itemTypeOf(Setting::Type type)
{
    return type == Setting::Int   ? Item::Type::Integer
        : type == Setting::Double ? Item::Type::Number
                                  : Item::Type::Text;
}

QVariant valueOf(const Setting& setting)
{
    switch (setting.type()) {
    case Setting::Int:
        return setting.valueAsInt();
    case Setting::Double:
        return setting.valueAsDouble();
    default:
        return Util::toQString(setting.valueAsString());
    }
}

/// The setting gets its text by way of a std::string, which loses the mark when it becomes a QString again.
bool startsWithByteOrderMark(QStringView text)
{
    return !text.isEmpty() && text.front() == QChar(QChar::ByteOrderMark);
}

/// What the setting's conversion can't take.
std::optional<Rule> ruleOf(Setting::Type type, QStringView text)
{
    switch (type) {
    case Setting::Int:
        return integerFault(text);
    case Setting::Double:
        return numberFault(text);
    default:
        return startsWithByteOrderMark(text) ? std::optional(Rule::StrayByteOrderMark) : std::nullopt;
    }
}

} // namespace

const QStringList& configurationKeys()
{
    static const QStringList keys = [] {
        QStringList names;
        for (const std::string& key : Io::Nereo2ConfigFile().keys())
            names.append(Util::toQString(key));
        return names;
    }();
    return keys;
}

std::optional<Item::Type> typeOfSetting(const QString& key)
{
    static const Io::Nereo2ConfigFile configuration;
    const std::string name = Util::toStdString(key);
    return configuration.contains(name) ? std::optional(itemTypeOf(configuration.setting(name).type()))
                                        : std::nullopt;
}

bool ConfigurationValues::isKey(const QString& name) const
{
    return configuration_.contains(Util::toStdString(name));
}

bool ConfigurationValues::isNumber(const QString& key) const
{
    return configuration_.setting(Util::toStdString(key)).type() != Setting::String;
}

bool ConfigurationValues::isRepeated(const QString& key)
{
    const int met = met_.size();
    met_.insert(key);
    return met_.size() == met;
}

void ConfigurationValues::reportUnknown(Rule rule, const QString& name, const Place& place)
{
    Discovery discovery {rule, place, addressPart(name), name};
    discovery.knownNames = &configurationKeys();
    listener_.finding(discovery);
}

std::optional<Discovery> ConfigurationValues::faultOf(const QString& key, QStringView text) const
{
    const std::optional<Rule> rule = ruleOf(configuration_.setting(Util::toStdString(key)).type(), text);
    if (!rule)
        return {};
    return Discovery {*rule, {}, key, isNumber(key) ? excerpt(text.trimmed()) : QString()};
}

void ConfigurationValues::tellItem(const QString& key, const Place& place, qint64 length,
                                   const QString& spelling, const QString& text)
{
    Setting& setting = configuration_.setting(Util::toStdString(key));
    setting.setValueFromString(Util::toStdString(text));
    listener_.item({key, itemTypeOf(setting.type()), place, length, spelling, valueOf(setting)});
}

} // namespace Nereo::Inspection
