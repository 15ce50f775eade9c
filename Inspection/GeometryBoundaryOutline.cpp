#include "NearestName.h"
#include "NumberFault.h"
#include "SectionTitles.h"
#include "SeenNames.h"
#include "TextFile.h"
#include "VariableNames.h"
#include "VersionFault.h"
#include "Walker.h"

#include <FileIO/GbiFileSections.h>
#include <FileIO/NumberText.h>
#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoUtility/Version.h>

#include <QCoreApplication>
#include <QSet>
#include <QStringBuilder>

#include <algorithm>
#include <array>
#include <deque>
#include <iterator>
#include <optional>
#include <utility>

namespace Nereo::Inspection {

namespace {

using Io::GbiContent;
using Io::GbiSection;
using Type = Item::Type;

constexpr char titleMark[] = "***";
constexpr QLatin1Char quote('"');
constexpr int longestName = 64; // of a section, a variable, an id, and more
constexpr int longestVersion = 1000;

QString translated(const char* english)
{
    return QCoreApplication::translate("Nereo::Inspection", english);
}

/// How a rule reads in a file whose content no load takes.
Rule unread(Rule rule)
{
    switch (rule) {
    case Rule::NotUtf8:
    case Rule::NotUtf8AtEnd:
        return Rule::UnreadNotUtf8;
    case Rule::StrayCarriageReturn:
        return Rule::UnreadCarriageReturn;
    case Rule::Nul:
        return Rule::UnreadNul;
    default:
        return unreadNumber(rule);
    }
}

class UnreadListener : public Listener {
public:
    explicit UnreadListener(Listener& listener) : listener_(listener) {}

    bool wantsItems() const override { return listener_.wantsItems(); }
    bool wantsPlaces() const override { return listener_.wantsPlaces(); }
    bool wantsFindings() const override { return listener_.wantsFindings(); }
    void item(const Item& item) override { listener_.item(item); }
    void element(const QString& address) override { listener_.element(address); }
    bool onlyCounts(Rule rule) override { return listener_.onlyCounts(unread(rule)); }
    void finding(const Discovery& discovery) override
    {
        Discovery told = discovery;
        told.rule = unread(discovery.rule);
        listener_.finding(told);
    }

private:
    Listener& listener_;
};

bool isSpace(QChar character)
{
    return character.isSpace();
}

/// The first word from a place in a text on; empty at the end if there is none.
QStringView wordFrom(QStringView text, int from)
{
    const auto begin = std::find_if_not(text.begin() + from, text.end(), isSpace);
    const auto end = std::find_if(begin, text.end(), isSpace);
    return text.mid(begin - text.begin(), end - begin);
}

/// The last word before a place in a text; empty at the start if there is none.
QStringView wordBefore(QStringView text, int to)
{
    int end = to;
    while (end > 0 && text[end - 1].isSpace())
        --end;
    int begin = end;
    while (begin > 0 && !text[begin - 1].isSpace())
        --begin;
    return text.mid(begin, end - begin);
}

bool isTitle(QStringView line)
{
    return line.trimmed().startsWith(QLatin1String(titleMark));
}

/// What a title names, whether or not it is written well.
QStringView sectionNameIn(QStringView title)
{
    const QStringView line = title.trimmed();
    if (mayBeDamagedTitle(line)) {
        for (const GbiSection& section : Io::gbiSections) {
            const QLatin1String name(section.name);
            if (isDamagedTitleOf(name, line))
                return line.right(name.size());
        }
    }
    const auto begin = std::find_if(title.begin(), title.end(),
                                    [](QChar c) { return c != QLatin1Char(*titleMark) && !c.isSpace(); });
    return title.mid(begin - title.begin()).trimmed();
}

bool isWellWritten(QStringView title)
{
    return title.startsWith(QLatin1String(Io::gbiTitleStart));
}

/// The number of the section in the table; that behind the last if none has the name.
std::size_t sectionNumber(QStringView name)
{
    const auto isNamed = [name](const GbiSection& section) { return name == QLatin1String(section.name); };
    const auto found = std::find_if(std::begin(Io::gbiSections), std::end(Io::gbiSections), isNamed);
    return std::size_t(found - std::begin(Io::gbiSections));
}

bool namesSection(QStringView line)
{
    return sectionNumber(sectionNameIn(line)) < std::size(Io::gbiSections);
}

bool isListEnd(QStringView text)
{
    return text == QLatin1String(Io::gbiListEnd);
}

bool hasVersion(QStringView line)
{
    return wordFrom(line, 0) == QLatin1String(Io::gbiVersionWord);
}

/// The address of a section, or that of a list of values in it without what follows.
const char* addressOf(GbiContent content)
{
    switch (content) {
    case GbiContent::Fixed:
        break;
    case GbiContent::CoordinateSystem:
        return "coordinate-system";
    case GbiContent::Materials:
        return "properties";
    case GbiContent::Units:
        return "units";
    case GbiContent::SurfaceConditions:
        return "conditions";
    }
    return "";
}

template <std::size_t count>
QStringList listOf(const char* const (&words)[count])
{
    QStringList list;
    for (const char* word : words) {
        if (*word != '\0')
            list.append(QLatin1String(word));
    }
    return list;
}

template <std::size_t count>
bool isOneOf(const char* const (&words)[count], QStringView text)
{
    return std::any_of(std::begin(words), std::end(words),
                       [text](const char* word) { return text == QLatin1String(word); });
}

const QStringList& sectionNames()
{
    static const QStringList names = sectionNamesOf(Io::gbiSections);
    return names;
}

/// The way through one file.
class GeometryBoundaryWalk {
public:
    GeometryBoundaryWalk(const InputFile& file, Listener& listener)
        : listener_(listener), text_(file, listener_), judges_(listener_.wantsFindings())
    {
    }

