#pragma once

#include <NereoFileIO/Export.h>

#include <QLatin1String>
#include <QStringView>

namespace Nereo::Io {

/// Room for the text of any number.
inline constexpr int longestNumber = sizeof "-2.22507e-308" - 1;

/// Writes a number in the notation of the text files and gives the end of what it wrote, which is ASCII
/// without a NUL. There must be room for longestNumber characters.
///
/// Every byte is as QString::number(value, 'g', 6) and a text stream with its default settings write it: six
/// significant digits of which exact halves round away from zero, no trailing zeros, zero without a sign, and
/// "inf", "-inf" and "nan". This takes a small part of their time, and no memory.
NEREOFILEIO_EXPORT char* writeNumber(char* to, double value);

NEREOFILEIO_EXPORT char* writeNumber(char* to, int value);

/// The number of a text, as QString::toDouble() gives it to the bit: the nearest double, or 0 if the text is
/// no number of the C locale. Plain decimal numbers, which are nearly all that files hold, take a small part
/// of its time.
NEREOFILEIO_EXPORT double parseNumber(QStringView text);

/// The text of a number, for what takes a QLatin1String: `out << NumberText(0.5)`.
class NumberText {
public:
    template <class Number>
    explicit NumberText(Number value) : end_(writeNumber(text_, value))
    {
    }
    NumberText(const NumberText&) = delete; // it points into itself
    NumberText& operator=(const NumberText&) = delete;

    operator QLatin1String() const { return QLatin1String(text_, int(end_ - text_)); }

private:
    char text_[longestNumber];
    char* end_;
};

} // namespace Nereo::Io
