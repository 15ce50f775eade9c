#include "ConfigurationValues.h"
#include "KindEditor.h"
#include "NewTexts.h"
#include "XmlMarkup.h"

#include <FileIO/ConfigurationForms.h>

namespace Nereo::Inspection {

namespace {

bool isConfiguration(const XmlElement& element)
{
    return element.localName() == QLatin1String(Io::configurationElement);
}

class ConfigurationXmlEditor : public KindEditor {
public:
    explicit ConfigurationXmlEditor(const EditedFile& file) : markup_(file) {}

    NewText newTextOf(const Item& item, const QString& given) const override
    {
        return newText(FileKind::ConfigurationXml, item.type, given);
    }

    Replacements replace(const Item& item, const NewText& text) const override
    {
        return markup_.replacement(item, text);
    }

    /// Behind the settings that a writer writes before it.
    Addition add(const QString& key, const QString& given) const override
    {
        const std::optional<Item::Type> type = typeOfSetting(key);
        if (!type && key == QLatin1String("version"))
            refuseMissing(key);
        if (!type)
            refuseUnknown(key);
        const NewText text = newText(FileKind::ConfigurationXml, *type, given);
        const int root = onlyRoot();
        int before = XmlElement::None;
        for (const int child : markup_.childrenOf(root)) {
            const QString name = markup_[child].localName().toString();
            if (typeOfSetting(name) && name < key)
                before = child;
        }
        return {{markup_.child(root, before, key, text.text)}, {{key, text}}};
    }

    QStringList addableAddresses() const override { return configurationKeys(); }

    Removal remove(const Item& item) const override
    {
        if (item.type == Item::Type::Version)
            refuseRemoval(item.address);
        Replacements replacements;
        for (int i = 0; i < int(markup_.elements().size()); ++i) {
            const XmlElement& element = markup_[i];
            const bool isSetting = element.parent != XmlElement::None
                && isConfiguration(markup_[element.parent]) && element.localName() == item.address;
            if (isSetting)
                replacements.push_back(markup_.without(i));
        }
        return {replacements, {item.address}};
    }

private:
    /// Where there are several, it isn't clear which one gets a setting.
    int onlyRoot() const
    {
        int root = XmlElement::None;
        for (int i = 0; i < int(markup_.elements().size()); ++i) {
            if (!isConfiguration(markup_[i]))
                continue;
            if (root != XmlElement::None)
                refuseDoubt();
            root = i;
        }
        if (root == XmlElement::None)
            refuseDoubt();
        return root;
    }

    XmlMarkup markup_;
};

} // namespace

std::unique_ptr<KindEditor> configurationXmlEditor(const EditedFile& file)
{
    return std::make_unique<ConfigurationXmlEditor>(file);
}

} // namespace Nereo::Inspection