    void run()
    {
        readHeader();
        while (hasTitle())
            readSection();
        titles_.addEnd();
        for (int i = 0; i < sectionNames().size(); ++i) {
            if (titles_.isMissing(i))
                reportMissing(Io::gbiSections[i]);
        }
        text_.reportEnd();
    }

private:
    struct Line {
        QString text;
        qint64 begin = 0; ///< the number of the first character
    };

    // The lines

    bool readLine(Line& line)
    {
        line.begin = text_.nextIndex();
        return text_.readLine(line.text);
    }

    /// Goes to the next line, whatever it is. At the end there is an empty one.
    void nextLine()
    {
        if (!ahead_.empty()) {
            line_ = std::move(ahead_.front());
            ahead_.pop_front();
            return;
        }
        text_.reportCharacters();
        if (!readLine(line_))
            isAtEnd_ = true;
    }

    /// Reads so many lines ahead, or as many as there are.
    void lookAhead(std::size_t count)
    {
        for (Line line; ahead_.size() < count && readLine(line);)
            ahead_.push_back(line);
    }

    QStringView line() const { return line_.text; }
    bool isAtEnd() const { return isAtEnd_; }
    bool hasTitle() const { return !isAtEnd_ && isTitle(line()); }
    bool hasLine() const { return !isAtEnd_ && !isTitle(line()); } ///< one of the section
    qint64 lineEnd() const { return line_.begin + line_.text.size(); }
    int placeOf(QStringView part) const { return int(part.data() - line().data()); }
    int endOf(QStringView part) const { return placeOf(part) + int(part.size()); }

    // What is told

    void tell(const QString& address, Type type, QStringView part, const QString& spelling,
              const QVariant& value)
    {
        const qint64 begin = line_.begin + placeOf(part);
        const qint64 length = text_.length(begin, begin + part.size());
        listener_.item({address, type, text_.place(begin), length, spelling, value});
    }

    /// What bad characters in a part are about, if nothing else is said of it.
    void addPart(const QString& address, QStringView part)
    {
        const qint64 begin = line_.begin + placeOf(part);
        text_.addPart(begin, begin + part.size(), address);
    }

    void tellText(const QString& address, QStringView part)
    {
        if (!listener_.wantsItems())
            return;
        const QString text = part.toString();
        tell(address, Type::Text, part, text, text);
    }

