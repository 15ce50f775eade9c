#include "ControlFileLines.h"
#include "ControlFileOutline.h"
#include "KindEditor.h"
#include "NewTexts.h"
#include "TextLines.h"

#include <FileIO/ControlFileRecords.h>
#include <FileIO/ControlFileSections.h>
#include <NereoFileIO/CodeNameTable.h>

#include <algorithm>
#include <iterator>

namespace Nereo::Inspection {

namespace {

namespace SectionName = Io::SectionName;
using Type = Item::Type;

constexpr int firstTitle = 2; ///< the line that may be one
constexpr char constantsAddress[] = "constants";
constexpr char flagsAddress[] = "flags";

QString nameOf(int code)
{
    return Io::CodeNameTable::instance().nameForCode(code, false);
}

/// The code of a constant; 0 if there is none of that name.
int constantCode(const QString& name)
{
    const int code = Io::CodeNameTable::instance().codeForName(name);
    return code <= Io::ControlFile::ConstantCount ? code : 0;
}

bool isRecord(int code)
{
    static const Io::ControlFile any;
    return Io::visitRecord(any, code, [](const auto&, const auto&) {});
}

bool hasSpace(const QString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar character) { return character.isSpace(); });
}

/// A section of the file, by the line of its title and the one behind its last.
struct Section {
    QString name;
    int title;
    int behind;
};

/// The lines of a file, by sections.
class SectionedLines : public TextLines {
public:
    explicit SectionedLines(const EditedFile& file) : TextLines(file)
    {
        for (int i = firstTitle; i < count(); ++i) {
            const QString line = text(i);
            const bool hasName = Io::hasSectionName(line);
            if (i == firstTitle ? !hasName : !Io::isTitle(line))
                continue;
            if (!sections_.empty())
                sections_.back().behind = i;
            constexpr int titleLength = 5;
            const QStringView name = hasName ? QStringView(line).mid(titleLength) : QStringView();
            sections_.push_back({simplified(name, int(name.size())), i, count()});
        }
    }

    const std::vector<Section>& sections() const { return sections_; }

    /// The last one of a name; nullptr if there is none.
    const Section* last(const char* name) const
    {
        const auto found = std::find_if(sections_.rbegin(), sections_.rend(), [name](const Section& section) {
            return section.name == QLatin1String(name);
        });
        return found == sections_.rend() ? nullptr : &*found;
    }

    /// That in which a line stands; nullptr before the first.
    const Section* sectionOf(int line) const
    {
        const auto found = std::find_if(sections_.begin(), sections_.end(), [line](const Section& section) {
            return section.title <= line && line < section.behind;
        });
        return found == sections_.end() ? nullptr : &*found;
    }

    /// The line behind which a new section belongs: the last of those that a writer writes before it.
    int lineBefore(const char* name) const
    {
        constexpr int headerLines = 2;
        if (count() < headerLines)
            refuseDoubt(); // its title would become one of them
        const auto orderOf = [](const QString& section) {
            const auto& known = controlFileSections();
            return std::find_if(known.begin(), known.end(),
                                [&section](const ControlFileSection& one) {
                                    return section == QLatin1String(one.name);
                                })
                - known.begin();
        };
        const auto order = orderOf(QLatin1String(name));
        const auto before = std::find_if(sections_.rbegin(), sections_.rend(), [&](const Section& section) {
            return orderOf(section.name) < order;
        });
        if (before != sections_.rend())
            return before->behind - 1;
        return sections_.empty() ? count() - 1 : sections_.front().title - 1;
    }

private:
    std::vector<Section> sections_;
};

/// What stands in a section for the number of flags, and how many there are.
class FlagList {
public:
    FlagList(const SectionedLines& lines, const Section& section) : lines_(lines)
    {
        for (int i = section.title + 1; i < section.behind; ++i) {
            if (lines.isBlank(i))
                continue;
            if (!numberLine_)
                numberLine_ = i;
            else
                ++count_;
        }
    }

