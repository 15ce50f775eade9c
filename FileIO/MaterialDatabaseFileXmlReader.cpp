#include "MaterialDatabaseFileXmlReader.h"

#include "Assertion.h"
#include "MaterialDatabaseXml.h"
#include "NumberText.h"
#include "XmlTokens.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/PropertyType.h>
#include <NereoUtility/StringConversion.h>

namespace Nereo::Io {

namespace {

bool isAt(const QXmlStreamReader& xml, const char* element)
{
    return xml.name() == QLatin1String(element);
}

// The stream has to stand on the element that is about to be read.
void requireStartOf(const char* element, const QXmlStreamReader& xml)
{
    NEREO_ASSERT_AT(xml.isStartElement() && isAt(xml, element), "FileIO/MaterialDatabaseFileXmlReader",
                    __LINE__);
}

QString attribute(const QXmlStreamReader& xml, const char* name)
{
    return xml.attributes().value(QLatin1String(name)).toString();
}

// Of an element that is broken these three give what came before the error, and that is stored like the rest.

std::string readText(QXmlStreamReader& xml)
{
    return Util::toStdString(xml.readElementText());
}

int readInteger(QXmlStreamReader& xml)
{
    return xml.readElementText().toInt();
}

double readNumber(QXmlStreamReader& xml)
{
    return parseNumber(xml.readElementText());
}

} // namespace

MaterialDatabaseFileXmlReader::MaterialDatabaseFileXmlReader(MaterialDatabaseFile& database)
    : database_(&database)
{
}

bool MaterialDatabaseFileXmlReader::read(QXmlStreamReader& xml)
{
    database_->clear();
    while (hasTokens(xml)) {
        xml.readNext();
        if (xml.isStartElement() && isAt(xml, MaterialXml::database))
            readDatabase(xml);
    }
    return true;
}

void MaterialDatabaseFileXmlReader::readDatabase(QXmlStreamReader& xml)
{
    requireStartOf(MaterialXml::database, xml);

    const QString version = attribute(xml, MaterialXml::versionAttribute);
    if (!version.isEmpty())
        database_->setVersion(Util::Version(version));

    while (xml.readNextStartElement()) {
        if (isAt(xml, MaterialXml::material))
            readMaterial(xml);
        else
            xml.skipCurrentElement();
    }
}

void MaterialDatabaseFileXmlReader::readMaterial(QXmlStreamReader& xml)
{
    requireStartOf(MaterialXml::material, xml);

    database_->add(Material(Util::toStdString(attribute(xml, MaterialXml::typeAttribute))));
    Material& material = database_->material(database_->count() - 1);
    while (xml.readNextStartElement())
        readMaterialElement(xml, material);
}

void MaterialDatabaseFileXmlReader::readMaterialElement(QXmlStreamReader& xml, Material& material)
{
    if (isAt(xml, MaterialXml::property))
        return readPropertyOf(xml, material);
    if (isAt(xml, MaterialXml::name))
        return material.setName(readText(xml));
    if (isAt(xml, MaterialXml::id))
        return material.setId(readInteger(xml));
    for (const MaterialReferenceValue& reference : materialReferenceValues) {
        if (isAt(xml, reference.element))
            return (material.*reference.setValue)(readNumber(xml));
    }
    xml.skipCurrentElement();
}

void MaterialDatabaseFileXmlReader::readPropertyOf(QXmlStreamReader& xml, Material& material)
{
    const QString name = attribute(xml, MaterialXml::typeAttribute);
    const auto type = Clt::PropertyType::fromName(name);
    if (type.isValid())
        readProperty(xml, material.property(type.code()));
    else
        xml.raiseError("Unknown property type \"" + name + '"');
}

void MaterialDatabaseFileXmlReader::readProperty(QXmlStreamReader& xml, MaterialProperty& property)
{
    requireStartOf(MaterialXml::property, xml);

    while (xml.readNextStartElement())
        readPropertyElement(xml, property);
    property.giveBackRoom();
}

void MaterialDatabaseFileXmlReader::readPropertyElement(QXmlStreamReader& xml, MaterialProperty& property)
{
    if (isAt(xml, MaterialXml::point))
        readPoint(xml, property);
    else if (isAt(xml, MaterialXml::variationType))
        property.setVariationType(readText(xml));
    else if (isAt(xml, MaterialXml::value))
        property.setValue(readNumber(xml));
    else if (isAt(xml, MaterialXml::independentVariable))
        property.setIndependentVariable(CodeNameTable::instance().codeForName(xml.readElementText()));
    else
        xml.skipCurrentElement();
}

void MaterialDatabaseFileXmlReader::readPoint(QXmlStreamReader& xml, MaterialProperty& property)
{
    requireStartOf(MaterialXml::point, xml);

    Point point;
    while (xml.readNextStartElement()) {
        if (isAt(xml, MaterialXml::x))
            point.setX(readNumber(xml));
        else if (isAt(xml, MaterialXml::y))
            point.setY(readNumber(xml));
        else
            xml.skipCurrentElement();
    }
    property.addPoint(point);
}

} // namespace Nereo::Io
