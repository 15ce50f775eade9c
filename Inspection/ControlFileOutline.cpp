#include "ControlFileOutline.h"
#include "ControlFileLines.h"
#include "ControlFileMaterials.h"
#include "NearestName.h"
#include "SectionTitles.h"
#include "SeenNames.h"
#include "VariableNames.h"
#include "VersionFault.h"
#include "Walker.h"

#include <FileIO/ControlFileRecords.h>
#include <FileIO/ControlFileSections.h>
#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ControlFile.h>
#include <NereoUtility/StringConversion.h>
#include <NereoUtility/Version.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <iterator>
#include <limits>
#include <tuple>
#include <utility>
#include <vector>

namespace Nereo::Inspection {

namespace {

using Io::CodeNameTable;
using Io::ControlFile;
using Type = Item::Type;

namespace SectionName = Io::SectionName;
namespace FixedSections = Io::FixedSections;

constexpr int longestName = 64; // of sections and variables, and more
constexpr int longestHeader = 1000;
constexpr int longestAddressPart = 200;
constexpr int titleLength = 5; ///< up to the name
constexpr QLatin1Char asterisk('*');
constexpr char solutionAddress[] = "solution-control";

template <std::size_t size>
constexpr Fields all(const Field (&fields)[size])
{
    return {fields, int(size)};
}

// Sections in which each line has its own values.

constexpr Field equationFields[] = {
    {"1", Type::Integer, true},
    {"2", Type::Integer, true},
    {"3", Type::Integer, true},
    {"4", Type::Integer, true},
    {"5", Type::Integer, true},
};
static_assert(std::size(equationFields) == ControlFile::EquationCount);

constexpr Field unitsFields[] = {
    {"", Type::Integer, true},
};

constexpr Field transientFields[] = {
    {"form",      Type::Integer, false},
    {"steps",     Type::Integer, true },
    {"step-size", Type::Number,  true },
    {"stop-time", Type::Number,  true },
};

constexpr Field sequentialFields[] = {
    {"1",         Type::Integer, true },
    {"2",         Type::Integer, true },
    {"3",         Type::Integer, true },
    {"variable",  Type::Text,    false},
    {"tolerance", Type::Number,  true },
};

// What stands behind the name of a variable.

constexpr Field solutionFields[] = {
    {"1",          Type::Integer},
    {"2",          Type::Integer},
    {"3",          Type::Integer, false, Save::AsOne},
    {"tolerance", Type::Number             },
};

constexpr Field unlistedSolutionFields[] = {
    {"1",         Type::Integer},
    {"2",         Type::Integer},
    {"3",         Type::Integer},
    {"tolerance", Type::Number },
};

constexpr Field relaxationFields[] = {
    {"under",    Type::Number},
    {"inertial", Type::Number},
};

constexpr Field constantFields[] = {
    {"", Type::Number},
};

constexpr Field unsavedConstantFields[] = {
    {"", Type::Number, false, Save::Never},
};

// What a load doesn't take, though a solver does.

constexpr Field switchFields[] = {
    {"on",   Type::Switch},
    {"stop", Type::Switch},
};

constexpr Field criterionFields[] = {
    {"instantaneous-slope",    Type::Number},
    {"time-average-slope",     Type::Number},
    {"time-average-concavity", Type::Number},
    {"field-fluctuation",      Type::Number},
};
static_assert(std::size(criterionFields) == std::size(Io::criteria));

template <class Record>
constexpr Type typeOf(bool Record::*)
{
    return Type::Switch;
}

template <class Record>
constexpr Type typeOf(int Record::*)
{
    return Type::Integer;
}

template <class Record>
constexpr Type typeOf(double Record::*)
{
    return Type::Number;
}

/// The fields of a record, by their places in the line.
template <class... Members>
std::vector<Field> fieldsOf(const std::tuple<Members...>& members)
{
    static constexpr const char* places[] = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12"};
    static_assert(sizeof...(Members) <= std::size(places));
    std::vector<Field> fields;
    std::apply(
        [&](auto... member) {
            (fields.push_back({places[fields.size()], typeOf(member)}), ...);
        },
        members);
    return fields;
}

/// The line without its digits, which change from one version to the next.
QString withoutDigits(QStringView line)
{
    QString text;
    std::copy_if(line.begin(), line.end(), std::back_inserter(text),
                 [](QChar character) { return !character.isDigit(); });
    return text;
}

/// Whether a header line is as the writer of some version writes it.
bool isLike(QStringView line, QStringView written)
{
    return line.size() <= longestHeader && withoutDigits(line) == withoutDigits(written);
}

QString versionReadFrom(QStringView text)
{
    return Util::Version(text.left(longestHeader).toString()).toString();
}

/// The code of a variable; kNone if there is none of that name.
int codeOf(QStringView name)
{
    return name.size() > longestName ? int(Io::kNone)
                                     : CodeNameTable::instance().codeForName(name.toString());
}

QString nameOf(int code)
{
    return CodeNameTable::instance().nameForCode(code, false);
}

/// Whether a name that has the code is a flag of nodes, which a load doesn't tell from the variable of that
/// code.
bool isNodeFlag(QStringView name, int code)
{
    const QString variable = nameOf(code);
    return name != variable && nodeFlagNames().contains(name.toString());
}

/// Without a byte-order mark at its start, which is told of by itself.
QStringView withoutMark(QStringView line)
{
    return line.startsWith(QChar(QChar::ByteOrderMark)) ? line.mid(1) : line;
}

/// A list of variables with numbers behind each.
struct List {
    const char* address;
    int first;   ///< of the codes that a writer writes
    int last;    ///< of those that a load takes, from 1 on
    int skipped; ///< how many numbers a load reads behind an unknown name
};

/// The variables of a section, as a writer names them.
QStringList namesOf(const List& list)
{
    QStringList names;
    for (int code = list.first; code <= list.last; ++code)
        names.append(nameOf(code));
    return names;
}

/// What a title says; null where the line is none.
QStringView titleOf(QStringView line)
{
    return Io::hasSectionName(line) ? line.mid(titleLength).trimmed() : QStringView();
}

QString withoutAsterisks(const QString& words)
{
    const auto name = std::find_if(words.begin(), words.end(), [](QChar c) { return c != asterisk; });
    return words.mid(int(name - words.begin())).trimmed();
}

/// The way through one file.
class ControlFileWalk {
public:
    ControlFileWalk(const InputFile& file, Listener& listener)
        : lines_(file, listener), listener_(listener),
          values_(lines_, listener,
                  [this](int at) { return lostTitle(at, at == 0 ? TitleMark::Any : TitleMark::Asterisks); }),
          mostRepeated_(listener.wantsItems() ? std::numeric_limits<std::size_t>::max()
                                              : std::size_t(FindingListener::mostOfACode)),
          unknownSections_(mostRepeated_), materials_(lines_, values_, mostRepeated_)
    {
    }

