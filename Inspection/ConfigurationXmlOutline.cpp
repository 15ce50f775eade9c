#include "ConfigurationValues.h"
#include "VersionFault.h"
#include "Walker.h"
#include "XmlFile.h"

#include <FileIO/ConfigurationForms.h>
#include <NereoUtility/Version.h>

namespace Nereo::Inspection {

namespace {

constexpr char versionAddress[] = "version";

/// The way through one file.
class ConfigurationXmlWalk {
public:
    ConfigurationXmlWalk(const InputFile& file, Listener& listener)
        : xml_(file, listener), values_(listener), listener_(listener)
    {
    }

    void run()
    {
        bool hasRoot = false;
        while (xml_.next()) {
            if (!xml_.isStartElement() || xml_.name() != QLatin1String(Io::configurationElement))
                continue;
            hasRoot = true;
            readVersion();
            while (xml_.nextChild())
                readSetting();
        }
        if (!hasRoot && !xml_.hasError())
            listener_.finding({Rule::NoRoot, xml_.endOfFile(), {}, {}, {Io::configurationElement}});
        xml_.reportEnd();
    }

private:
    void readVersion()
    {
        const QString name = QLatin1String(Io::configurationVersionAttribute);
        if (!xml_.hasAttribute(name))
            return;
        const QString text = xml_.attribute(name);
        const Place place = xml_.attributePlace(name);
        if (!checkVersion(text, true, place, QLatin1String(versionAddress), listener_) && hasVersion_)
            listener_.finding({Rule::RepeatedKey, place, QLatin1String(versionAddress), name});
        hasVersion_ = hasVersion_ || !text.isEmpty();
        if (listener_.wantsItems()) {
            const auto version = text.isEmpty() ? Util::Version::Current : Util::Version(text);
            listener_.item({QLatin1String(versionAddress), Item::Type::Version, place,
                            xml_.attributeLength(name), xml_.attributeSpelling(name), version.toString()});
        }
    }

    void readSetting()
    {
        const QString key = xml_.name().toString();
        if (!values_.isKey(key)) {
            if (!listener_.onlyCounts(Rule::UnknownElementKey))
                values_.reportUnknown(Rule::UnknownElementKey, key, xml_.place());
            return xml_.skipElement();
        }
        if (values_.isRepeated(key) && !listener_.onlyCounts(Rule::RepeatedKey))
            listener_.finding({Rule::RepeatedKey, xml_.place(), key, key});
        const XmlText text = xml_.readText(useOf(key), key);
        if (listener_.wantsItems())
            values_.tellItem(key, xml_.place(text), xml_.length(text), xml_.spelling(text), text.text);
        if (text.isWhole)
            check(key, text);
    }

    XmlText::Use useOf(const QString& key) const
    {
        if (listener_.wantsItems())
            return XmlText::Use::Value;
        return values_.isNumber(key) ? XmlText::Use::Number : XmlText::Use::Nothing;
    }

    void check(const QString& key, const XmlText& text)
    {
        if (std::optional<Discovery> fault = values_.faultOf(key, text.text)) {
            fault->place = fault->rule == Rule::MissingValue ? xml_.endPlace(text) : xml_.place(text);
            listener_.finding(*fault);
        } else if (text.hasReturn && !values_.isNumber(key)) {
            listener_.finding({Rule::LostCarriageReturn, xml_.place(text), key});
        }
    }

    XmlFile xml_;
    ConfigurationValues values_;
    Listener& listener_;
    bool hasVersion_ = false; ///< of an earlier element
};

} // namespace

void walkConfigurationXml(const InputFile& file, Listener& listener)
{
    if (!Io::isXmlConfiguration(file.path()))
        listener.finding({
            Rule::XmlWithoutSuffix, {1, 1, 0}
        });
    ConfigurationXmlWalk(file, listener).run();
}

} // namespace Nereo::Inspection
