#include "NumberFault.h"

#include <FileIO/NumberText.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Nereo::Inspection {

namespace {

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

bool isOfNumber(QChar character)
{
    static constexpr char others[] = {'+', '-', '.', 'e', 'E'};
    return isDigit(character) || character.isSpace()
        || std::find(std::begin(others), std::end(others), character) != std::end(others);
}

/// Whether a text can be no number, which spares a long one the conversion and its memory.
bool isHopeless(QStringView text)
{
    constexpr int longestWord = 4096;
    return text.size() > longestWord && !std::all_of(text.begin(), text.end(), isOfNumber);
}

/// Takes the digits off the start of a text. False if there are none.
bool takeDigits(QStringView& text)
{
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    const auto count = end - text.begin();
    text = text.mid(count);
    return count > 0;
}

void takeSign(QStringView& text)
{
    if (!text.isEmpty() && (text.front() == QLatin1Char('+') || text.front() == QLatin1Char('-')))
        text = text.mid(1);
}

void takeMinus(QStringView& text)
{
    if (text.startsWith(QLatin1Char('-')))
        text = text.mid(1);
}

/// Whether a text is an integer of so few digits that it is surely read, as most are: that spares it the
/// conversion.
bool isShortInteger(QStringView text)
{
    constexpr int mostDigits = 9;
    takeMinus(text);
    return text.size() <= mostDigits && takeDigits(text) && text.isEmpty();
}

/// Takes a number of so few characters off the start of a text that it is surely read. False if there is
/// none.
bool takeShortNumber(QStringView& text)
{
    constexpr int mostCharacters = 18;
    constexpr int mostDigitsOfExponent = 2;
    const auto* at = text.begin();
    const auto passes = [&](auto isWanted) { return at != text.end() && isWanted(at->unicode()) && ++at; };
    const auto digits = [&] {
        const auto* const first = at;
        while (at != text.end() && isDigit(*at)) // which takes less time for a few than a call does
            ++at;
        return at - first;
    };
    passes([](ushort sign) { return sign == '-'; });
    if (digits() == 0)
        return false;
    if (passes([](ushort point) { return point == '.'; }) && digits() == 0)
        return false;
    if (passes([](ushort letter) { return letter == 'e'; })) {
        passes([](ushort sign) { return sign == '-' || sign == '+'; });
        const auto count = digits();
        if (count == 0 || count > mostDigitsOfExponent)
            return false;
    }
    const auto length = at - text.begin();
    text = text.mid(length);
    return length <= mostCharacters;
}

bool isShortNumber(QStringView text)
{
    return takeShortNumber(text) && text.isEmpty();
}

/// Whether a text that couldn't be read has the form of an integer all the same, so that only its size is
/// wrong.
bool isInteger(QStringView text)
{
    takeSign(text);
    return takeDigits(text) && text.isEmpty();
}

bool isDecimal(QStringView text)
{
    takeSign(text);
    bool hasDigits = takeDigits(text);
    if (text.startsWith(QLatin1Char('.'))) {
        text = text.mid(1);
        hasDigits = takeDigits(text) || hasDigits;
    }
    if (text.startsWith(QLatin1Char('e'), Qt::CaseInsensitive)) {
        text = text.mid(1);
        takeSign(text);
        hasDigits = takeDigits(text) && hasDigits;
    }
    return hasDigits && text.isEmpty();
}

} // namespace

std::optional<Rule> integerFault(QStringView text)
{
    if (isShortInteger(text))
        return {};
    if (isHopeless(text))
        return Rule::NotAnInteger;
    bool isRead = false;
    text.toString().toInt(&isRead);
    if (isRead)
        return {};
    const QStringView trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return Rule::MissingValue;
    return isInteger(trimmed) ? Rule::IntegerOutOfRange : Rule::NotAnInteger;
}

std::optional<Rule> numberFault(QStringView text)
{
    if (isShortNumber(text))
        return {};
    if (isHopeless(text))
        return Rule::NotANumber;
    bool isRead = false;
    const double number = text.toString().toDouble(&isRead);
    if (isRead)
        return {};
    const QStringView trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return Rule::MissingValue;
    if (!isDecimal(trimmed))
        return Rule::NotANumber;
    return std::isinf(number) ? Rule::NumberTooLarge : Rule::NumberOutOfRange;
}

std::optional<int> plainInteger(QStringView text)
{
    QStringView digits = text;
    takeMinus(digits);
    const bool hasBase = digits.size() > 1 && digits.front() == QLatin1Char('0'); // for a text stream
    return !hasBase && isShortInteger(text) ? std::optional(int(Io::parseNumber(text))) : std::nullopt;
}

std::optional<double> plainNumber(QStringView text)
{
    return isShortNumber(text) ? std::optional(Io::parseNumber(text)) : std::nullopt;
}

int plainNumberLength(QStringView text)
{
    QStringView behind = text;
    const bool isWord = takeShortNumber(behind) && (behind.isEmpty() || behind.front().isSpace());
    return isWord ? int(text.size() - behind.size()) : 0;
}

bool arePlainNumbers(QStringView line, int count)
{
    const auto skipSpaces = [&line] {
        qsizetype at = 0;
        while (at < line.size() && line[at].isSpace())
            ++at;
        line = line.mid(at);
        return at > 0;
    };
    skipSpaces();
    for (int i = 0; i < count; ++i) {
        if (!takeShortNumber(line) || (!skipSpaces() && !line.isEmpty()))
            return false;
    }
    return line.isEmpty();
}

Rule unreadNumber(Rule rule)
{
    switch (rule) {
    case Rule::NotAnInteger:
    case Rule::NotAnIntegerToItsEnd:
        return Rule::UnreadNotAnInteger;
    case Rule::NotANumber:
    case Rule::NotANumberToItsEnd:
        return Rule::UnreadNotANumber;
    case Rule::IntegerOutOfRange:
    case Rule::IntegerWraps:
        return Rule::UnreadIntegerOutOfRange;
    case Rule::NumberTooLarge:
    case Rule::NumberOutOfRange:
        return Rule::UnreadNumberOutOfRange;
    default:
        return rule;
    }
}

} // namespace Nereo::Inspection
