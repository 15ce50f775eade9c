#include "ConfigurationValues.h"
#include "VersionFault.h"
#include "Walker.h"
#include "XmlFile.h"

#include <FileIO/ConfigurationForms.h>

namespace Nereo::Inspection {

namespace {

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
            version_.read(xml_, listener_);
            while (xml_.nextChild())
                readSetting();
        }
        if (!hasRoot && !xml_.hasError())
            listener_.finding({Rule::NoRoot, xml_.endOfFile(), {}, {}, {Io::configurationElement}});
        xml_.reportEnd();
    }

private:
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
    DocumentVersion version_ {Io::configurationVersionAttribute, Rule::RepeatedKey};
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
