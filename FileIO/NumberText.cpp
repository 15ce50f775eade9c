#include "NumberText.h"

#include <QByteArray>
#include <QtGlobal>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <iterator>
#include <optional>

// What is faster than Qt needs integers of 128 bits, and operations in double precision: those in more than
// that would round twice. Without one of them numbers go through Qt: the same bytes, only slower.
#if defined(__SIZEOF_INT128__) && FLT_EVAL_METHOD == 0 && !defined(NEREO_NUMBERS_BY_QT)
#define NEREO_EXACT_NUMBERS
#endif

namespace Nereo::Io {
namespace {

constexpr int digitCount = 6;

#ifdef NEREO_EXACT_NUMBERS

__extension__ using quint128 = unsigned __int128;

constexpr quint32 leastSixDigits = 100'000;
constexpr quint32 leastSevenDigits = 1'000'000;

// From the one up to the other the digits come from exact arithmetic in integers: the whole part of the
// number fits 64 bits, and the scaled significand 128.
constexpr double exactFrom = 1e-20;
constexpr double exactUpTo = 1e18;

/// The powers of a base, up to the highest that a number from exactFrom up to exactUpTo asks for.
template <quint64 base, int highest>
struct Powers {
    constexpr Powers()
    {
        for (int exponent = 1; exponent <= highest; ++exponent)
            values[exponent] = base * values[exponent - 1];
    }
    quint64 values[highest + 1] = {1};
};

constexpr Powers<5, 26> powersOfFive;
constexpr Powers<10, 12> powersOfTen;

/// A number without its fraction, and whether that is a half or more.
struct Truncated {
    quint64 whole;
    bool roundsUp;
};

/// A positive number by its bits: significand * 2^(exponent - significandBits), the significand's highest bit
/// being bit significandBits.
struct Binary {
    static constexpr int significandBits = 52;

    explicit Binary(double number)
    {
        quint64 bits;
        std::memcpy(&bits, &number, sizeof bits);
        constexpr quint64 implicitBit = quint64(1) << significandBits;
        significand = (bits & (implicitBit - 1)) | implicitBit;
        exponent = int(bits >> significandBits) - 1023;
    }

    quint64 significand;
    int exponent;
};

/// number * 10^power, which is at least 10^5 and below 10^7, without any loss.
Truncated scaled(double number, const Binary& binary, int power)
{
    if (power >= 0) {
        const quint128 product = quint128(binary.significand) * powersOfFive.values[power];
        const int fractionBits = Binary::significandBits - binary.exponent - power;
        return {quint64(product >> fractionBits), ((product >> (fractionBits - 1)) & 1) != 0};
    }
    // A fraction of the number can't make the difference: half the divisor is a whole number.
    const auto whole = quint64(number);
    const quint64 divisor = powersOfTen.values[-power];
    return {whole / divisor, whole % divisor >= divisor / 2};
}

/// Six digits as a number, of which the first stands at that power of ten.
struct Decimal {
    quint32 digits;
    int exponent;
};

Decimal rounded(double number)
{
    const Binary binary(number);
    int exponent = (binary.exponent * 1233) >> 12; // log10(2) is 1233 / 4096: right, or one too low
    Truncated scaledNumber = scaled(number, binary, digitCount - 1 - exponent);
    if (scaledNumber.whole >= leastSevenDigits) {
        ++exponent;
        scaledNumber = scaled(number, binary, digitCount - 1 - exponent);
    }
    const quint32 digits = quint32(scaledNumber.whole) + scaledNumber.roundsUp;
    return digits < leastSevenDigits ? Decimal {digits, exponent} : Decimal {leastSixDigits, exponent + 1};
}

char* writeTwoDigits(char* to, int number)
{
    *to++ = char('0' + number / 10);
    *to++ = char('0' + number % 10);
    return to;
}

/// Writes digits with the point behind the first of them.
char* writePointed(char* to, const char* digits, int count)
{
    *to++ = digits[0];
    if (count == 1)
        return to;
    *to++ = '.';
    return std::copy(digits + 1, digits + count, to);
}

char* writeDecimal(char* to, const Decimal& decimal)
{
    char digits[digitCount];
    quint32 rest = decimal.digits;
    for (int i = digitCount - 1; i >= 0; --i, rest /= 10)
        digits[i] = char('0' + rest % 10);
    int count = digitCount;
    while (digits[count - 1] == '0')
        --count;

    const int exponent = decimal.exponent;
    if (exponent < -4 || exponent >= digitCount) {
        to = writePointed(to, digits, count);
        *to++ = 'e';
        *to++ = exponent < 0 ? '-' : '+';
        return writeTwoDigits(to, std::abs(exponent));
    }
    if (exponent < 0) {
        *to++ = '0';
        *to++ = '.';
        to = std::fill_n(to, -exponent - 1, '0');
        return std::copy(digits, digits + count, to);
    }
    to = std::copy(digits, digits + exponent, to);
    return writePointed(to, digits + exponent, std::max(count - exponent, 1));
}

/// Writes the numbers for which the integers here are wide enough, and gives nullptr for any other.
char* writeExactly(char* to, double value)
{
    const double magnitude = std::abs(value);
    if (!(magnitude >= exactFrom && magnitude < exactUpTo))
        return nullptr;
    if (value < 0)
        *to++ = '-';
    return writeDecimal(to, rounded(magnitude));
}

// Two doubles without an error have a quotient and a product with the smallest error, so a number whose
// digits and whose power of ten are exact needs one operation to be the nearest double.
constexpr quint64 largestExactInteger = quint64(1) << 53;
constexpr double exactPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                       1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int largestExactPower = int(std::size(exactPowersOfTen)) - 1;

/// Reads a text from its start.
class Scanner {
public:
    explicit Scanner(QStringView text) : at_(text.begin()), end_(text.end()) {}