    static std::vector<ControlFileSection> sectionNames()
    {
        std::vector<ControlFileSection> names;
        for (const Section& section : sections())
            names.push_back({section.name, section.address});
        return names;
    }

    void run()
    {
        readHeader();
        readSecondHeader();
        readFirstTitle();
        while (lines_.hasTitle())
            readSection();
        titles_.addEnd();
        for (const Section& section : sections()) {
            if (titles_.isMissing(numberOf(section)))
                listener_.finding(
                    {Rule::MissingSection, lines_.place(0), section.address, {}, {section.name}});
        }
        lines_.reportEnd();
    }

private:
    /// A section by its name; how it is read, and the lines of one that is the same in every file.
    struct Section {
        const char* name;
        const char* address;
        void (ControlFileWalk::*read)(const Section& section);
        bool isAlwaysWritten = true;
        Fields fields = {};
        const char* lines = "";
    };

    /// What stands before a name that is meant for a title: asterisks, or a word or nothing in their place.
    enum class TitleMark { Asterisks, Any };

    struct Sections {
        const Section* first;
        const Section* behind;

        const Section* begin() const { return first; }
        const Section* end() const { return behind; }
    };

    static Sections sections();
    static const Section* sectionOf(const QString& name);
    static int numberOf(const Section& section) { return int(&section - sections().first); }
    static int countOfWritten();
    static const QStringList& names();
    static const Section* titledSection(QStringView line)
    {
        return sectionOf(simplified(titleOf(line), longestName));
    }
    std::bitset<32>::reference isSeen(const Section& section)
    {
        return seenSections_[std::size_t(numberOf(section))];
    }

    void readHeader();
    void readSecondHeader();
    bool isSecondHeader(QStringView line) const;
    Discovery badHeader(const char* address, const QString& consequence = {});
    void titleAsHeader(const Section& section);
    void checkVersion(int at);
    void readFirstTitle();
    void readSection();
    bool isTitleOf(const Section& section) const;
    void readUnknownSection(QStringView spelling, const QString& name);
    std::optional<Discovery> lostTitle(int at = 0, TitleMark mark = TitleMark::Any); // and notes whose it is
    static const Section* meantSection(QStringView title, TitleMark mark);
    bool reportLostTitle();
    void skipLines();

