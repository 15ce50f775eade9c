#include "Nereo2ConfigFileXmlReader.h"

#include "Assertion.h"
#include "ConfigurationForms.h"
#include "XmlTokens.h"

#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoUtility/StringConversion.h>

namespace Nereo::Io {

Nereo2ConfigFileXmlReader::Nereo2ConfigFileXmlReader(Nereo2ConfigFile& config) : config_(&config) {}

bool Nereo2ConfigFileXmlReader::read(QXmlStreamReader& xml)
{
    while (hasTokens(xml)) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == configurationElement)
            readConfiguration(xml);
    }
    return true;
}

void Nereo2ConfigFileXmlReader::readConfiguration(QXmlStreamReader& xml)
{
    NEREO_ASSERT_AT(xml.isStartElement() && xml.name() == "Nereo2Config", "FileIO/Nereo2ConfigFileXmlReader",
                    32);

    const QString version = xml.attributes().value(configurationVersionAttribute).toString();
    if (!version.isEmpty())
        config_->setVersion(Util::Version(version));

    while (xml.readNextStartElement()) {
        const std::string key = Util::toStdString(xml.name().toString());
        if (config_->contains(key))
            config_->setting(key).setValueFromString(Util::toStdString(xml.readElementText()));
        else
            xml.skipCurrentElement();
    }
}

} // namespace Nereo::Io
