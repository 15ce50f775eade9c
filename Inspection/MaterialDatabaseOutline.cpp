#include "LateMaterialNames.h"
#include "MaterialDatabaseValues.h"
#include "MaterialNames.h"
#include "NumberFault.h"
#include "VariableNames.h"
#include "VersionFault.h"
#include "Walker.h"
#include "XmlFile.h"

#include <FileIO/NumberText.h>
#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/PropertyType.h>
#include <NereoUtility/StringConversion.h>

#include <QStringBuilder>

#include <array>
#include <cmath>
#include <map>
#include <unordered_set>

namespace Nereo::Inspection {

namespace {

namespace MaterialXml = Io::MaterialXml;
using Clt::MaterialType;
using Clt::PropertyType;
using Clt::VariationType;

/// The elements that may stand in an element: those of a table, and another one.
template <std::size_t size>
QStringList namesIn(const std::array<ValueElement, size>& elements, const char* other)
{
    QStringList names(QLatin1String {other});
    for (const ValueElement& element : elements)
        names.append(QLatin1String(element.name));
    return names;
}

const QStringList& namesInDatabase()
{
    static const QStringList names {QLatin1String(MaterialXml::material)};
    return names;
}

const QStringList& namesInMaterial()
{
    static const QStringList names = namesIn(materialValues, MaterialXml::property);
    return names;
}

const QStringList& namesInProperty()
{
    static const QStringList names = namesIn(propertyValues, MaterialXml::point);
    return names;
}

const QStringList& materialTypeNames()
{
    static const QStringList names {
#define MATERIAL_TYPE(object, name, displayName) QStringLiteral(name),
#include <NereoFileIO/MaterialType.def>
    };
    return names;
}

const QStringList& propertyTypeNames()
{
    static const QStringList names {
#define PROPERTY_TYPE(object, name, displayName, unitCategory, code) QStringLiteral(name),
#include <NereoFileIO/PropertyType.def>
    };
    return names;
}

const QStringList& variationTypeNames()
{
    static const QStringList names {
#define VARIATION_TYPE(object, name, displayName, code, alias) QStringLiteral(name),
#include <NereoFileIO/VariationType.def>
    };
    return names;
}

/// The text goes by way of a std::string, which loses the mark when it becomes a QString again.
bool losesByteOrderMark(const QString& text)
{
    return text.startsWith(QChar(QChar::ByteOrderMark));
}

bool isVariable(const ValueElement& element)
{
    return element.name == MaterialXml::independentVariable;
}

/// What a load makes of the text of an element.
QVariant valueOf(const ValueElement& element, const QString& text)
{
    const Io::CodeNameTable& table = Io::CodeNameTable::instance();
    switch (element.type) {
    case Item::Type::Integer:
        return text.toInt();
    case Item::Type::Number:
        return Io::parseNumber(text);
    default:
        return isVariable(element) ? table.nameForCode(table.codeForName(text), false) : keptText(text);
    }
}

/// A value that has been read, and that a finding may be about later.
struct Reading {
    int index; ///< in its table
    XmlText text;
    QString address;
    bool isGood;       ///< there is no finding of it yet
    bool isRepetition; ///< the element stands there for another time
};

/// Tells which elements of one table have been met in their parent.
class Met {
public:
    bool has(int index) const { return (met_ >> index & 1U) != 0; }
    void add(int index) { met_ |= 1U << index; }

private:
    unsigned met_ = 0;
};

struct Property {
    QString name; ///< of its type
    bool isMerged = false;
    VariationType variation = VariationType::Constant;
    Met met;
    std::optional<Reading> value; ///< those of which there is no finding
    std::optional<Reading> variable;
    std::optional<Discovery> firstPoint; ///< where no variable stands before it
    int points = 0;
    std::optional<double> lastX;
};

/// A place in memory that a property of the file has.
struct MemoryPlace {
    std::optional<Discovery> renamed; ///< to be told unless another property has it too
};

struct MaterialState {
    MaterialNames::Name name;
    MaterialType type;
    Met met;
    std::optional<Reading> nameElement;
    std::optional<Reading> id;
    std::map<int, MemoryPlace> places; ///< by the code of the property's type
    std::map<int, int> points;         ///< of the properties so far, by the index of their type
    int properties = 0;
};

/// The way through one file.
class MaterialDatabaseWalk {
public:
    /// Where nobody wants findings the addresses have no names: a LateMaterialNames adds them.
    MaterialDatabaseWalk(const InputFile& file, Listener& listener)
        : xml_(file, listener), listener_(listener), judges_(listener.wantsFindings())
    {
        if (judges_)
            names_.emplace(file);
    }

