#include "ConfigurationValues.h"
#include "KindEditor.h"
#include "NewTexts.h"
#include "TextLines.h"

namespace Nereo::Inspection {

namespace {

NewText newTextOfType(Item::Type type, const QString& given)
{
    if (type == Item::Type::Text && given != given.simplified())
        refuseText(given,
                   QStringLiteral("has white space at an end, two blanks in a row, or white space other than "
                                  "blanks, which a load doesn't keep"));
    return newText(FileKind::ConfigurationText, type, given);
}

class ConfigurationTextEditor : public KindEditor {
public:
    explicit ConfigurationTextEditor(const EditedFile& file) : lines_(file) {}

    NewText newTextOf(const Item& item, const QString& given) const override
    {
        return newTextOfType(item.type, given);
    }

    Replacements replace(const Item& item, const NewText& text) const override
    {
        return {lines_.word(item, text, true)};
    }

    /// At the end, whatever the order before is.
    Addition add(const QString& key, const QString& given) const override
    {
        const std::optional<Item::Type> type = typeOfSetting(key);
        if (!type)
            refuseUnknown(key);
        const NewText text = newTextOfType(*type, given);
        const int last = lines_.lastFilled(0, lines_.count());
        const QString line = text.text.isEmpty() ? key : key + QLatin1Char(' ') + text.text;
        return {{lines_.linesBehind(last, {line}, last)}, {{key, text}}};
    }

    QStringList addableAddresses() const override { return configurationKeys(); }

    /// White space behind the last line would make a load throw, so that what stands before a line that was
    /// the last one goes with it.
    Removal remove(const Item& item) const override
    {
        const auto isGone = [&](int line) { return lines_.firstWord(line) == item.address; };
        Replacements replacements;
        for (int i = 0; i < lines_.count(); ++i) {
            if (isGone(i))
                replacements.push_back(lines_.without(i));
        }
        for (int i = lines_.lastFilled(0, lines_.count()); i >= 0 && (lines_.isBlank(i) || isGone(i)); --i) {
            if (lines_.isBlank(i))
                replacements.push_back(lines_.without(i));
        }
        return {replacements, {item.address}};
    }

private:
    TextLines lines_;
};

} // namespace

std::unique_ptr<KindEditor> configurationTextEditor(const EditedFile& file)
{
    return std::make_unique<ConfigurationTextEditor>(file);
}

} // namespace Nereo::Inspection