    bool hasNumber() const { return numberLine_.has_value(); }
    int count() const { return count_; }

    Replacement newNumber(int number) const
    {
        const QString line = lines_.text(*numberLine_);
        const QString word = lines_.firstWord(*numberLine_);
        try {
            newText(FileKind::Control, Type::Integer, word);
        } catch (const Refusal&) {
            refuseDoubt(); // it is a flag, perhaps
        }
        return lines_.part(*numberLine_, line.indexOf(word), word, QString::number(number));
    }

private:
    const SectionedLines& lines_;
    std::optional<int> numberLine_;
    int count_ = 0;
};

/// Whether a text is all of a line.
bool isLine(const QString& address)
{
    return address == QLatin1String("title") || address.startsWith(QLatin1String("header/"));
}

bool isFlag(const QString& address)
{
    return address.startsWith(QLatin1String("flags/"));
}

void checkFlag(const QString& text)
{
    if (hasSpace(text))
        refuseText(text, QStringLiteral("has white space, and can be no part of a flag"));
}

NewText newTextOfItem(const Item& item, const QString& given)
{
    if (item.type == Type::Text && isFlag(item.address))
        checkFlag(given);
    else if (item.type == Type::Text && !isLine(item.address)
             && (given.isEmpty() || given != given.simplified()))
        refuseText(given,
                   QStringLiteral("is empty, or has white space at an end, two blanks in a row, or white "
                                  "space other than blanks"));
    return newText(FileKind::Control, item.type, given);
}

/// Whether a section that stands in a file again leaves what it doesn't say itself.
bool isList(const QString& section)
{
    static constexpr const char* lists[] = {SectionName::solutionControl, SectionName::relaxation,
                                            SectionName::constants, SectionName::propertySettings};
    return std::any_of(std::begin(lists), std::end(lists),
                       [&section](const char* list) { return section == QLatin1String(list); });
}

/// A section that stands there again overrides all of the earlier one, whatever it lacks.
void checkCounts(const SectionedLines& lines, const Item& item)
{
    const Section* const section = lines.sectionOf(lines.lineOf(item.place.offset));
    if (section == nullptr || isList(section->name))
        return;
    if (lines.last(section->name.toUtf8().constData()) != section)
        refuseDoubt();
}

Replacements replacementOf(const SectionedLines& lines, const Item& item, const NewText& text)
{
    checkCounts(lines, item);
    const bool isThere = item.length > 0 || isLine(item.address) || isFlag(item.address);
    if (!isThere)
        refuseMissing(item.address);
    return {lines.word(item, text, isFlag(item.address))};
}

/// A line at the end of a list, whose section is made where it is missing.
Replacement lineInList(const SectionedLines& lines, const char* name, const QString& line)
{
    const Section* const section = lines.last(name);
    if (section == nullptr)
        return lines.linesBehind(lines.lineBefore(name), {Io::titleStart + QLatin1String(name), line});
    const int last = lines.lastFilled(section->title + 1, section->behind);
    return lines.linesBehind(last, {line}, last > section->title ? last : TextLines::noLine);
}

Addition addConstant(const SectionedLines& lines, const QString& address, const QString& given)
{
    const QString name = address.mid(int(sizeof constantsAddress));
    const int code = constantCode(name);
    if (code < 1 || nameOf(code) != name || isRecord(code))
        refuseUnknown(address);
    const NewText text = newText(FileKind::Control, Type::Number, given);
    const QString line = name + QLatin1Char(' ') + text.text;
    return {{lineInList(lines, SectionName::constants, line)}, {{address, text}}};
}