    bool isAtEnd() const { return at_ == end_; }

    bool skip(char character)
    {
        const bool isThere = !isAtEnd() && *at_ == QLatin1Char(character);
        at_ += isThere;
        return isThere;
    }

    /// Appends the digits that come to a number, as many as surely fit it, and gives how many they were.
    int readDigits(quint64& number)
    {
        const QStringView::iterator first = at_;
        for (; !isAtEnd() && isDigit(*at_) && number < largestExactInteger; ++at_)
            number = 10 * number + (at_->unicode() - '0');
        return int(at_ - first);
    }

private:
    static bool isDigit(QChar character)
    {
        return character >= QLatin1Char('0') && character <= QLatin1Char('9');
    }

    QStringView::iterator at_;
    QStringView::iterator end_;
};

/// What stands behind the e of a number.
std::optional<int> readExponent(Scanner& text)
{
    const bool isNegative = text.skip('-');
    if (!isNegative)
        text.skip('+');
    quint64 digits = 0;
    const int count = text.readDigits(digits);
    if (count == 0 || count > 3)
        return {};
    return isNegative ? -int(digits) : int(digits);
}

/// The number of a text such as -293.15 or 1.5e-05, if one operation gives it.
std::optional<double> readExactly(QStringView number)
{
    Scanner text(number);
    const bool isNegative = text.skip('-');
    quint64 digits = 0;
    if (text.readDigits(digits) == 0)
        return {};
    const int decimals = text.skip('.') ? text.readDigits(digits) : 0;
    const std::optional<int> exponent = text.skip('e') ? readExponent(text) : 0;
    if (!exponent)
        return {};
    const int power = *exponent - decimals;
    if (!text.isAtEnd() || digits > largestExactInteger || std::abs(power) > largestExactPower)
        return {};
    const double magnitude =
        power < 0 ? double(digits) / exactPowersOfTen[-power] : double(digits) * exactPowersOfTen[power];
    return isNegative ? -magnitude : magnitude;
}

#else

char* writeExactly(char*, double)
{
    return nullptr;
}

std::optional<double> readExactly(QStringView)
{
    return {};
}

#endif

} // namespace

double parseNumber(QStringView text)
{
    const std::optional<double> number = readExactly(text);
    return number ? *number : text.toString().toDouble();
}

char* writeNumber(char* to, double value)
{
    if (char* const end = writeExactly(to, value))
        return end;
    if (value == 0) { // Qt gives minus zero its sign
        *to++ = '0';
        return to;
    }
    const QByteArray text = QByteArray::number(value, 'g', digitCount);
    return std::copy(text.begin(), text.end(), to);
}

char* writeNumber(char* to, int value)
{
    if (value < 0)
        *to++ = '-';
    char digits[longestNumber];
    char* const end = digits + longestNumber;
    char* first = end;
    quint32 rest = value < 0 ? 0 - quint32(value) : quint32(value);
    do {
        *--first = char('0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    return std::copy(first, end, to);
}

} // namespace Nereo::Io