    /// Says something of a part of the line, and offers the nearest of the names.
    void report(Rule rule, const QString& address, QStringView part, const QStringList& details = {},
                const QStringList* knownNames = nullptr)
    {
        const qint64 begin = line_.begin + placeOf(part);
        text_.cover(begin, begin + part.size());
        if (listener_.onlyCounts(rule))
            return;
        Discovery discovery {rule, text_.place(begin), address, excerpt(part), details};
        discovery.knownNames = knownNames;
        listener_.finding(discovery);
    }

    void reportMissing(const GbiSection& section)
    {
        listener_.finding({Rule::MissingGeometrySection,
                           text_.place(line_.begin),
                           addressOf(section.content),
                           {},
                           {QLatin1String(section.name)}});
    }

    void reportMissingValue(const QString& address, qint64 index)
    {
        if (std::exchange(isTwoInOne_, false))
            return;
        if (!listener_.onlyCounts(Rule::UnreadMissingValue))
            listener_.finding({Rule::UnreadMissingValue, text_.place(index), address});
    }

    // The first lines

    /// The job and the program may be called anything, also like a section. Where the third line is what it
    /// should be, the first two are, too.
    void readHeader()
    {
        lookAhead(3);
        const bool isWhole = ahead_.size() == 3 && hasVersion(ahead_.back().text);
        const bool isGood = readHeaderText("job", "the name of the job", isWhole)
            && readHeaderText("program", "the program that writes the file", isWhole) && readHeaderVersion()
            && readEmptyLine();
        nextLine();
        if (isGood)
            skipStrayLines(Rule::GeometryBadHeader, {translated("a section's title")});
        skipLines();
    }

    bool readHeaderText(const char* address, const char* expected, bool isWhole)
    {
        nextLine();
        if (isAtEnd() || (!isWhole && isWellWritten(line()) && namesSection(line())))
            return reportHeader(expected);
        tellText(QLatin1String(address), line());
        addPart(QLatin1String(address), line());
        return true;
    }

    bool readHeaderVersion()
    {
        nextLine();
        if (isAtEnd() || !hasVersion(line()))
            return reportHeader("\"Version\" and the version");
        const QString address = QStringLiteral("version");
        const QStringView version = line().mid(endOf(wordFrom(line(), 0))).trimmed();
        const QString text = version.left(longestVersion).toString();
        if (listener_.wantsItems())
            tell(address, Type::Version, version, version.toString(), Util::Version(text).toString());
        if (!isVersion(text))
            report(Rule::IgnoredVersion, address, version);
        return true;
    }

    bool readEmptyLine()
    {
        nextLine();
        return (!isAtEnd() && line().trimmed().isEmpty()) || reportHeader("an empty line");
    }

    /// Says once what is wrong, since all that follows is in another line then. False, and a title is left
    /// for the section that it begins.
    bool reportHeader(const char* expected)
    {
        if (isAtEnd())
            listener_.finding(
                {Rule::HeaderTooShort, text_.place(line_.begin), {}, {}, {translated(expected)}});
        else
            report(Rule::GeometryBadHeader, {}, line().trimmed(), {translated(expected)});
        if (hasTitle())
            ahead_.push_front(line_);
        return false;
    }

    void skipLines()
    {
        while (hasLine())
            nextLine();
    }

    /// Goes to the next title. Of what stands before it, the first text is told of: it may be a title without
    /// its mark.
    void skipStrayLines(Rule rule, const QStringList& details = {})
    {
        while (hasLine() && line().trimmed().isEmpty())
            nextLine();
        if (!hasLine())
            return;
        if (namesSection(line()) || isNextTitle(line()))
            reportUnknownSection();
        else
            report(rule, {}, line().trimmed(), details);
        skipLines();
    }

    // The sections

    void readSection()
    {
        if (!isWellWritten(line()) || !namesSection(line())) {
            reportUnknownSection();
            nextLine();
            return skipLines();
        }
        const QStringView name = sectionNameIn(line());
        const std::size_t number = sectionNumber(name);
        const GbiSection& section = Io::gbiSections[number];
        if (isRead_[number])
            reportRepeatedSection(section, name);
        else
            titles_.add(int(number));
        isRead_[number] = true;
        nextLine();
        if (!isAtEnd() && isWellWritten(line()) && sectionNumber(sectionNameIn(line())) == number)
            return; // a title that is doubled is told of by itself
        list_ = addressOf(section.content);
        number_ = 0;
        readContent(section);
    }

