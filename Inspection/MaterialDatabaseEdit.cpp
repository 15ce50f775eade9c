#include "KindEditor.h"
#include "MaterialDatabaseValues.h"
#include "MaterialNames.h"
#include "NewTexts.h"
#include "XmlMarkup.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/PropertyType.h>

namespace Nereo::Inspection {

namespace {

namespace MaterialXml = Io::MaterialXml;

constexpr char pointsPart[] = "points";

/// The name of an independent variable comes back as that of its code.
QString loadedVariable(const QString& name)
{
    const Io::CodeNameTable& table = Io::CodeNameTable::instance();
    return table.nameForCode(table.codeForName(name), false);
}

NewText newTextOfAddress(const QString& address, Item::Type type, const QString& given)
{
    NewText text = newText(FileKind::Materials, type, given);
    if (address.endsWith(QLatin1Char('/') + QLatin1String(MaterialXml::independentVariable)))
        text.value = loadedVariable(given);
    return text;
}

/// The code of the property in an address, if there is one.
std::optional<int> propertyCode(const QString& address)
{
    const QStringList parts = address.split(QLatin1Char('/'));
    constexpr int partsOfProperty = 3;
    const auto type = parts.size() < partsOfProperty ? Clt::PropertyType::fromName({})
                                                     : Clt::PropertyType::fromName(parts[1]);
    return type.isValid() ? std::optional(type.code()) : std::nullopt;
}

/// Two properties that have one place in memory override each other's values.
void checkCounts(const EditedFile& file, const Item& item)
{
    const std::optional<int> code = propertyCode(item.address);
    if (!code)
        return;
    const QString material = item.address.section(QLatin1Char('/'), 0, 0) + QLatin1Char('/');
    const QString property = item.address.section(QLatin1Char('/'), 0, 1) + QLatin1Char('/');
    for (const Item& other : file.items()) {
        if (other.address.startsWith(material) && !other.address.startsWith(property)
            && propertyCode(other.address) == code)
            refuseDoubt();
    }
}

/// The elements of a document that an address goes through.
class MaterialElements {
public:
    MaterialElements(const EditedFile& file, const XmlMarkup& markup) : file_(file), markup_(markup) {}

    /// None if it isn't there.
    int material(const QString& part) const
    {
        MaterialNames names(file_.input());
        int found = XmlElement::None;
        for (int i = 0; i < int(markup_.elements().size()); ++i) {
            const XmlElement& element = markup_[i];
            const bool isMaterial = element.parent != XmlElement::None
                && element.localName() == QLatin1String(MaterialXml::material)
                && markup_[element.parent].localName() == QLatin1String(MaterialXml::database);
            if (isMaterial && names.next().part == part)
                found = i;
        }
        return found;
    }

    /// The last of those of the type, whose values go over those of the others.
    int property(int material, const QString& part) const
    {
        int found = XmlElement::None;
        for (const int child : markup_.childrenOf(material)) {
            if (isProperty(child, part))
                found = child;
        }
        return found;
    }

    /// By its number, which goes on from one property of the type to the next.
    int point(int material, const QString& part, int number) const
    {
        for (const int child : markup_.childrenOf(material)) {
            if (!isProperty(child, part))
                continue;
            for (const int point : markup_.childrenOf(child)) {
                if (isNamed(point, MaterialXml::point) && --number == 0)
                    return point;
            }
        }
        return XmlElement::None;
    }

private:
    bool isNamed(int element, const char* name) const
    {
        return markup_[element].localName() == QLatin1String(name);
    }

    bool isProperty(int element, const QString& part) const
    {
        return isNamed(element, MaterialXml::property)
            && markup_.attribute(element, QLatin1String(MaterialXml::typeAttribute)) == part;
    }

    const EditedFile& file_;
    const XmlMarkup& markup_;
};

/// Behind those that a writer writes before it.
template <std::size_t size>
Addition addElement(const XmlMarkup& markup, int parent, const std::array<ValueElement, size>& elements,
                    const QString& address, const QString& given)
{
    const QString name = address.section(QLatin1Char('/'), -1);
    const int index = indexOf(name, elements);
    if (index == noValue)
        refuseUnknown(address);
    if (parent == XmlElement::None)
        refuseMissing(address);
    const NewText text = newTextOfAddress(address, elements[std::size_t(index)].type, given);
    int before = XmlElement::None;
    for (const int child : markup.childrenOf(parent)) {
        const int order = indexOf(markup[child].localName(), elements);
        if (order != noValue && order < index)
            before = child;
    }
    const bool isNamed = address.count(QLatin1Char('/')) == 1 && index == Name; // which had no name before
    const QString newAddress = isNamed ? addressPart(given) + QLatin1Char('/') + name : address;
    return {{markup.child(parent, before, name, text.text)}, {{newAddress, text}}};
}

class MaterialDatabaseEditor : public KindEditor {
public:
    explicit MaterialDatabaseEditor(const EditedFile& file) : file_(file), markup_(file) {}

    NewText newTextOf(const Item& item, const QString& given) const override
    {
        return newTextOfAddress(item.address, item.type, given);
    }

    Replacements replace(const Item& item, const NewText& text) const override
    {
        checkCounts(file_, item);
        return markup_.replacement(item, text);
    }

    Addition add(const QString& address, const QString& given) const override
    {
        const QStringList parts = address.split(QLatin1Char('/'));
        const bool isAttribute = address == QLatin1String(MaterialXml::versionAttribute)
            || (parts.size() == 2 && parts[1] == QLatin1String(MaterialXml::typeAttribute));
        if (isAttribute)
            refuseMissing(address);
        const MaterialElements elements(file_, markup_);
        const int material = elements.material(parts[0]);
        if (parts.size() == 2)
            return addElement(markup_, material, materialValues, address, given);
        if (material == XmlElement::None)
            refuseMissing(address);
        if (parts.size() == 3)
            return addElement(markup_, elements.property(material, parts[1]), propertyValues, address, given);
        constexpr int partsOfPoint = 5;
        if (parts.size() == partsOfPoint && parts[2] == QLatin1String(pointsPart)) {
            const int point = elements.point(material, parts[1], parts[3].toInt());
            return addElement(markup_, point, pointValues, address, given);
        }
        refuseUnknown(address);
    }

    Removal remove(const Item& item) const override { refuseRemoval(item.address); }

private:
    const EditedFile& file_;
    XmlMarkup markup_;
};

} // namespace

std::unique_ptr<KindEditor> materialDatabaseEditor(const EditedFile& file)
{
    return std::make_unique<MaterialDatabaseEditor>(file);
}

} // namespace Nereo::Inspection