    void run()
    {
        while (xml_.next()) {
            if (!xml_.isStartElement())
                continue;
            if (isAt(MaterialXml::database))
                readDatabase();
            else if (isAt(MaterialXml::material) && names_ && names_->hasDatabase())
                reportUnknownElement(nullptr);
        }
        if (names_ && !names_->hasDatabase() && !xml_.hasError())
            listener_.finding({Rule::NoRoot, xml_.endOfFile(), {}, {}, {MaterialXml::database}});
        xml_.reportEnd();
    }

private:
    bool isAt(const char* element) const { return xml_.name() == QLatin1String(element); }

    QString address(const char* element) const { return prefix_ % QLatin1String(element); }

    void readDatabase()
    {
        prefix_.clear();
        version_.read(xml_, listener_);
        while (xml_.nextChild()) {
            prefix_.clear();
            if (isAt(MaterialXml::material)) {
                readMaterial();
            } else {
                skipUnknownElement(&namesInDatabase());
            }
        }
        prefix_.clear();
    }

    void readMaterial()
    {
        MaterialState material;
        if (names_)
            material.name = names_->next();
        listener_.element(material.name.part);
        prefix_ = material.name.part + QLatin1Char('/');
        readMaterialType(material);
        const int prefixSize = prefix_.size();
        while (xml_.nextChild()) {
            readMaterialElement(material);
            prefix_.truncate(prefixSize);
        }
        reportRepetitions(material);
        for (const auto& [code, place] : material.places) {
            if (place.renamed)
                listener_.finding(*place.renamed);
        }
    }

    void readMaterialType(MaterialState& material)
    {
        const QString attribute = QLatin1String(MaterialXml::typeAttribute);
        const QString text = xml_.attribute(attribute);
        const QString type = keptText(text);
        material.type = MaterialType::fromName(type);
        if (material.type.isValid() && type != typeOfStart_) {
            typeOfStart_ = type;
            start_ = Io::Material(Util::toStdString(type));
        }
        if (!material.type.isValid()) {
            reportType(Rule::UnknownMaterialType, address(MaterialXml::typeAttribute), text,
                       &materialTypeNames());
        } else if (losesByteOrderMark(text)) {
            reportType(Rule::StrayByteOrderMark, address(MaterialXml::typeAttribute), text);
        }
        if (listener_.wantsItems() && xml_.hasAttribute(attribute)) {
            listener_.item({address(MaterialXml::typeAttribute), Item::Type::Text,
                            xml_.attributePlace(attribute), xml_.attributeLength(attribute),
                            xml_.attributeSpelling(attribute), type});
        }
    }

    void readMaterialElement(MaterialState& material)
    {
        if (isAt(MaterialXml::property))
            return readProperty(material);
        const std::optional<Reading> reading = readValue(materialValues, material.met);
        if (!reading)
            return skipUnknownElement(&namesInMaterial());
        if (reading->index == Name)
            takeName(*reading, material);
        else if (reading->index == Id)
            material.id = reading;
        else
            checkReference(*reading, material.type);
    }

    void takeName(const Reading& reading, MaterialState& material)
    {
        listener_.materialName(reading.text.text);
        material.nameElement = reading;
    }

    void checkReference(const Reading& reading, MaterialType type)
    {
        const auto& reference = Io::materialReferenceValues[reading.index - FirstReference];
        if (reading.isGood && !reading.isRepetition && type.isValid() && !Io::isWritten(reference, type))
            reportNumber(Rule::UnusedValue, reading);
    }