    /// The name of the section that a writer puts next.
    QStringView nextName() const
    {
        const std::optional<int> next = titles_.next();
        return next ? QStringView(sectionNames()[*next]) : QStringView();
    }

    /// Whether a line is the title of that section with a word for the mark, or before it.
    bool isNextTitle(QStringView line) const
    {
        const QStringView name = nextName();
        const QStringView title = line.trimmed();
        if (name.isEmpty() || !title.endsWith(name))
            return false;
        const QStringView mark = title.chopped(name.size());
        const auto isOfMark = [](QChar c) { return c == QLatin1Char(*titleMark) || c.isSpace(); };
        return std::all_of(mark.begin() + wordFrom(mark, 0).size(), mark.end(), isOfMark);
    }

    void reportRepeatedSection(const GbiSection& section, QStringView name)
    {
        const qint64 begin = line_.begin + placeOf(name);
        text_.cover(begin, begin + name.size());
        if (listener_.onlyCounts(Rule::RepeatedSection))
            return titles_.addDoubtful();
        titles_.addDoubtful(
            Discovery {Rule::RepeatedSection, text_.place(begin), addressOf(section.content), excerpt(name)});
    }

    /// The section that was meant isn't missing besides.
    void reportUnknownSection()
    {
        const QStringView name = isNextTitle(line()) ? nextName() : sectionNameIn(line());
        const bool isName = isWellWritten(line()) && !name.isEmpty();
        const QStringView title = isName ? name : line().trimmed();
        const qint64 begin = line_.begin + placeOf(title);
        text_.cover(begin, begin + title.size());
        if (listener_.onlyCounts(Rule::UnknownSection))
            return titles_.addDoubtful();
        const QStringList& names = sectionNames();
        const QString start = name.left(longestName + 1).toString();
        titles_.setMeant(int(sectionNumber(nearestName(start, names))));
        Discovery discovery {Rule::UnknownSection, text_.place(begin), {}, excerpt(title)};
        discovery.consequence = suggestion(start, names);
        titles_.addDoubtful(discovery);
    }

    void readContent(const GbiSection& section)
    {
        switch (section.content) {
        case GbiContent::Fixed:
            return readFixed(section);
        case GbiContent::CoordinateSystem:
            return readCoordinateSystem();
        case GbiContent::Units:
            return readUnits();
        case GbiContent::Materials:
            names_ = SeenNames(0);
            ids_ = SeenNames(0);
            return readList(&GeometryBoundaryWalk::readMaterial);
        case GbiContent::SurfaceConditions:
            return readList(&GeometryBoundaryWalk::readCondition);
        }
    }

    /// What this library writes empty others fill. But a list ends as it does here, and a number is one.
    void readFixed(const GbiSection& section)
    {
        const bool isList = QLatin1String(section.lines).startsWith(QLatin1String(Io::gbiListEnd));
        bool isEmpty = true;
        bool isEnded = false;
        bool isLastBad = false;             // the last line, which may be a damaged end of the list
        std::optional<Discovery> behindEnd; // of the last list, if there are several
        for (; hasLine(); nextLine()) {
            const QStringView text = line().trimmed();
            if (text.isEmpty())
                continue;
            if (mayBeDamagedTitle(text) && namesSection(text))
                break;
            isEmpty = false;
            isLastBad = isList && text_.reportCharactersBefore(lineEnd());
            if (isList && isListEnd(wordFrom(text, 0))) {
                isEnded = true;
                behindEnd.reset();
            } else if (isEnded && (namesSection(text) || isNextTitle(text))) {
                break;
            } else if (isEnded && !behindEnd) {
                behindEnd = Discovery {
                    Rule::GeometryTrailingLines, text_.place(line_.begin + placeOf(text)), {}, excerpt(text)};
            }
        }
        if (hasLine())
            reportUnknownSection();
        if (isList && !isEnded && !isLastBad)
            reportMissingEnd();
        else if (behindEnd)
            listener_.finding(*behindEnd);
        else if (isEmpty && *section.lines != '\0')
            reportMissingValue({}, line_.begin);
        skipLines();
    }