    void readTitle(const Section& section);
    void readFields(const Section& section);
    void readSolutionControl(const Section& section);
    void readRelaxation(const Section& section);
    void readConstants(const Section& section);
    void readAutoConvergence(const Section& section);
    void readFlags(const Section& section);
    void readMaterials(const Section& section);
    void readFixed(const Section& section);
    void readVariableOutput(const Section& section);

    template <class FieldsOfCode>
    void readList(const List& list, FieldsOfCode fieldsOfCode);
    void nodeFlag(const QString& address, Range name, int code);
    void unknownVariable(const List& list, Range name);
    void readSwitches(const QString& address, bool areThere);
    bool readCriterion(const QString& address);
    std::optional<int> endOfWords(const QString& words);
    void readUnloaded(const QString& section, Fields fields, int at);
    void missingUnloaded(const QString& address, int at);
    bool readLines(const QString& address, const QStringList& expected);
    void readFlag(SeenNames& names);
    void notLoaded(const Section& section);

    ControlFileLines lines_;
    Listener& listener_;
    ControlFileValues values_;
    const std::size_t mostRepeated_;
    const ControlFile new_; ///< what a writer writes of the header
    std::bitset<32> seenSections_;
    SeenNames unknownSections_;
    SectionTitles titles_ {names(), countOfWritten(), listener_};
    ControlFileMaterials materials_;
    qint64 title_ = 0; ///< the number of the first character of the section's name
    int sectionCount_ = 0;
    bool isBehindLostTitle_ = false;
    std::optional<Discovery> movedUp_; ///< of the second header in the first line
    bool isHeaderMissing_ = false;
    bool isSecondHeaderBad_ = false;
};

void ControlFileWalk::readHeader()
{
    if (!lines_.readLine())
        return;
    values_.text(QStringLiteral("header/1"), {0, lines_.lineEnd()});
    const QLatin1String mark(Io::versionMark);
    const QStringView line = lines_.text();
    const auto at = line.lastIndexOf(mark);
    if (at < 0) {
        Discovery discovery =
            badHeader("header/1", translated("the version is read as %1").arg(versionReadFrom(line)));
        if (isSecondHeader(line))
            movedUp_ = std::move(discovery);
        else
            listener_.finding(discovery);
        return;
    }
    const QString written = Util::toQString(new_.headerLine1());
    if (!isLike(withoutMark(line.left(at)), QStringView(written).left(written.lastIndexOf(mark))))
        listener_.finding(badHeader("header/1"));
    checkVersion(int(at) + mark.size());
}

void ControlFileWalk::readSecondHeader()
{
    const bool hasLine = lines_.readLine();
    const Section* const section = hasLine ? titledSection(lines_.text()) : nullptr;
    if (section != nullptr)
        titleAsHeader(*section);
    else if (movedUp_)
        listener_.finding(*movedUp_);
    if (!hasLine)
        return;
    values_.text(QStringLiteral("header/2"), {0, lines_.lineEnd()});
    isSecondHeaderBad_ = section == nullptr && !isSecondHeader(lines_.text());
    if (isSecondHeaderBad_)
        listener_.finding(badHeader("header/2"));
    lines_.addPart({0, lines_.lineEnd()}, QStringLiteral("header/2"));
}

bool ControlFileWalk::isSecondHeader(QStringView line) const
{
    const QLatin1String branchStart(" (");
    const auto at = line.indexOf(branchStart);
    const QString written = Util::toQString(new_.headerLine2());
    return at >= 0 && line.endsWith(QLatin1Char(')'))
        && isLike(withoutMark(line.left(at)), QStringView(written).left(written.indexOf(branchStart)));
}

Discovery ControlFileWalk::badHeader(const char* address, const QString& consequence)
{
    Discovery discovery {Rule::BadHeader, lines_.place(0), address, excerpt(lines_.text())};
    discovery.consequence = consequence;
    lines_.cover({0, lines_.lineEnd()});
    return discovery;
}

/// The first title stands where the second header should: one of the headers is missing, and nothing else is
/// wrong with the first lines.
void ControlFileWalk::titleAsHeader(const Section& section)
{
    isHeaderMissing_ = true;
    titles_.setMeant(numberOf(section));
    Discovery discovery = movedUp_ ? *movedUp_ : badHeader("header/2");
    lines_.cover({0, lines_.lineEnd()});
    discovery.effect = Effect::Ignored;
    if (!discovery.consequence.isEmpty())
        discovery.consequence += QLatin1String("; ");
    discovery.consequence += translated(
        "a line is missing before it, and the first title with what stands up to the next one is ignored");
    listener_.finding(discovery);
}

/// The version is all that stands behind a place in the line.
void ControlFileWalk::checkVersion(int at)
{
    const QStringView version = lines_.text().mid(at).trimmed();
    const int begin = version.isEmpty() ? lines_.lineEnd() : int(version.data() - lines_.text().data());
    const bool isBad = Inspection::checkVersion(version.left(longestHeader).toString(), false,
                                                lines_.place(begin), QStringLiteral("header/1"), listener_);
    const int end = begin + int(version.size());
    lines_.addPart({0, isBad ? begin : end}, QStringLiteral("header/1"));
    if (isBad)
        lines_.cover({begin, end});
}

/// What stands up to the first title belongs to no section if the third line is none.
void ControlFileWalk::readFirstTitle()
{
    if (!lines_.readLine())
        return listener_.finding({Rule::MissingTitleAtEnd, lines_.place(0)});
    if (Io::hasSectionName(lines_.text()))
        return readSection();

    Discovery discovery {Rule::MissingTitle, lines_.place(0), {}, excerpt(lines_.text())};
    lines_.cover({0, lines_.lineEnd()});
    lostTitle(); // whose section isn't missing besides
    titles_.addDoubtful();
    const bool isMovedDown = isSecondHeaderBad_ && isSecondHeader(lines_.text()); // by the line that is bad
    bool isIgnored = !isMovedDown && !lines_.text().trimmed().isEmpty();
    for (lines_.readLine(); lines_.hasLine(); lines_.nextLine())
        isIgnored = isIgnored || !lines_.isBlank();
    if (!isIgnored)
        discovery.effect = Effect::None;
    if (!isHeaderMissing_ && (isIgnored || !isMovedDown))
        listener_.finding(discovery);
    lines_.reportCharacters();
}

void ControlFileWalk::readSection()
{
    const QStringView line = lines_.text();
    const QStringView spelling = titleOf(line);
    const int begin = spelling.isEmpty() ? lines_.lineEnd() : int(spelling.data() - line.data());
    const QString name = simplified(spelling, longestName);
    title_ = lines_.begin() + begin;
    isBehindLostTitle_ = false;
    values_.beginSection();
    ++sectionCount_;
    const Section* const section = sectionOf(name);
    if (section == nullptr) {
        lines_.cover({begin, begin + int(spelling.size())});
        return readUnknownSection(spelling, name);
    }
    if (!isSeen(*section))
        titles_.add(numberOf(*section));
    else if (listener_.onlyCounts(Rule::RepeatedSection))
        titles_.addDoubtful();
    else
        titles_.addDoubtful(
            Discovery {Rule::RepeatedSection, lines_.placeOf(title_), section->address, excerpt(spelling)});
    isSeen(*section) = true;
    lines_.readLine();
    if (!isTitleOf(*section)) // a title that is doubled is told of by itself
        (this->*section->read)(*section);
    skipLines();
    lines_.reportCharacters();
}

/// Whether the current line is a title of the section.
bool ControlFileWalk::isTitleOf(const Section& section) const
{
    return lines_.hasTitle() && titledSection(lines_.text()) == &section;
}

void ControlFileWalk::skipLines()
{
    while (lines_.hasLine()) {
        lines_.nextLine();
        lines_.reportCharacters();
    }
}

void ControlFileWalk::readUnknownSection(QStringView spelling, const QString& name)
{
    const bool isTold = !listener_.onlyCounts(Rule::UnknownSection);
    QString address;
    if (isTold || listener_.wantsItems()) {
        const QString wholeName =
            simplified(spelling, listener_.wantsItems() ? int(spelling.size()) : longestAddressPart);
        const int repeated = unknownSections_.add(wholeName);
        address = name.isEmpty() ? QLatin1Char('#') + QString::number(sectionCount_) : addressPart(wholeName);
        if (repeated > 0 && !name.isEmpty())
            address += QLatin1Char('#') + QString::number(repeated + 1);
    }
    std::optional<Discovery> discovery;
    if (isTold) {
        if (const Section* const meant = sectionOf(nearestName(name, names())))
            titles_.setMeant(numberOf(*meant));
        discovery = Discovery {Rule::UnknownSection, lines_.placeOf(title_), address, excerpt(spelling)};
        discovery->knownNames = &names();
    }
    titles_.addDoubtful(discovery);
    lines_.readLine();
    readLines(address, {});
}

/// What there is to say of a line that names a section and would be its title with other blanks and
/// asterisks. The section isn't missing besides.
std::optional<Discovery> ControlFileWalk::lostTitle(int at, TitleMark mark)
{
    const Range range = lines_.restFrom(at);
    const QStringView title = lines_.text(range);
    const std::optional<int> next = titles_.next();
    const bool isNext = next && title.endsWith(names()[*next]);
    const Section* const section = meantSection(title, isNext ? TitleMark::Any : mark);
    if (section == nullptr)
        return {};
    isBehindLostTitle_ = true;
    titles_.setMeant(numberOf(*section));
    lines_.cover(range);
    return Discovery {Rule::LostTitle, lines_.place(range.begin), section->address,
                      excerpt(lines_.text(range))};
}

const ControlFileWalk::Section* ControlFileWalk::meantSection(QStringView title, TitleMark mark)
{
    const bool hasAsterisks = title.startsWith(asterisk);
    if (mark == TitleMark::Asterisks && !mayBeDamagedTitle(title))
        return nullptr;
    const QString words = simplified(title, longestName);
    const Section* const section = sectionOf(withoutAsterisks(words));
    if (section != nullptr)
        return section;
    for (const Section& damaged : sections()) {
        if (isDamagedTitleOf(QLatin1String(damaged.name), words))
            return &damaged;
    }
    const bool hasWord = mark == TitleMark::Any && !hasAsterisks;
    return hasWord ? sectionOf(withoutAsterisks(words.section(QLatin1Char(' '), 1))) : nullptr;
}

/// False if the line is none.
bool ControlFileWalk::reportLostTitle()
{
    const std::optional<Discovery> discovery = lostTitle(0, TitleMark::Asterisks);
    if (discovery)
        listener_.finding(*discovery);
    return discovery.has_value();
}

void ControlFileWalk::readTitle(const Section& section)
{
    if (lines_.hasLine()) {
        values_.text(section.address, {0, lines_.lineEnd()});
        lines_.addPart({0, lines_.lineEnd()}, section.address);
        lines_.nextLine();
        values_.trailingLines(section.address);
    } else {
        listener_.finding(
            {lines_.hasTitle() ? Rule::MissingText : Rule::MissingLines, lines_.place(0), section.address});
    }
}

void ControlFileWalk::readFields(const Section& section)
{
    // Behind a title in the last line of a file a load doesn't even read zeros.
    if (!lines_.hasLine() && !lines_.hasTitle())
        listener_.finding(
            {Rule::MissingLines, lines_.place(0), fieldAddress(section.address, section.fields[0])});
    else
        values_.readSection(section.address, section.fields);
}

/// Reads a name in each line, and behind it the fields that a variable has.
template <class FieldsOfCode>
void ControlFileWalk::readList(const List& list, FieldsOfCode fieldsOfCode)
{
    std::bitset<ControlFile::ConstantCount + 1> seen;
    std::array<QString, ControlFile::ConstantCount + 1> addresses;
    while (lines_.hasLine()) {
        const Range name = lines_.wordFrom(0);
        const bool isTold = isBehindLostTitle_ && !listener_.wantsItems();
        if (name.isEmpty() || isTold) {
            if (isTold)
                lines_.cover(lines_.restFrom(0));
            lines_.nextLine();
            lines_.reportCharacters();
            continue;
        }
        const int code = codeOf(lines_.text(name));
        if (code < 1 || code > list.last) {
            unknownVariable(list, name);
        } else {
            QString& address = addresses[std::size_t(code)];
            if (address.isEmpty())
                address = list.address + (QLatin1Char('/') + nameOf(code));
            const bool isFlag = isNodeFlag(lines_.text(name), code);
            if (isFlag)
                nodeFlag(address, name, code);
            if (seen[std::size_t(code)])
                values_.finding(Rule::RepeatedVariable, address, name);
            seen[std::size_t(code)] = true;
            if (list.address == solutionAddress && code > Io::lastListedVariable && !isFlag)
                values_.finding(Rule::UnusedValue, address, name);
            values_.readLine(address, fieldsOfCode(code, isFlag), name.end);
        }
        lines_.nextLine();
        lines_.reportCharacters();
    }
}

void ControlFileWalk::nodeFlag(const QString& address, Range name, int code)
{
    if (listener_.onlyCounts(Rule::NodeFlagAsVariable))
        return;
    const QString flag = lines_.text(name).toString();
    listener_.finding({Rule::NodeFlagAsVariable, lines_.place(name.begin), address, flag, {nameOf(code)}});
}

void ControlFileWalk::unknownVariable(const List& list, Range name)
{
    std::optional<Discovery> discovery;
    QStringList names;
    if (!isBehindLostTitle_)
        discovery = lostTitle();
    if (!isBehindLostTitle_ && !listener_.onlyCounts(Rule::UnknownVariable)) {
        const QStringView word = lines_.text(name);
        const QString address = list.address + (QLatin1Char('/') + addressPart(excerpt(word)));
        discovery = Discovery {Rule::UnknownVariable, lines_.place(name.begin), address, excerpt(word)};
        names = namesOf(list);
        discovery->knownNames = &names;
    }
    lines_.cover(name);

    const qint64 line = lines_.begin();
    lines_.goTo(name.end);
    for (int i = 0; i < list.skipped; ++i) {
        const bool isHere = lines_.begin() == line;
        lines_.readNumber();
        if (discovery && isHere && lines_.begin() != line && lines_.hasLine())
            discovery->consequence = ControlFileValues::takenInstead(lines_.text(lines_.restFrom(0)));
    }
    lines_.goTo(lines_.lineEnd());
    if (discovery)
        listener_.finding(*discovery);
}

void ControlFileWalk::readSolutionControl(const Section&)
{
    const List list {solutionAddress, Io::kU, ControlFile::SolvedVariableCount, 0};
    readList(list, [](int code, bool) {
        return all(code > Io::lastListedVariable ? unlistedSolutionFields : solutionFields);
    });
}

void ControlFileWalk::readRelaxation(const Section& section)
{
    const List list {section.address, Io::kU, ControlFile::RelaxedVariableCount, 2};
    readList(list, [](int, bool) { return all(relaxationFields); });
}

void ControlFileWalk::readConstants(const Section& section)
{
    const List list {section.address, Io::firstListedConstant, ControlFile::ConstantCount, 0};
    std::vector<Field> record;
    readList(list, [&](int code, bool isFlag) {
        const auto setFields = [&](const auto&, const auto& members) { record = fieldsOf(members); };
        if (Io::visitRecord(new_, code, setFields))
            return Fields {record.data(), int(record.size())};
        const bool isUnsaved = code < Io::firstListedConstant && !isFlag; // a flag isn't what it seems
        return all(isUnsaved ? unsavedConstantFields : constantFields);
    });
}

/// The switches, and a threshold behind the text of each criterion.
void ControlFileWalk::readAutoConvergence(const Section& section)
{
    notLoaded(section);
    bool isFirst = true;
    for (; lines_.hasLine() && !reportLostTitle(); lines_.nextLine()) {
        if (!lines_.isBlank()) {
            const bool isCriterion = readCriterion(section.address);
            if (isFirst)
                readSwitches(section.address, !isCriterion);
            isFirst = false;
        }
        lines_.reportCharacters();
    }
}

void ControlFileWalk::readSwitches(const QString& address, bool areThere)
{
    if (!areThere)
        return missingUnloaded(fieldAddress(address, switchFields[0]), lines_.wordFrom(0).begin);
    readUnloaded(address, all(switchFields), 0);
}

/// False if the line is none.
bool ControlFileWalk::readCriterion(const QString& address)
{
    for (std::size_t i = 0; i < std::size(Io::criteria); ++i) {
        if (const std::optional<int> end = endOfWords(QString::fromLatin1(Io::criteria[i].text))) {
            readUnloaded(address, all(criterionFields).mid(int(i), int(i) + 1), *end);
            return true;
        }
    }
    return false;
}

/// The place behind the words with which the line begins; none if it begins with others.
std::optional<int> ControlFileWalk::endOfWords(const QString& words)
{
    int at = 0;
    for (const QString& word : words.split(QLatin1Char(' '))) {
        const Range range = lines_.wordFrom(at);
        if (lines_.text(range) != word)
            return {};
        at = range.end;
    }
    return at;
}

/// Reads what stands behind a place in the line.
void ControlFileWalk::readUnloaded(const QString& section, Fields fields, int at)
{
    bool isAnyBad = false;
    bool isMissingTold = false;
    Field field;
    for (int i = 0; i < fields.count; ++i) {
        field = fields[i];
        const Range word = lines_.wordFrom(at);
        if (!word.isEmpty()) {
            isAnyBad = !values_.unloaded(fieldAddress(section, field), field.type, word) || isAnyBad;
            isMissingTold = i + 1 < fields.count && values_.isTwoInOne(word, field.type, fields[i + 1].type);
        } else if (!std::exchange(isMissingTold, false)) {
            missingUnloaded(fieldAddress(section, field), lines_.lineEnd());
        }
        at = word.isEmpty() ? lines_.lineEnd() : word.end;
    }
    const Range rest = lines_.restFrom(at);
    if (isAnyBad && values_.isValue(field.type, rest)) // the bad one is too many
        lines_.cover(rest);
    else
        values_.trailingText(fields.count == 1 ? fieldAddress(section, field) : section, at);
}

void ControlFileWalk::missingUnloaded(const QString& address, int at)
{
    listener_.finding({Rule::UnreadMissingValue, lines_.place(at), address});
}

void ControlFileWalk::readFlags(const Section& section)
{
    const QString address = section.address;
    const bool isAtEnd = !lines_.hasLine() && !lines_.hasTitle();
    if (isAtEnd || !lines_.toWord()) {
        // None are announced then, and none are there.
        return listener_.finding(
            {isAtEnd ? Rule::MissingLines : Rule::MissingValue, lines_.place(0), address});
    }
    const Range word = lines_.wordFrom(lines_.at());
    double announced = 0;
    const std::optional<WordFault> fault = lines_.integerFault(word, announced);
    Discovery discovery {Rule::FlagCount, lines_.place(word.begin), address, excerpt(lines_.text(word))};
    if (fault)
        lines_.cover(word);
    if (fault && fault->rule == Rule::NotAnInteger)
        lines_.cover(
            lines_.restFrom(word.end)); // in place of the number stands something else: a flag, perhaps
    else
        values_.trailingText(address, word.end);

    SeenNames names(mostRepeated_);
    qint64 count = 0;
    lines_.nextLine();
    while (lines_.hasLine()) {
        if (!lines_.isBlank()) {
            readFlag(names);
            ++count;
        }
        lines_.nextLine();
        lines_.reportCharacters(); // now, so that the parts of the line before are let go
    }
    if (count != qint64(announced)) {
        discovery.details = QStringList(QString::number(int(announced)));
        discovery.found = QString::number(count);
        listener_.finding(discovery);
    } else if (fault) {
        discovery.rule = fault->rule;
        discovery.details = QStringList(fault->readAs);
        listener_.finding(discovery);
    }
}

void ControlFileWalk::readFlag(SeenNames& names)
{
    const Range name = lines_.wordFrom(0);
    const Range value = lines_.wordFrom(name.end);
    QString address = QLatin1String("flags/") + values_.addressPartOf(name);
    if (const int before = names.add(lines_.text(name))) {
        address += QLatin1Char('#') + QString::number(before + 1);
        values_.finding(Rule::RepeatedFlag, address, name);
    }
    values_.byteOrderMark(address, name);
    values_.text(address, value);
    lostTitle(0, TitleMark::Asterisks); // which counts as a flag, and is told of with their number
    lines_.addPart({name.begin, value.end}, address);
    if (!isBehindLostTitle_)
        values_.trailingText(address, value.end);
}

void ControlFileWalk::readMaterials(const Section& section)
{
    if (materials_.read(section.address))
        notLoaded(section);
}

void ControlFileWalk::readFixed(const Section& section)
{
    const QString lines = QString::fromLatin1(section.lines);
    if (!readLines(section.address, lines.split(QLatin1Char('\n'), Qt::SkipEmptyParts)))
        notLoaded(section);
}

void ControlFileWalk::readVariableOutput(const Section& section)
{
    QStringList lines;
    for (int code = Io::kU; code <= Io::lastListedVariable; ++code)
        lines.append(nameOf(code) + QLatin1String(" 0"));
    if (!readLines(section.address, lines))
        notLoaded(section);
}

/// Tells of the lines that aren't blank, by their places. False if they don't say what is expected, bad
/// characters and what stands behind the title of another section aside.
bool ControlFileWalk::readLines(const QString& address, const QStringList& expected)
{
    bool areSame = true;
    int count = 0;
    int ownCount = 0; // up to a lost title
    for (; lines_.hasLine(); lines_.nextLine()) {
        reportLostTitle();
        if (!lines_.isBlank()) {
            const Range line = lines_.restFrom(0);
            if (!isBehindLostTitle_) {
                areSame = areSame && ownCount < expected.size()
                    && (haveSameWords(lines_.text(line), expected[ownCount]) || lines_.reportLine());
                ++ownCount;
            }
            ++count;
            if (listener_.wantsItems())
                values_.item(address + QLatin1Char('/') + QString::number(count), Type::Text, line,
                             lines_.text(line).toString().simplified());
        }
        lines_.reportCharacters();
    }
    return areSame && ownCount == expected.size();
}

void ControlFileWalk::notLoaded(const Section& section)
{
    if (!listener_.onlyCounts(Rule::NotLoaded))
        listener_.finding({Rule::NotLoaded, lines_.placeOf(title_), section.address, section.name});
}

/// The sections that a writer always writes come first.
int ControlFileWalk::countOfWritten()
{
    const Sections all = sections();
    return int(std::count_if(all.begin(), all.end(), [](const Section& s) { return s.isAlwaysWritten; }));
}

const QStringList& ControlFileWalk::names()
{
    static const QStringList names = sectionNamesOf(sections());
    return names;
}

const ControlFileWalk::Section* ControlFileWalk::sectionOf(const QString& name)
{
    for (const Section& section : sections()) {
        if (name == QLatin1String(section.name))
            return &section;
    }
    return nullptr;
}

ControlFileWalk::Sections ControlFileWalk::sections()
{
    using Walk = ControlFileWalk;
    const auto written = [](const char* name, const char* address, auto read) {
        return Section {name, address, read};
    };
    const auto ofLines = [](const char* name, const char* address, Fields fields) {
        return Section {name, address, &Walk::readFields, true, fields};
    };
    const auto unwritten = [](const char* name, const char* address) {
        return Section {name, address, &Walk::readFixed, false};
    };
    const auto fixed = [](const Io::FixedSection& section, const char* address) {
        return Section {section.name, address, &Walk::readFixed, true, {}, section.lines};
    };
    // In the order in which a writer writes them.
    static const Section table[] = {
        written(SectionName::title, "title", &Walk::readTitle),
        ofLines(SectionName::equationSelection, "equation-selection", all(equationFields)),
        ofLines(SectionName::units, "units", all(unitsFields)),
        written(SectionName::propertySettings, "property-settings", &Walk::readMaterials),
        fixed(FixedSections::fieldVariableInitialization, "field-variable-initialization"),
        ofLines(SectionName::transientData, "transient-data", all(transientFields)),
        fixed(FixedSections::freeSurface, "free-surface"),
        ofLines(SectionName::sequentialSolver, "sequential-solver", all(sequentialFields)),
        written(SectionName::solutionControl, solutionAddress, &Walk::readSolutionControl),
        written(SectionName::relaxation, "relaxation", &Walk::readRelaxation),
        written(SectionName::autoConvergenceControl, "auto-convergence", &Walk::readAutoConvergence),
        fixed(FixedSections::outputSetting, "output-setting"),
        fixed(FixedSections::resultsOutputFrequency, "results-output-frequency"),
        fixed(FixedSections::summaryOutputFrequency, "summary-output-frequency"),
        written(SectionName::fieldVariableOutput, "field-variable-output", &Walk::readVariableOutput),
        fixed(FixedSections::restart, "restart"),
        fixed(FixedSections::batch, "batch"),
        fixed(FixedSections::solarHeating, "solar-heating"),
        written(SectionName::constants, "constants", &Walk::readConstants),
        fixed(FixedSections::interfaceSection, "interface"),
        written(SectionName::flags, "flags", &Walk::readFlags),
        fixed(FixedSections::monitorPoints, "monitor-points"),
        unwritten(SectionName::multiPhaseTable, "multi-phase-table"),
        unwritten(SectionName::variableBoundaryConditions, "variable-bc"),
        unwritten(SectionName::fanCurveBoundaryConditions, "fan-curve-bc"),
        unwritten(SectionName::scalars, "scalars"),
    };
    static_assert(std::size(table) <= 32);
    return {std::begin(table), std::end(table)};
}

} // namespace

const std::vector<ControlFileSection>& controlFileSections()
{
    static const std::vector<ControlFileSection> sections = ControlFileWalk::sectionNames();
    return sections;
}

void walkControlFile(const InputFile& file, Listener& listener)
{
    ControlFileWalk(file, listener).run();
}

} // namespace Nereo::Inspection
