#include "ControlFileValues.h"

#include "NumberFault.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoUtility/StringConversion.h>

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace Nereo::Inspection {

namespace {

using Type = Item::Type;

constexpr int longestName = 64; // of variables, and more
constexpr ushort mark = 0xFEFF; // which a std::string that becomes a QString loses at its start

QVariant variantOf(Type type, double value)
{
    switch (type) {
    case Type::Switch:
        return value == 1;
    case Type::Integer:
        return int(value);
    default:
        return value;
    }
}

/// As values go: what is no number is the same as what is none either.
bool isSame(double left, double right)
{
    return left == right || (std::isnan(left) && std::isnan(right));
}

bool isVariable(const QString& name)
{
    const Io::CodeNameTable& names = Io::CodeNameTable::instance();
    return names.codeForName(name) != Io::kNone || name == names.nameForCode(Io::kNone, false);
}

Discovery missing(const QString& address, const Place& place, double readAs)
{
    if (readAs == 0)
        return {Rule::MissingValue, place, address};
    return {Rule::MissingValueTaken, place, address, {}, {QString::number(readAs)}};
}

} // namespace

QString fieldAddress(const QString& address, const Field& field)
{
    return *field.name == '\0' ? address : address + QLatin1Char('/') + QLatin1String(field.name);
}

QString translated(const char* english)
{
    return QCoreApplication::translate("Nereo::Inspection", english);
}

void ControlFileValues::readSection(const QString& address, Fields fields)
{
    values_.clear();
    blank_.reset();
    held_.clear();
    isMissingTold_ = false;
    for (int i = 0, end; i < fields.count; i = end) {
        for (; lines_.hasLine() && lines_.isBlank(); lines_.nextLine()) {
            if (!blank_) {
                blank_ = lines_.place(lines_.lineEnd());
                fieldAtBlank_ = i;
            }
        }
        if (!lines_.hasLine())
            return missingAtEnd(address, fields, i);
        end = i + firstLine(fields.mid(i, fields.count)).count;
        const bool mayBeNext = held_.empty() && isLike(firstLine(fields.mid(end, fields.count)));
        isHeld_ = mayBeNext;
        const bool isWhole = readLine(address, fields.mid(i, end), 0);
        isHeld_ = false;
        if (!isWhole) {
            tellHeld();
            return readShifted(address, fields.mid(end, fields.count));
        }
        if (mayBeNext && !held_.empty()) {
            fieldHeld_ = i;
            placeHeld_ = lines_.place(lines_.wordFrom(0).begin);
        }
        lines_.nextLine();
    }
    tellHeld();
    trailingLines(address);
}

/// The fields of the first line.
Fields ControlFileValues::firstLine(Fields fields)
{
    int end = 0;
    while (end < fields.count && !fields[end++].endsLine) {}
    return fields.mid(0, end);
}

/// Whether the current line is as one of these fields should be.
bool ControlFileValues::isLike(Fields fields)
{
    int at = 0;
    for (int i = 0; i < fields.count; ++i) {
        const Range word = lines_.wordFrom(at);
        double value = 0;
        if (word.isEmpty()
            || (fields[i].type == Type::Text ? !isVariable(lines_.text(word).left(longestName).toString())
                                             : faultOf(fields[i].type, word, value).has_value()))
            return false;
        at = word.end;
    }
    return fields.count > 0 && lines_.restFrom(at).isEmpty();
}

void ControlFileValues::tell(const Discovery& discovery)
{
    if (isHeld_)
        held_.push_back(discovery);
    else
        listener_.finding(discovery);
}

void ControlFileValues::tellHeld()
{
    for (const Discovery& discovery : held_)
        listener_.finding(discovery);
    held_.clear();
}

/// The section ends before the field. A blank line, or one that is as the line behind it should be, is where
/// the value that is missing should stand, since those below it have moved up for a load.
void ControlFileValues::missingAtEnd(const QString& address, Fields fields, int field)
{
    const Fields rest = fields.mid(field, fields.count);
    if (!held_.empty() && firstLine(rest).count == rest.count) {
        if (!blank_ || fieldAtBlank_ > fieldHeld_) {
            blank_ = placeHeld_;
            fieldAtBlank_ = fieldHeld_;
        }
        held_.clear();
    }
    tellHeld();
    readShifted(address, rest);
    if (!blank_) {
        Discovery discovery = missing(fieldAddress(address, fields[field]), lines_.place(0), 0);
        if (field + 1 < fields.count)
            discovery.consequence = translated("so are those behind it");
        return listener_.finding(discovery);
    }
    const bool isRead = std::size_t(fieldAtBlank_) < values_.size();
    const double value = isRead ? values_[std::size_t(fieldAtBlank_)] : 0;
    Discovery discovery = missing(fieldAddress(address, fields[fieldAtBlank_]), *blank_, value);
    if (isRead)
        discovery.consequence = translated("a load takes the next line for it, and so on for those below");
    listener_.finding(discovery);
}

bool ControlFileValues::readLine(const QString& address, Fields fields, int from)
{
    int at = from;
    for (int i = 0; i < fields.count; ++i) {
        const Range word = lines_.wordFrom(at);
        const Fields rest = fields.mid(i, fields.count);
        if (word.isEmpty() || isSwitchMissing(rest, word) || !readField(address, fields[i], word))
            return readBroken(address, rest, at);
        at = word.end;
    }
    trailingText(fields.count == 1 ? fieldAddress(address, fields[0]) : address, at);
    lines_.goTo(lines_.lineEnd());
    return true;
}

/// Whether the word of the first field is no switch, and those that are there would fit one field later.
bool ControlFileValues::isSwitchMissing(Fields fields, Range word)
{
    double value = 0;
    if (fields[0].type != Type::Switch || faultOf(Type::Switch, word, value) || value == 0 || value == 1)
        return false;
    for (int i = 1; i < fields.count; ++i) {
        if (word.isEmpty() || faultOf(fields[i].type, word, value))
            return false;
        word = lines_.wordFrom(word.end);
    }
    return word.isEmpty();
}

/// False if something is wrong with its word.
bool ControlFileValues::readField(const QString& address, const Field& field, Range word)
{
    if (field.type == Type::Text) {
        values_.push_back(0);
        variable(fieldAddress(address, field), word);
        return true;
    }
    double value = 0;
    if (faultOf(field.type, word, value))
        return false;
    values_.push_back(value);
    if (wantsItems_)
        item(fieldAddress(address, field), field.type, word, variantOf(field.type, value));

    std::optional<Rule> rule;
    if (field.type == Type::Switch && value != 0 && value != 1)
        rule = Rule::BadSwitch;
    else if (field.save == Save::Never || (field.save == Save::AsOne && value != 1))
        rule = Rule::UnusedValue;
    if (rule) {
        listener_.finding(
            {*rule, lines_.place(word.begin), fieldAddress(address, field), excerpt(lines_.text(word))});
    }
    return true;
}

void ControlFileValues::finding(Rule rule, const QString& address, Range range)
{
    if (!listener_.onlyCounts(rule))
        listener_.finding(found(rule, address, range));
}

Discovery ControlFileValues::found(Rule rule, const QString& address, Range range, const QStringList& details)
{
    return {rule, lines_.place(range.begin), address, excerpt(lines_.text(range)), details};
}

/// A load keeps the name, whatever it is.
void ControlFileValues::variable(const QString& address, Range word)
{
    text(address, word);
    const QString name = lines_.text(word).left(longestName).toString();
    if (isVariable(name))
        return lines_.addPart(word, address);
    // A number at the end of the line is the one that belongs behind the name.
    const bool isLast = lines_.wordFrom(word.end).isEmpty();
    const bool isNumber = isLast && isOfLaterField(Type::Text, word);
    isMissingTold_ = isNumber || (isLast && isNameAndNumber(word));
    if (isNumber) {
        const Range end {lines_.lineEnd(), lines_.lineEnd()};
        listener_.finding(found(Rule::MissingValueTaken, address, end, {name}));
    } else {
        finding(Rule::UnknownVariableKept, address, word);
    }
    lines_.cover(word);
}

/// Whether the name of a variable and a number have become one word, with another character for the blank.
bool ControlFileValues::isNameAndNumber(Range word)
{
    const QStringView text = lines_.text(word).left(longestName);
    for (int size = 1; size + 1 < text.size(); ++size) {
        if (isVariable(text.left(size).toString())
            && isValue(Type::Number, {word.begin + size + 1, word.end}))
            return true;
    }
    return false;
}

/// Reads on where a word is missing or bad.
bool ControlFileValues::readBroken(const QString& address, Fields fields, int at)
{
    const int behind = judge(address, fields, at);
    const std::optional<Discovery> rest =
        isWordTooMany(fields, behind) ? std::nullopt : trailing(address, behind);
    const qint64 line = lines_.begin();
    lines_.goTo(at);
    readJudged(fields);
    for (const Read& read : reads_) {
        if (read.item)
            listener_.item(*read.item);
        if (read.discovery)
            tell(*read.discovery);
    }
    if (rest)
        tell(*rest);
    return lines_.begin() == line;
}

/// Judges the words of the line, each by itself. Returns the place behind them.
int ControlFileValues::judge(const QString& address, Fields fields, int at)
{
    reads_.clear();
    for (int i = 0; i < fields.count; ++i) {
        const Type type = fields[i].type;
        Read& read = reads_.emplace_back();
        read.word = lines_.wordFrom(at);
        at = read.word.isEmpty() ? at : read.word.end;
        if (wantsItems_) {
            read.item = Item {fieldAddress(address, fields[i]),  type,
                              lines_.place(read.word.begin),     lines_.length(read.word),
                              lines_.text(read.word).toString(), {}};
        }
        read.fault =
            read.word.isEmpty() ? WordFault {Rule::MissingValue} : faultOf(type, read.word, read.alone);
        if (!read.word.isEmpty() && read.fault)
            lines_.cover(read.word);
    }
    if (!reads_.front().fault) // a switch is missing, and the word belongs to the field behind it
        reads_.front().fault = WordFault {Rule::MissingValue};
    discover(address, fields);
    return at;
}

/// What is missing is told once. If it isn't the last, one of those behind it may be no value of its place.
void ControlFileValues::discover(const QString& address, Fields fields)
{
    const bool isShort = reads_.back().word.isEmpty();
    const int end = lines_.lineEnd();
    bool isMissingTold = isMissingTold_ || (isShort && isTwoInOne(fields));
    for (int i = 0; i < fields.count; ++i) {
        Read& read = reads_[std::size_t(i)];
        if (!read.fault)
            continue;
        const bool isMissing = read.word.isEmpty() || (isShort && isOfLaterField(fields[i].type, read.word));
        if (isMissing && isMissingTold)
            continue;
        isMissingTold = isMissingTold || isMissing;
        const Rule rule = isMissing ? Rule::MissingValue : read.fault->rule;
        if (!listener_.onlyCounts(rule)) {
            read.discovery = found(rule, fieldAddress(address, fields[i]),
                                   isMissing ? Range {end, end} : read.word, {read.fault->readAs});
        }
    }
}

/// Whether one value is missing since two have become the first word, which is bad.
bool ControlFileValues::isTwoInOne(Fields fields)
{
    const bool isOneMissing = fields.count > 1 && !reads_[std::size_t(fields.count - 2)].word.isEmpty();
    return isOneMissing && isTwoInOne(reads_.front().word, fields[0].type, fields[1].type);
}

bool ControlFileValues::isTwoInOne(Range word, Type first, Type second)
{
    if (isValue(Type::Number, word))
        return false;
    const int end =
        first == Type::Number ? lines_.numberAt(word.begin).end : lines_.integerAt(word.begin).end;
    return isValue(first, {word.begin, end}) && end < word.end && isValue(second, {end + 1, word.end});
}

/// Whether the first bad word is no number and the others would fit without it. Then the last one, which is
/// behind those that are read, isn't too many besides.
bool ControlFileValues::isWordTooMany(Fields fields, int behind)
{
    double value = 0;
    const Range last = lines_.wordFrom(behind);
    const auto bad =
        std::find_if(reads_.begin(), reads_.end(), [](const Read& read) { return bool(read.fault); });
    if (bad->word.isEmpty() || last.isEmpty() || !lines_.restFrom(last.end).isEmpty()
        || !faultOf(Type::Number, bad->word, value))
        return false;
    for (auto read = bad; read != reads_.end(); ++read) {
        const Range next = read + 1 == reads_.end() ? last : (read + 1)->word;
        if (faultOf(fields[int(read - reads_.begin())].type, next, value))
            return false;
    }
    for (auto read = bad + 1; read != reads_.end(); ++read)
        read->discovery.reset();
    lines_.cover(last);
    return true;
}

/// Whether a word that isn't of its field's type is a number: those come last.
bool ControlFileValues::isOfLaterField(Item::Type type, Range word)
{
    double value = 0;
    return type != Type::Number && !faultOf(Type::Number, word, value);
}

/// Reads what has been judged as a load reads it, which may go on in the next lines, or stay at a word.
void ControlFileValues::readJudged(Fields fields)
{
    const qint64 line = lines_.begin();
    Discovery* first = nullptr;
    QString left;
    bool isLeft = false;
    bool hasShifted = false; // the word of another field stands where the first one is missing
    for (int i = 0; i < fields.count; ++i) {
        Read& read = reads_[std::size_t(i)];
        const bool isHere = lines_.begin() == line;
        const double value = readNext(fields[i].type);
        values_.push_back(value);
        if (read.item)
            read.item->value = variantOf(fields[i].type, value);
        if (first != nullptr && (!read.word.isEmpty() || hasShifted)) {
            isLeft = isLeft || !isSame(value, read.alone);
            left += (left.isEmpty() ? QLatin1String() : QLatin1String(", ")) + QString::number(value);
        }
        if (!read.discovery)
            continue;
        const bool isMissing = read.discovery->rule == Rule::MissingValue;
        if (isMissing && value != 0) {
            read.discovery->rule = Rule::MissingValueTaken;
            read.discovery->details = QStringList(QString::number(value));
        }
        if (read.word.isEmpty() && isHere && lines_.begin() != line && lines_.hasLine())
            read.discovery->consequence = takenInstead(lines_.text(lines_.restFrom(0)));
        if (first == nullptr) {
            first = &*read.discovery;
            hasShifted = isMissing && !read.word.isEmpty();
        }
    }
    if (hasShifted) {
        first->consequence = translated("those behind it are read as") + QLatin1Char(' ') + left;
    } else if (isLeft) {
        first->consequence =
            translated("what is left of it is read for the values behind it:") + QLatin1Char(' ') + left;
    }
    lines_.goTo(lines_.lineEnd());
}

/// Reads what a load takes for these values behind a line that had too few.
void ControlFileValues::readShifted(const QString& address, Fields fields)
{
    for (int i = 0; i < fields.count; ++i) {
        const Field& field = fields[i];
        const Range word = lines_.toWord() ? lines_.wordFrom(lines_.at()) : Range();
        const QString name = fieldAddress(address, field);
        if (field.type == Type::Text) // which is missing, since nothing before it goes on in the next line
            item(name, Type::Text, word, QString());
        else
            item(name, field.type, word, variantOf(field.type, readNext(field.type)));
        if (field.endsLine)
            lines_.goTo(lines_.lineEnd());
    }
}

bool ControlFileValues::isValue(Type type, Range range)
{
    double value = 0;
    return !range.isEmpty() && !faultOf(type, range, value);
}

bool ControlFileValues::unloaded(const QString& address, Item::Type type, Range word)
{
    double value = 0;
    std::optional<Discovery> discovery;
    const std::optional<WordFault> fault = faultOf(type, word, value);
    if (fault) {
        discovery = found(unreadNumber(fault->rule), address, word);
        lines_.cover(word);
    } else if (type == Type::Switch && value != 0 && value != 1) {
        discovery = found(Rule::UnreadBadSwitch, address, word);
    }
    if (discovery) {
        discovery->effect = Effect::Ignored;
        listener_.finding(*discovery);
    }
    if (wantsItems_)
        item(address, type, word, variantOf(type, value));
    return !fault;
}

void ControlFileValues::text(const QString& address, Range range)
{
    if (wantsItems_) {
        const std::string text = Util::toStdString(lines_.text(range).toString());
        item(address, Type::Text, range, Util::toQString(text));
    }
    byteOrderMark(address, range);
}

void ControlFileValues::byteOrderMark(const QString& address, Range range)
{
    if (!range.isEmpty() && lines_.text(range).front().unicode() == mark)
        listener_.finding({Rule::StrayByteOrderMark, lines_.place(range.begin), address});
}

std::optional<Discovery> ControlFileValues::trailing(const QString& address, int at)
{
    const Range rest = lines_.restFrom(at);
    if (rest.isEmpty())
        return {};
    lines_.cover(rest);
    if (std::optional<Discovery> title = lostTitle_(at)) {
        isBehindTitle_ = true;
        return title;
    }
    if (listener_.onlyCounts(Rule::TrailingText))
        return {};
    return found(Rule::TrailingText, address, rest);
}

bool ControlFileValues::reportLostTitle()
{
    const std::optional<Discovery> title = lostTitle_(0);
    if (title)
        listener_.finding(*title);
    return title.has_value();
}

void ControlFileValues::trailingText(const QString& address, int at)
{
    if (const auto discovery = trailing(address, at))
        listener_.finding(*discovery);
}

void ControlFileValues::trailingLines(const QString& address)
{
    for (bool isTold = isBehindTitle_; lines_.hasLine(); lines_.nextLine()) {
        if (!isTold && !lines_.isBlank()) {
            const Range rest = lines_.restFrom(0);
            lines_.cover(rest);
            if (!reportLostTitle())
                finding(Rule::TrailingLines, address, rest);
            isTold = true;
        }
        lines_.reportCharacters();
    }
}

void ControlFileValues::item(const QString& address, Item::Type type, Range word, const QVariant& value)
{
    if (wantsItems_) {
        listener_.item({address, type, lines_.place(word.begin), lines_.length(word),
                        lines_.text(word).toString(), value});
    }
}

QString ControlFileValues::addressPartOf(Range name) const
{
    const QStringView text = lines_.text(name);
    return addressPart(wantsItems_ ? text.toString() : excerpt(text));
}

QString ControlFileValues::takenInstead(QStringView line)
{
    return translated("a load takes the next line for it:") + QLatin1String(" \"") + excerpt(line)
        + QLatin1Char('"');
}

std::optional<WordFault> ControlFileValues::faultOf(Item::Type type, Range word, double& value)
{
    return type == Type::Number ? lines_.numberFault(word, value) : lines_.integerFault(word, value);
}

double ControlFileValues::readNext(Item::Type type)
{
    return type == Type::Number ? lines_.readNumber() : lines_.readInteger();
}

} // namespace Nereo::Inspection
