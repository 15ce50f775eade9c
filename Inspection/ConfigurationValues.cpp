#include "ConfigurationValues.h"

#include "NearestName.h"
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

/// What the setting's conversion can't read.
std::optional<Rule> faultOf(Setting::Type type, const QString& text)
{
    if (type == Setting::Int)
        return integerFault(text);
    return type == Setting::Double ? numberFault(text) : std::nullopt;
}

QStringList keys(const Io::Nereo2ConfigFile& configuration)
{
    QStringList names;
    for (const std::string& key : configuration.keys())
        names.append(Util::toQString(key));
    return names;
}

} // namespace

QString ConfigurationValues::simplified(QStringView text)
{
    return text.toString().simplified();
}

QString ConfigurationValues::asItStands(QStringView text)
{
    return text.toString();
}

bool ConfigurationValues::isKey(const QString& name) const
{
    return configuration_.contains(Util::toStdString(name));
}

void ConfigurationValues::unknownKey(Rule rule, const QString& name, const Place& place)
{
    Discovery discovery {rule, place, addressPart(excerpt(name)), name};
    discovery.consequence = suggestion(name, keys(configuration_));
    listener_.finding(discovery);
}

bool ConfigurationValues::value(const QString& key, const Place& keyPlace, const Place& place, qint64 length,
                                QStringView spelling, Preparation prepare)
{
    if (seen_.contains(key))
        listener_.finding({Rule::RepeatedKey, keyPlace, key, key});
    seen_.insert(key);

    const Setting::Type type = configuration_.setting(Util::toStdString(key)).type();
    if (type == Setting::String) {
        constexpr ushort byteOrderMark =
            0xFEFF; // which a std::string that becomes a QString loses at its start
        const bool isMarked = !spelling.isEmpty() && spelling.front().unicode() == byteOrderMark;
        if (isMarked)
            listener_.finding({Rule::StrayByteOrderMark, place, key, {}});
        if (listener_.wantsItems())
            tellItem(key, place, length, spelling, prepare(spelling));
        return isMarked;
    }

    const QString text = prepare(spelling);
    if (listener_.wantsItems())
        tellItem(key, place, length, spelling, text);
    const std::optional<Rule> fault = faultOf(type, text);
    if (fault)
        listener_.finding({*fault, place, key, text.trimmed()});
    return fault.has_value();
}

void ConfigurationValues::tellItem(const QString& key, const Place& place, qint64 length,
                                   QStringView spelling, const QString& text)
{
    Setting& setting = configuration_.setting(Util::toStdString(key));
    setting.setValueFromString(Util::toStdString(text));
    listener_.item({key, itemTypeOf(setting.type()), place, length, spelling.toString(), valueOf(setting)});
}

} // namespace Nereo::Inspection