    void readCoordinateSystem()
    {
        const QString address = QLatin1String(list_);
        if (!hasLine())
            return reportMissingValue(address, line_.begin);
        const QStringView first = wordFrom(line(), 0);
        const QStringView second = wordFrom(line(), endOf(first));
        const QStringView rest = line().mid(endOf(second)).trimmed();
        tellText(address, first.isEmpty() ? line().left(0) : first);
        if (!isOneOf(Io::coordinateSystemWords, first))
            reportWord(address, first, listOf(Io::coordinateSystemWords));
        else if (!first.isEmpty() && second.isEmpty())
            reportMissingValue(address, lineEnd());
        else if (second != first)
            report(Rule::CoordinateSystemsDiffer, address, second, {first.toString()});
        const bool isOneTooMany = second != first && (rest == first || rest == second);
        if (!isOneTooMany) // which is told of already
            readEndOfLine(rest, address);
        readEndOfSection();
    }

    void readUnits()
    {
        const QString address = QLatin1String(list_);
        if (!hasLine())
            return reportMissingValue(address, line_.begin);
        const QStringView word = line().trimmed();
        tellText(address, word);
        if (word.isEmpty())
            reportMissingValue(address, lineEnd());
        else if (!isOneOf(Io::unitsWords, word))
            reportWord(address, word, listOf(Io::unitsWords));
        readEndOfSection();
    }

    void reportWord(const QString& address, QStringView word, const QStringList& known)
    {
        report(Rule::UnknownWord, address, word, {known.join(QLatin1String(", "))}, &known);
    }

    void readEndOfLine(QStringView rest, const QString& address = {})
    {
        if (!rest.isEmpty())
            report(Rule::GeometryTrailingText, address, rest);
    }

    /// What stands behind the last line of a section.
    void readEndOfSection()
    {
        nextLine();
        skipStrayLines(Rule::GeometryTrailingLines);
    }

    // The lists

    void readList(void (GeometryBoundaryWalk::*readRow)())
    {
        for (; hasLine(); nextLine()) {
            const QStringView row = line().trimmed();
            if (row.isEmpty())
                continue;
            if (isListEnd(row))
                return readEndOfSection();
            const QStringView word = wordFrom(row, 0);
            const QStringView rest = row.mid(word.size()).trimmed();
            if (isListEnd(word) && isLastRow()) {
                readEndOfLine(rest, QLatin1String(list_));
                return nextLine();
            }
            const bool isBadEnd = rest.isEmpty() || isListEnd(rest);
            if (isBadEnd && isLastRow()) {
                report(Rule::BadListEnd, QLatin1String(list_), row);
                return nextLine();
            }
            ++number_;
            row_ = QLatin1String(list_) + QLatin1Char('/') + QString::number(number_);
            (this->*readRow)();
            isTwoInOne_ = false;
        }
        reportMissingEnd();
    }

    /// Whether the row stands where the end of the list should, since nothing more of the list follows.
    bool isLastRow()
    {
        lookAhead(1);
        return ahead_.empty() || isTitle(ahead_.front().text);
    }

    void reportMissingEnd()
    {
        listener_.finding({Rule::MissingEnd, text_.place(line_.begin), QLatin1String(list_)});
    }

    /// Of a value in the row.
    QString address(const char* item, int place = 0) const
    {
        constexpr QLatin1Char slash('/');
        if (place == 0)
            return row_ % slash % QLatin1String(item);
        const Io::NumberText number(place);
        return row_ % slash % QLatin1String(item) % slash % QLatin1String(number);
    }

    void readInteger(QStringView word, const char* item)
    {
        if (listener_.wantsItems()) {
            const QString text = word.toString();
            tell(address(item), Type::Integer, word, text, text.toInt());
        }
        if (!judges_)
            return;
        if (const std::optional<Rule> fault = integerFault(word))
            reportBadNumber(*fault, address(item), word);
    }

