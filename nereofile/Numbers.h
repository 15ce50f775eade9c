#pragma once

#include <QString>

#include <array>
#include <optional>
#include <string_view>

namespace Nereo::Tool {

/// A number in the fewest digits that read back as the same.
class NumberText {
public:
    explicit NumberText(double number);

    std::string_view view() const { return {text_.data(), size_}; }

    static constexpr std::size_t mostCharacters = 32;

private:
    std::array<char, mostCharacters> text_;
    std::size_t size_;
};

/// The same at a place that has room for mostCharacters; gives the end of it.
char* writeNumber(char* place, double number);
char* writeNumber(char* place, int number);

/// A number for people, in six digits.
QString shortNumber(double number);

/// The number that all of the text is; none where it is something else.
std::optional<double> numberOf(const QString& text);

} // namespace Nereo::Tool
