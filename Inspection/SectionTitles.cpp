#include "SectionTitles.h"

#include <QCoreApplication>

#include <algorithm>

namespace Nereo::Inspection {

namespace {

constexpr QLatin1Char asterisk('*');

// Three asterisks, a blank, one that stood before them and another character.
constexpr int longestMark = 6;

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

SectionTitles::SectionTitles(const QStringList& names, int written, Listener& listener)
    : names_(names), written_(written), listener_(listener), isThere_(std::size_t(written), false)
{
}

void SectionTitles::add(int section)
{
    const int number = std::min(section, written_);
    const bool isInPlace = doubtful_ == 1 && number == last_ + 2 && isMissing(last_ + 1);
    tellDoubtful(isInPlace ? std::optional<int>(last_ + 1) : std::nullopt);
    setMeant(number);
    last_ = number;
    doubtful_ = 0;
}

void SectionTitles::addDoubtful(const std::optional<Discovery>& discovery)
{
    tellDoubtful({});
    ++doubtful_;
    held_ = discovery;
}

void SectionTitles::setMeant(int section)
{
    if (section < written_)
        isThere_[std::size_t(section)] = true;
}

std::optional<int> SectionTitles::next() const
{
    const bool isKnown = doubtful_ == 0 && last_ + 1 < written_;
    return isKnown ? std::optional<int>(last_ + 1) : std::nullopt;
}

void SectionTitles::tellDoubtful(std::optional<int> place)
{
    if (place)
        setMeant(*place);
    if (!held_)
        return;
    if (place) {
        held_->consequence =
            QCoreApplication::translate("Nereo::Inspection", "a writer puts the section \"%1\" here")
                .arg(names_[*place]);
    }
    listener_.finding(*held_);
    held_.reset();
}

} // namespace Nereo::Inspection