    void readNumber(QStringView word, const char* item, int place = 0)
    {
        if (listener_.wantsItems()) {
            const QString text = word.toString();
            tell(address(item, place), Type::Number, word, text, Io::parseNumber(text));
        }
        if (!judges_)
            return;
        if (const std::optional<Rule> fault = numberFault(word))
            reportBadNumber(*fault, address(item, place), word);
    }

    void reportBadNumber(Rule fault, const QString& address, QStringView word)
    {
        report(fault, address, word);
        if (isNumberAndMore(word))
            isTwoInOne_ = true;
    }

    /// Whether a bad word holds a number, any character and what may stand behind that number.
    bool isNumberAndMore(QStringView word)
    {
        const QStringView start = word.left(longestName);
        const auto end = std::find_if(start.begin(), start.end(), [](QChar c) {
            return !c.isDigit() && !QStringView(u"+-.eE").contains(c);
        });
        const auto size = end - start.begin();
        if (size == 0 || size + 1 >= word.size() || numberFault(word.left(size)))
            return false;
        const QStringView next = word.mid(size + 1);
        return !numberFault(next) || isVariable(next);
    }

    /// The same of the name of a variable and a number.
    bool isNameAndNumber(QStringView word)
    {
        for (int size = 1; size + 1 < std::min<int>(int(word.size()), longestName); ++size) {
            if (!numberFault(word.mid(size + 1)) && isVariable(word.left(size)))
                return true;
        }
        return false;
    }

    /// A name may hold anything, quotes too: it ends at the last one.
    void readMaterial()
    {
        listener_.element(row_);
        const int open = line_.text.indexOf(quote);
        const int close = line_.text.lastIndexOf(quote);
        const bool isQuoted = open < close;
        const QStringView beforeName = open < 0 ? line() : line().left(open);
        const QStringView id = isQuoted ? beforeName.trimmed() : wordFrom(beforeName, 0);
        if (id.isEmpty())
            reportMissingValue(address("id"), line_.begin + open);
        else
            readId(id);
        if (!isQuoted)
            return reportUnquoted(open < 0 ? wordFrom(line(), endOf(id)) : line().mid(endOf(id)).trimmed());

        readName(line().mid(open + 1, close - open - 1));
        const QStringView fluid = wordFrom(line(), close + 1);
        const QStringView resistance = wordFrom(line(), endOf(fluid));
        if (fluid.isEmpty())
            return reportMissingValue(address("fluid"), lineEnd());
        readInteger(fluid, "fluid");
        if (resistance.isEmpty())
            return reportMissingValue(address("resistance"), lineEnd());
        readInteger(resistance, "resistance");
        const QStringView rest = line().mid(endOf(resistance)).trimmed();
        const bool isOneBad = judges_ && (integerFault(fluid) || integerFault(resistance));
        if (!isOneBad || integerFault(rest)) // else that is the one too many
            readEndOfLine(rest);
    }

    void readId(QStringView id)
    {
        readInteger(id, "id");
        const int number = id.size() > longestName ? 0 : id.toString().toInt();
        if (number != 0 && ids_.add(QString::number(number)) > 0)
            report(Rule::RepeatedId, address("id"), id);
    }

    void readName(QStringView name)
    {
        tellText(address("name"), name);
        if (!name.isEmpty() && names_.add(name) > 0)
            report(Rule::RepeatedMaterial, address("name"), name);
        else
            addPart(address("name"), name);
    }

    void reportUnquoted(QStringView name)
    {
        if (name.isEmpty())
            return reportMissingValue(address("name"), lineEnd());
        report(Rule::UnquotedName, address("name"), name);
    }

