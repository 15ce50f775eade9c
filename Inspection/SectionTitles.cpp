#include "SectionTitles.h"

#include <algorithm>

namespace Nereo::Inspection {

namespace {

constexpr QLatin1Char asterisk('*');
constexpr int longestMark =
    6; // three asterisks, a blank, and one that stood before them and another character

} // namespace

bool isDamagedTitleOf(QLatin1String section, QStringView line)
{
    const auto markSize = line.size() - section.size();
    return markSize > 0 && markSize <= longestMark && line.endsWith(section)
        && mayBeDamagedTitle(line.left(markSize));
}

bool mayBeDamagedTitle(QStringView line)
{
    const QStringView mark = line.left(longestMark);
    return std::find(mark.begin(), mark.end(), asterisk) != mark.end();
}

std::optional<int> TitleOrder::add(std::optional<int> section)
{
    const int number = std::min(section.value_or(count_), count_);
    const bool isInPlace = doubtful_ == 1 && number == last_ + 2;
    const std::optional<int> place = isInPlace ? std::optional<int>(last_ + 1) : std::nullopt;
    last_ = number;
    doubtful_ = 0;
    return place;
}

} // namespace Nereo::Inspection