    void reportRepetitions(const MaterialState& material)
    {
        const auto& name = material.nameElement;
        if (material.name.isRepeated && name && name->text.isWhole)
            reportText(Rule::RepeatedMaterial, *name);
        const int id = material.id ? material.id->text.text.toInt() : Io::Material::InvalidId;
        if (id != Io::Material::InvalidId && !ids_.insert(id).second)
            reportNumber(Rule::RepeatedId, *material.id);
    }

    void readProperty(MaterialState& material)
    {
        const QString attribute = QLatin1String(MaterialXml::typeAttribute);
        Property property;
        property.name = xml_.attribute(attribute);
        const auto type = PropertyType::fromName(property.name);
        ++material.properties;
        prefix_ += (property.name.isEmpty() ? QStringLiteral("#%1").arg(material.properties)
                                            : addressPart(excerpt(property.name)));
        listener_.element(prefix_);
        if (judges_)
            checkPropertyType(material, property, type);
        prefix_ += QLatin1Char('/');

        if (type.isValid())
            property.points = material.points[type.index()];
        const int prefixSize = prefix_.size();
        while (xml_.nextChild()) {
            readPropertyElement(property);
            prefix_.truncate(prefixSize);
        }
        if (type.isValid())
            material.points[type.index()] = property.points;
        if (judges_ && !xml_.hasError() && !property.isMerged)
            checkUse(property, type.isValid());
    }

    /// Whether the material has the property, and not another one in its place.
    void checkPropertyType(MaterialState& material, Property& property, PropertyType type)
    {
        if (!type.isValid())
            return reportType(Rule::UnknownPropertyType, prefix_, property.name, &propertyTypeNames());
        const auto [place, isNew] = material.places.try_emplace(type.code());
        property.isMerged = !isNew;
        if (property.isMerged) {
            place->second.renamed.reset(); // one finding of the two is enough
            return reportType(Rule::MergedProperty, prefix_, property.name);
        }
        if (!material.type.isValid())
            return; // and so has no properties, which has been said
        const Io::MaterialProperty* const start = start_.findProperty(type.code());
        if (start == nullptr)
            return reportType(Rule::MisplacedProperty, prefix_, property.name);
        const QString name = Util::toQString(start->type());
        if (name != property.name)
            place->second.renamed = Discovery {Rule::RenamedProperty,
                                               xml_.attributePlace(QLatin1String(MaterialXml::typeAttribute)),
                                               prefix_,
                                               property.name,
                                               {name}};
    }

    void readPropertyElement(Property& property)
    {
        if (isAt(MaterialXml::point))
            return readPoint(property);
        const std::optional<Reading> reading = readValue(propertyValues, property.met);
        if (!reading)
            return skipUnknownElement(&namesInProperty());
        if (reading->index == Variation)
            checkVariation(*reading, property);
        else if (reading->index == Variable)
            checkVariable(*reading, property);
        else if (reading->isGood)
            property.value = reading;
    }

    void checkVariation(const Reading& reading, Property& property)
    {
        property.variation = VariationType::fromName(keptText(reading.text.text));
        if (reading.isGood && !property.variation.isValid())
            reportText(Rule::UnknownVariation, reading, &variationTypeNames());
    }

    void checkVariable(const Reading& reading, Property& property)
    {
        const QString& name = reading.text.text;
        if (!reading.isGood || (name == QLatin1String("kNone")))
            return;
        const Io::CodeNameTable& table = Io::CodeNameTable::instance();
        const int code = table.codeForName(name);
        if (code == Io::kNone) {
            reportText(Rule::UnknownIndependentVariable, reading, &variableNames());
        } else if (nodeFlagNames().contains(name)) {
            if (!listener_.onlyCounts(Rule::NodeFlagAsVariable))
                listener_.finding({Rule::NodeFlagAsVariable,
                                   xml_.place(reading.text),
                                   reading.address,
                                   name,
                                   {table.nameForCode(code, false)}});
        } else {
            property.variable = reading;
        }
    }

