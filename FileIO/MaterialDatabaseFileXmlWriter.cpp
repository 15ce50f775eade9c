#include "MaterialDatabaseFileXmlWriter.h"

#include "ExactText.h"
#include "MaterialReferenceValues.h"
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
    for (const auto& [element, value, setValue, isOfSolids] : materialReferenceValues) {
        if (type == Clt::MaterialType::Fluid || (type == Clt::MaterialType::Solid && isOfSolids))
            writeNumberElement(xml, element, (material.*value)());
    }
}

void writePoints(QXmlStreamWriter& xml, const MaterialProperty& property)
{
    static const QString pointElement = "point";
    static const QString xElement = "x";
    static const QString yElement = "y";

    for (int i = 0; i < property.pointCount(); ++i) {
        xml.writeStartElement(pointElement);
        writeNumberElement(xml, xElement, property.point(i).x());
        writeNumberElement(xml, yElement, property.point(i).y());
        xml.writeEndElement();
    }
}

void writeCurve(QXmlStreamWriter& xml, const MaterialProperty& property)
{
    xml.writeTextElement("independent_variable",
                         CodeNameTable::instance().nameForCode(property.independentVariable(), false));
    writePoints(xml, property);
}

void writeProperty(QXmlStreamWriter& xml, const MaterialProperty& property)
{
    using Clt::VariationType;

    const QString variationName = toExactQString(property.variationType());
    xml.writeStartElement("property");
    xml.writeAttribute("type", toExactQString(property.type()));
    xml.writeTextElement("variation_type", variationName);

    const VariationType variation = VariationType::fromName(variationName);
    if (variation == VariationType::Constant || variation == VariationType::EquationOfState)
        writeNumberElement(xml, "value", property.value());
    else if (variation == VariationType::PiecewiseLinear)
        writeCurve(xml, property);
    xml.writeEndElement();
}

void writeMaterial(QXmlStreamWriter& xml, const Material& material)
{
    xml.writeStartElement("material");
    xml.writeAttribute("type", toExactQString(material.type()));
    xml.writeTextElement("name", toExactQString(material.name()));
    if (material.id() != Material::InvalidId)
        xml.writeTextElement("id", QString::number(material.id()));
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
    xml.writeStartElement("material_database");
    xml.writeAttribute("version", database_->version().toString());
    for (int i = 0; i < database_->count(); ++i)
        writeMaterial(xml, database_->material(i));
    xml.writeEndElement();
    xml.writeEndDocument();
}

} // namespace Nereo::Io
