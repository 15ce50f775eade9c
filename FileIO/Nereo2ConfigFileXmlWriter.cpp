#include "Nereo2ConfigFileXmlWriter.h"

#include "ConfigurationForms.h"

#include "ExactText.h"

#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoUtility/StringConversion.h>

namespace Nereo::Io {

Nereo2ConfigFileXmlWriter::Nereo2ConfigFileXmlWriter(const Nereo2ConfigFile& config) : config_(&config) {}

void Nereo2ConfigFileXmlWriter::write(QXmlStreamWriter& xml)
{
    xml.writeStartDocument();
    xml.writeStartElement(configurationElement);
    xml.writeAttribute(configurationVersionAttribute, config_->version().toString());
    for (const std::string& key : config_->keys()) {
        const QString value = toExactQString(config_->setting(key).valueAsString());
        if (!value.isEmpty())
            xml.writeTextElement(Util::toQString(key), value);
    }
    xml.writeEndElement();
    xml.writeEndDocument();
}

} // namespace Nereo::Io