    /// What of a property a save leaves out, and what it has to write without having read it. A variation
    /// that isn't known has been told, and so has a type, where the load has ended.
    void checkUse(const Property& property, bool isKnown)
    {
        if (!property.variation.isValid())
            return;
        const bool isValueWritten = Io::isValueWritten(property.variation);
        const bool isCurveWritten = Io::isCurveWritten(property.variation);
        const bool hasCurve = property.variable || property.firstPoint;
        if (property.value && !isValueWritten)
            reportNumber(Rule::UnusedValue, *property.value);
        if (hasCurve && !isCurveWritten)
            reportUnusedCurve(property);
        else if (isKnown && isValueWritten && !property.met.has(Value))
            reportMissing(Rule::MissingValue, address(MaterialXml::value));
        // A value and no curve: it is the variation that is wrong.
        if (isCurveWritten && !property.met.has(Variable) && (hasCurve || !property.value))
            reportMissing(Rule::MissingVariable, address(MaterialXml::independentVariable));
    }

    void reportUnusedCurve(const Property& property)
    {
        if (property.variable)
            reportText(Rule::UnusedValue, *property.variable);
        else if (!listener_.onlyCounts(Rule::UnusedValue))
            listener_.finding(*property.firstPoint);
    }

    void readPoint(Property& property)
    {
        ++property.points;
        prefix_ += QLatin1String("points/");
        prefix_ += Io::NumberText(property.points);
        prefix_ += QLatin1Char('/');
        if (judges_ && !property.variable && !property.firstPoint)
            property.firstPoint = Discovery {Rule::UnusedValue, xml_.place(), prefix_.chopped(1),
                                             QLatin1String(MaterialXml::point)};
        Met met;
        std::optional<Reading> x;
        while (xml_.nextChild()) {
            const std::optional<Reading> reading = readValue(pointValues, met);
            if (!reading)
                skipUnknownElement(nullptr);
            else if (judges_ && reading->index == X)
                x = reading;
        }
        if (!judges_ || xml_.hasError())
            return;
        checkCoordinates(met);
        if (x && x->isGood)
            checkOrder(*x, property);
    }

    void checkCoordinates(const Met& met)
    {
        if (met.has(X) && met.has(Y))
            return;
        if (!met.has(X) && !met.has(Y))
            return reportMissing(Rule::MissingCoordinate, prefix_.chopped(1), QStringLiteral("x, y"));
        const char* const missing = met.has(X) ? MaterialXml::y : MaterialXml::x;
        reportMissing(Rule::MissingCoordinate, address(missing), QLatin1String(missing));
    }

    void checkOrder(const Reading& reading, Property& property)
    {
        const double x = Io::parseNumber(reading.text.text);
        if (property.lastX && !(x > *property.lastX))
            reportNumber(Rule::PointsNotAscending, reading);
        if (!std::isnan(x))
            property.lastX = x;
    }

    /// Reads the value of the current element, if it is one of the table, and tells of it.
    template <std::size_t size>
    std::optional<Reading> readValue(const std::array<ValueElement, size>& elements, Met& met)
    {
        const int index = indexOf(xml_.name(), elements);
        if (index == noValue)
            return {};
        const ValueElement& element = elements[std::size_t(index)];
        Reading reading {index, {}, address(element.name), false, met.has(index)};
        met.add(index);
        if (reading.isRepetition && !listener_.onlyCounts(Rule::RepeatedElement))
            listener_.finding(
                {Rule::RepeatedElement, xml_.place(), reading.address, QLatin1String(element.name)});
        reading.text = xml_.readText(useOf(element.type), reading.address);
        tellItem(element, reading);
        reading.isGood = judges_ && reading.text.isWhole && checkText(element, reading);
        return reading;
    }

    XmlText::Use useOf(Item::Type type) const
    {
        if (listener_.wantsItems())
            return XmlText::Use::Value;
        return type == Item::Type::Text ? XmlText::Use::Nothing : XmlText::Use::Number;
    }