Addition addFlag(const SectionedLines& lines, const QString& address, const QString& given)
{
    const std::optional<QString> name = nameOfPart(address.mid(int(sizeof flagsAddress)));
    if (!name || name->isEmpty())
        refuseUnknown(address);
    checkFlag(*name);
    checkFlag(given);
    const NewText text {given, given};
    const QString line = given.isEmpty() ? *name : *name + QLatin1Char(' ') + given;
    const Section* const section = lines.last(SectionName::flags);
    if (section == nullptr) {
        const int before = lines.lineBefore(SectionName::flags);
        const QStringList made {Io::titleStart + QLatin1String(SectionName::flags), QStringLiteral("1"),
                                line};
        return {{lines.linesBehind(before, made)}, {{address, text}}};
    }
    const FlagList flags(lines, *section);
    if (!flags.hasNumber())
        return {{lines.linesBehind(section->title, {QStringLiteral("1"), line})}, {{address, text}}};
    const int last = lines.lastFilled(section->title + 1, section->behind);
    return {
        {flags.newNumber(flags.count() + 1), lines.linesBehind(last, {line}, last)},
        {{address, text}                           }
    };
}

Removal removeFlag(const SectionedLines& lines, const Item& item)
{
    checkCounts(lines, item);
    const int line = lines.lineOf(item.place.offset);
    const FlagList flags(lines, *lines.sectionOf(line));
    return {
        {flags.newNumber(flags.count() - 1), lines.without(line)},
        {item.address                                 }
    };
}

Removal removeConstant(const SectionedLines& lines, const QString& address)
{
    const int code = constantCode(address.mid(int(sizeof constantsAddress)));
    Replacements replacements;
    for (const Section& section : lines.sections()) {
        if (section.name != QLatin1String(SectionName::constants))
            continue;
        for (int i = section.title + 1; i < section.behind; ++i) {
            if (constantCode(lines.firstWord(i)) == code)
                replacements.push_back(lines.without(i));
        }
    }
    return {replacements, {address}};
}

class ControlFileEditor : public KindEditor {
public:
    explicit ControlFileEditor(const EditedFile& file) : lines_(file) {}

    NewText newTextOf(const Item& item, const QString& given) const override
    {
        return newTextOfItem(item, given);
    }

    Replacements replace(const Item& item, const NewText& text) const override
    {
        return replacementOf(lines_, item, text);
    }

    Addition add(const QString& address, const QString& given) const override
    {
        const QStringList parts = address.split(QLatin1Char('/'));
        if (parts.size() == 2 && parts[0] == QLatin1String(constantsAddress))
            return addConstant(lines_, address, given);
        if (parts.size() == 2 && parts[0] == QLatin1String(flagsAddress))
            return addFlag(lines_, address, given);
        if (address == QLatin1String(flagsAddress))
            throw Refusal(
                EditProblem::UnknownAddress,
                QStringLiteral("the number of flags is put right by itself where flags come and go"));
        const auto& sections = controlFileSections();
        const bool isKnown = parts[0] == QLatin1String("header")
            || std::any_of(sections.begin(), sections.end(), [&parts](const ControlFileSection& section) {
                                 return parts[0] == QLatin1String(section.address);
                             });
        if (isKnown)
            refuseMissing(address);
        refuseUnknown(address);
    }

    Removal remove(const Item& item) const override
    {
        if (isFlag(item.address))
            return removeFlag(lines_, item);
        const QStringList parts = item.address.split(QLatin1Char('/'));
        if (parts.size() == 2 && parts[0] == QLatin1String(constantsAddress))
            return removeConstant(lines_, item.address);
        refuseRemoval(item.address);
    }

    QStringList addableAddresses() const override
    {
        QStringList addresses;
        for (int code = Io::firstListedConstant; code <= Io::ControlFile::ConstantCount; ++code) {
            if (!isRecord(code))
                addresses.append(QLatin1String(constantsAddress) + QLatin1Char('/') + nameOf(code));
        }
        return addresses;
    }

private:
    SectionedLines lines_;
};

} // namespace

std::unique_ptr<KindEditor> controlFileEditor(const EditedFile& file)
{
    return std::make_unique<ControlFileEditor>(file);
}

} // namespace Nereo::Inspection
