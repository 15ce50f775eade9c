#include "Numbers.h"

#include <charconv>
#include <cmath>

namespace Nereo::Tool {

NumberText::NumberText(double number)
    : text_(), size_(std::size_t(writeNumber(text_.data(), number) - text_.data()))
{
}

char* writeNumber(char* place, double number)
{
    // A NaN has a sign, of which nobody wants to know.
    const double withoutSign = std::isnan(number) ? std::abs(number) : number;
    return std::to_chars(place, place + NumberText::mostCharacters, withoutSign).ptr;
}

char* writeNumber(char* place, int number)
{
    return std::to_chars(place, place + NumberText::mostCharacters, number).ptr;
}

QString shortNumber(double number)
{
    return QString::number(number, 'g', 6);
}

std::optional<double> numberOf(const QString& text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

} // namespace Nereo::Tool