    void tellItem(const ValueElement& element, const Reading& reading)
    {
        if (!listener_.wantsItems())
            return;
        const XmlText& text = reading.text;
        listener_.item({reading.address, element.type, xml_.place(text), xml_.length(text),
                        xml_.spelling(text), valueOf(element, text.text)});
    }

    bool checkText(const ValueElement& element, const Reading& reading)
    {
        const XmlText& text = reading.text;
        if (element.type == Item::Type::Text) {
            const bool losesMark = !isVariable(element) && losesByteOrderMark(text.text);
            const bool losesReturn = text.hasReturn && element.name == MaterialXml::name;
            if (losesMark)
                reportText(Rule::StrayByteOrderMark, reading);
            else if (losesReturn)
                reportText(Rule::LostCarriageReturn, reading);
            return !losesMark && !losesReturn;
        }
        const std::optional<Rule> fault =
            element.type == Item::Type::Integer ? integerFault(text.text) : numberFault(text.text);
        if (fault == Rule::MissingValue) {
            if (!listener_.onlyCounts(*fault))
                listener_.finding({*fault, xml_.endPlace(text), reading.address});
        } else if (fault) {
            reportNumber(*fault, reading);
        }
        return !fault;
    }

    void skipUnknownElement(const QStringList* knownNames)
    {
        reportUnknownElement(knownNames);
        xml_.skipElement();
    }

    void reportUnknownElement(const QStringList* knownNames)
    {
        if (listener_.onlyCounts(Rule::UnknownElement))
            return;
        const QString name = xml_.name().toString();
        Discovery unknown {Rule::UnknownElement, xml_.place(), prefix_ + addressPart(excerpt(name)), name};
        unknown.knownNames = knownNames;
        listener_.finding(unknown);
    }

    /// Tells of something that the text is, and which name was probably meant.
    void reportText(Rule rule, const Reading& reading, const QStringList* knownNames = nullptr)
    {
        if (listener_.onlyCounts(rule))
            return;
        Discovery discovery {rule, xml_.place(reading.text), reading.address, excerpt(reading.text.text)};
        discovery.knownNames = knownNames;
        listener_.finding(discovery);
    }

    /// Likewise of a number, whose blanks don't matter.
    void reportNumber(Rule rule, const Reading& reading)
    {
        if (!listener_.onlyCounts(rule))
            listener_.finding({rule, xml_.place(reading.text), reading.address,
                               excerpt(QStringView(reading.text.text).trimmed())});
    }

    /// Likewise of the type of the element whose start tag has just been read.
    void reportType(Rule rule, const QString& address, const QString& type,
                    const QStringList* knownNames = nullptr)
    {
        if (listener_.onlyCounts(rule))
            return;
        Discovery discovery {rule, xml_.attributePlace(QLatin1String(MaterialXml::typeAttribute)), address,
                             type};
        discovery.knownNames = knownNames;
        listener_.finding(discovery);
    }

    /// Tells of what should stand before the end tag that has just been read.
    void reportMissing(Rule rule, const QString& address, const QString& names = {})
    {
        if (!listener_.onlyCounts(rule))
            listener_.finding({rule, xml_.place(), address, {}, {names}});
    }

    std::optional<MaterialNames> names_;
    XmlFile xml_;
    Listener& listener_;
    const bool judges_; ///< somebody wants to know what is wrong
    QString prefix_;    ///< of the addresses in the element that is open
    QString typeOfStart_ = QStringLiteral("fluid");
    Io::Material start_; ///< a material of that type, with what such a one starts with
    std::unordered_set<int> ids_;
    DocumentVersion version_ {MaterialXml::versionAttribute, Rule::RepeatedElement};
};

} // namespace

void walkMaterialDatabase(const InputFile& file, Listener& listener)
{
    if (listener.wantsFindings())
        return MaterialDatabaseWalk(file, listener).run();
    LateMaterialNames names(file, listener);
    MaterialDatabaseWalk(file, names).run();
    names.endOfFile();
}

} // namespace Nereo::Inspection
