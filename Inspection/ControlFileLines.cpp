#include "ControlFileLines.h"

#include "NumberFault.h"

#include <FileIO/ControlFileSections.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Nereo::Inspection {

namespace {

constexpr int longestSurelyRead = 100;  // the stream puts a number into a buffer, and drops what doesn't fit
constexpr int longestCompared = 100000; // of numbers that may be longer than the buffer

/// The first character from a place on that is white space, or that is none. It is never far, and asked for
/// more often than anything else.
template <bool isSpace>
int next(QStringView text, int from)
{
    while (from < text.size() && text[from].isSpace() != isSpace)
        ++from;
    return from;
}

Range wordOf(QStringView text, int from)
{
    const int begin = next<false>(text, from);
    return {begin, next<true>(text, begin)};
}

/// The base that the stream takes for that of an integer, after it has read it.
int baseOf(QStringView digits)
{
    if (digits.size() < 2 || digits[0] != QLatin1Char('0'))
        return 10;
    const QChar second = digits[1].toLower();
    if (second == QLatin1Char('x'))
        return 16;
    if (second == QLatin1Char('b'))
        return 2;
    return second.digitValue() <= 7 ? 8 : 10;
}

int valueOf(QChar digit)
{
    return digit.isDigit() ? digit.digitValue() : digit.toLower().unicode() - 'a' + 10;
}

/// Whether 32 bits hold an integer that the stream has read to its end. The stream doesn't say.
bool isInRange(QStringView integer)
{
    const bool isNegative = integer.startsWith(QLatin1Char('-'));
    if (isNegative || integer.startsWith(QLatin1Char('+')))
        integer = integer.mid(1);
    const int base = baseOf(integer);
    if (base == 16 || base == 2)
        integer = integer.mid(2);
    const qint64 largest = qint64(std::numeric_limits<int>::max()) + isNegative;
    qint64 value = 0;
    for (const QChar digit : integer) {
        value = value * base + valueOf(digit);
        if (value > largest)
            return false;
    }
    return true;
}

/// Whether the stream, which has taken all of the word, has also read all of it.
bool isWhole(QStringView word, double value)
{
    if (word.size() <= longestSurelyRead || !std::isfinite(value))
        return true;
    return word.size() <= longestCompared && word.toString().toDouble() == value;
}

} // namespace

ControlFileLines::ControlFileLines(const InputFile& file, Listener& listener)
    : text_(file, listener), in_(&line_, QIODevice::ReadOnly)
{
}

bool ControlFileLines::readLine()
{
    begin_ = text_.nextIndex();
    at_ = 0;
    lineEnd_ = 0;
    if (!text_.readLine(line_)) {
        state_ = State::End;
        return false;
    }
    lineEnd_ = line_.size();
    state_ = Io::isTitle(text()) ? State::Title : State::Line;
    return true;
}

bool ControlFileLines::nextLine()
{
    return hasLine() && readLine() && hasLine();
}

Range ControlFileLines::wordFrom(int from) const
{
    return hasLine() ? wordOf(text(), from) : Range();
}

Range ControlFileLines::restFrom(int from) const
{
    if (!hasLine())
        return {};
    Range rest = wordFrom(from);
    for (rest.end = lineEnd(); rest.end > rest.begin && line_.at(rest.end - 1).isSpace();)
        --rest.end;
    return rest;
}

template <class Number>
Extracted<Number> ControlFileLines::extract(int from)
{
    if (line_.size() == lineEnd_)
        line_ += QLatin1Char('\n');          // now, since most numbers are read without it
    const QChar second = line_.at(from + 1); // which the stream may turn into lower case
    in_.seek(from);
    in_.resetStatus();
    Number value = 0;
    in_ >> value;
    line_[from + 1] = second;
    return {value, int(in_.pos()), in_.status() == QTextStream::Ok};
}

Extracted<int> ControlFileLines::integerAt(int from)
{
    return extract<int>(from);
}

Extracted<double> ControlFileLines::numberAt(int from)
{
    return extract<double>(from);
}

std::optional<WordFault> ControlFileLines::integerFault(Range word, double& value)
{
    if (const std::optional<int> plain = plainInteger(text(word))) {
        value = *plain;
        return {};
    }
    const Extracted<int> integer = integerAt(word.begin);
    value = integer.value;
    if (!integer.isRead)
        return WordFault {Rule::NotAnInteger};
    const QString readAs = QString::number(integer.value);
    if (integer.end < word.end)
        return WordFault {Rule::NotAnIntegerToItsEnd, readAs};
    if (!isInRange(text(word)))
        return WordFault {Rule::IntegerWraps, readAs};
    return {};
}

std::optional<WordFault> ControlFileLines::numberFault(Range word, double& value)
{
    if (const std::optional<double> plain = plainNumber(text(word))) {
        value = *plain;
        return {};
    }
    const Extracted<double> number = numberAt(word.begin);
    value = number.value;
    if (!number.isRead) {
        const bool isComplete = number.end == word.end && word.size() <= longestCompared;
        const std::optional<Rule> fault =
            isComplete ? Inspection::numberFault(text(word).toString()) : std::nullopt;
        const bool isOutOfRange = fault == Rule::NumberTooLarge || fault == Rule::NumberOutOfRange;
        return WordFault {isOutOfRange ? Rule::NumberOutOfRange : Rule::NotANumber};
    }
    if (number.end < word.end || !isWhole(text(word), number.value))
        return WordFault {Rule::NotANumberToItsEnd, QString::number(number.value)};
    return {};
}

bool ControlFileLines::passPlainNumber()
{
    if (!hasLine())
        return false;
    const int begin = next<false>(text(), at_);
    const int length = plainNumberLength(text().mid(begin));
    if (length != 0)
        at_ = begin + length;
    return length != 0;
}

bool ControlFileLines::toWord()
{
    while (hasLine()) {
        const Range word = wordFrom(std::min(at_, lineEnd()));
        at_ = word.begin;
        if (!word.isEmpty())
            return true;
        nextLine();
    }
    return false;
}

int ControlFileLines::readInteger()
{
    if (!toWord())
        return 0;
    const Extracted<int> integer = integerAt(at_);
    at_ = integer.end;
    return integer.value;
}

double ControlFileLines::readNumber()
{
    if (!toWord())
        return 0.0;
    const Extracted<double> number = numberAt(at_);
    at_ = number.end;
    return number.value;
}

QString simplified(QStringView text, int most)
{
    QString words;
    for (Range word = wordOf(text, 0); !word.isEmpty() && words.size() < most;
         word = wordOf(text, word.end)) {
        if (!words.isEmpty())
            words += QLatin1Char(' ');
        words += text.mid(word.begin, std::min(word.size(), most));
    }
    return words.left(most);
}

bool haveSameWords(QStringView left, QStringView right)
{
    Range inLeft = wordOf(left, 0);
    Range inRight = wordOf(right, 0);
    while (!inLeft.isEmpty() && !inRight.isEmpty()
           && left.mid(inLeft.begin, inLeft.size()) == right.mid(inRight.begin, inRight.size())) {
        inLeft = wordOf(left, inLeft.end);
        inRight = wordOf(right, inRight.end);
    }
    return inLeft.isEmpty() && inRight.isEmpty();
}

} // namespace Nereo::Inspection