    /// The entity, the name, the value; as many more values as there are; the flag and the time curve.
    void readCondition()
    {
        const QStringView first = wordFrom(line(), 0);
        const bool isBad = integerFault(first).has_value();
        const bool hasEntity = !isBad || !isVariable(first);
        const QStringView entity = hasEntity ? first : first.left(0);
        if (hasEntity)
            readInteger(entity, "entity");
        else
            reportMissingValue(address("entity"), line_.begin + placeOf(first));
        QStringView name = wordFrom(line(), endOf(entity));
        if (isBad && isNumberTooMany(name))
            name = wordFrom(line(), endOf(name));
        if (name.isEmpty())
            return reportMissingValue(address("name"), lineEnd());
        const bool hasName = readVariable(name);
        if (!hasName)
            reportMissingValue(address("name"), line_.begin + endOf(entity) + 1);
        QStringView value = hasName ? wordFrom(line(), endOf(name)) : name;
        if (hasName && isNameTooMany(name, value))
            value = wordFrom(line(), endOf(value));
        if (value.isEmpty())
            return reportMissingValue(address("value"), lineEnd());
        readNumber(value, "value");

        const QStringView last = wordBefore(line(), line_.text.size());
        if (placeOf(last) <= placeOf(value))
            return reportMissingValue(address("time-curve-flag"), lineEnd());
        const QStringView flag = wordBefore(line(), placeOf(last));
        if (placeOf(flag) <= placeOf(value)) {
            readInteger(last, "time-curve-flag");
            return reportMissingValue(address("time-curve"), lineEnd());
        }
        readExtraValues(endOf(value), placeOf(flag));
        readInteger(flag, "time-curve-flag");
        readInteger(last, "time-curve");
    }

    /// Whether the right entity stands where the name should, behind a bad one.
    bool isNumberTooMany(QStringView word)
    {
        return !word.isEmpty() && !integerFault(word) && isVariable(wordFrom(line(), endOf(word)));
    }

    /// Whether the right name stands where the value should, behind a bad one.
    bool isNameTooMany(QStringView name, QStringView value)
    {
        return !value.isEmpty() && value.front().isLetter() && isVariable(value) && !isVariable(name);
    }

    void readExtraValues(int begin, int end)
    {
        int place = 0;
        for (QStringView word = wordFrom(line(), begin); placeOf(word) < end;
             word = wordFrom(line(), endOf(word)))
            readNumber(word, "extra", ++place);
    }

    /// Whether a condition can be of that name. The quantity of one that sets none has a name, too.
    bool isVariable(QStringView word)
    {
        if (word.size() > longestName)
            return false;
        const QString name = QString::fromRawData(word.data(), int(word.size()));
        if (variables_.contains(name))
            return true;
        const Io::CodeNameTable& table = Io::CodeNameTable::instance();
        if (table.codeForName(name) == Io::kNone && name != table.nameForCode(Io::kNone, true))
            return false;
        variables_.insert(word.toString());
        return true;
    }

    /// False, and nothing is said, if a number stands there: then there is no name.
    bool readVariable(QStringView word)
    {
        const bool isKnown = isVariable(word);
        if (!isKnown && !numberFault(word))
            return false;
        if (listener_.wantsItems())
            tellText(address("name"), word);
        if (!isKnown) {
            report(Rule::UnknownCondition, address("name"), word, {}, &variableAndFlagNames());
            if (isNameAndNumber(word))
                isTwoInOne_ = true;
        }
        return true;
    }

    UnreadListener listener_;
    TextFile text_;
    const bool judges_; ///< somebody wants to know what is wrong
    Line line_;
    std::deque<Line> ahead_; ///< lines that have been read, behind this one
    bool isAtEnd_ = false;

    std::array<bool, std::size(Io::gbiSections)> isRead_ = {};
    SectionTitles titles_ {sectionNames(), sectionNames().size(), listener_};

    const char* list_ = "";   ///< the address of the section
    int number_ = 0;          ///< of the row in it
    QString row_;             ///< its address
    bool isTwoInOne_ = false; ///< two words of it are one that is bad, and none is missing
    QSet<QString> variables_; ///< those that have stood in the file
    SeenNames names_ {0};
    SeenNames ids_ {0};
};

} // namespace

void walkGeometryBoundary(const InputFile& file, Listener& listener)
{
    GeometryBoundaryWalk(file, listener).run();
}

} // namespace Nereo::Inspection
