#include "MaterialDatabaseFileXmlWriter.h"

#include "ExactText.h"
#include "MaterialDatabaseXml.h"
#include "NumberText.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/MaterialType.h>
#include <NereoFileIO/VariationType.h>

namespace Nereo::Io {

namespace {

void writeNumberElement(QXmlStreamWriter& xml, const QString& name, double number)
{
    xml.writeTextElement(name, QLatin1String(NumberText(number)));
}

void writeReferenceValues(QXmlStreamWriter& xml, const Material& material)
{
    const auto type = Clt::MaterialType::fromName(toExactQString(material.type()));
    for (const MaterialReferenceValue& reference : materialReferenceValues) {
        if (isWritten(reference, type))
            writeNumberElement(xml, reference.element, (material.*reference.value)());
    }
}

void writePoints(QXmlStreamWriter& xml, const MaterialProperty& property)
{
    static const QString pointElement = MaterialXml::point;
    static const QString xElement = MaterialXml::x;
    static const QString yElement = MaterialXml::y;

    for (int i = 0; i < property.pointCount(); ++i) {
        xml.writeStartElement(pointElement);
        writeNumberElement(xml, xElement, property.point(i).x());
        writeNumberElement(xml, yElement, property.point(i).y());
        xml.writeEndElement();
    }
}

void writeCurve(QXmlStreamWriter& xml, const MaterialProperty& property)
{
    xml.writeTextElement(MaterialXml::independentVariable,
                         CodeNameTable::instance().nameForCode(property.independentVariable(), false));
    writePoints(xml, property);
}

void writeProperty(QXmlStreamWriter& xml, const MaterialProperty& property)
{
    const QString variationName = toExactQString(property.variationType());
    xml.writeStartElement(MaterialXml::property);
    xml.writeAttribute(MaterialXml::typeAttribute, toExactQString(property.type()));
    xml.writeTextElement(MaterialXml::variationType, variationName);

    const auto variation = Clt::VariationType::fromName(variationName);
    if (isValueWritten(variation))
        writeNumberElement(xml, MaterialXml::value, property.value());
    else if (isCurveWritten(variation))
        writeCurve(xml, property);
    xml.writeEndElement();
}

void writeMaterial(QXmlStreamWriter& xml, const Material& material)
{
    xml.writeStartElement(MaterialXml::material);
    xml.writeAttribute(MaterialXml::typeAttribute, toExactQString(material.type()));
    xml.writeTextElement(MaterialXml::name, toExactQString(material.name()));
    if (material.id() != Material::InvalidId)
        xml.writeTextElement(MaterialXml::id, QString::number(material.id()));
    writeReferenceValues(xml, material);
    for (const int code : material.propertyCodes())
        writeProperty(xml, *material.findProperty(code));
    xml.writeEndElement();
}

} // namespace

MaterialDatabaseFileXmlWriter::MaterialDatabaseFileXmlWriter(const MaterialDatabaseFile& database)
    : database_(&database)
{
}

void MaterialDatabaseFileXmlWriter::write(QXmlStreamWriter& xml)
{
    xml.writeStartDocument();
    xml.writeStartElement(MaterialXml::database);
    xml.writeAttribute(MaterialXml::versionAttribute, database_->version().toString());
    for (int i = 0; i < database_->count(); ++i)
        writeMaterial(xml, database_->material(i));
    xml.writeEndElement();
    xml.writeEndDocument();
}

} // namespace Nereo::Io
