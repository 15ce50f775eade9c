#include "NearestName.h"

#include <NereoInspection/Outline.h>

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <optional>

namespace Nereo::Inspection {

namespace {

constexpr int longestName = 64;
constexpr QLatin1Char partEnd('/');

/// How many letters have to be inserted, removed, replaced or swapped with their neighbour to make one word
/// of the other; any number that isn't less where it isn't less than a limit.
int editDistance(QStringView left, QStringView right, int limit)
{
    using Row = std::array<int, longestName + 1>; // a number for each beginning of the right word
    std::array<Row, 3> rows;
    Row* beforeLast = &rows[0];
    Row* last = &rows[1];
    Row* current = &rows[2];
    const QChar* const l = left.data();
    const QChar* const r = right.data();
    const int width = int(right.size());
    std::iota(last->begin(), last->begin() + width + 1, 0);
    for (int i = 1; i <= left.size(); ++i) {
        int least = (*current)[0] = i;
        for (int j = 1; j <= width; ++j) {
            const auto at = std::size_t(j);
            const int replaced = (*last)[at - 1] + (l[i - 1] == r[j - 1] ? 0 : 1);
            int distance = std::min({(*last)[at] + 1, (*current)[at - 1] + 1, replaced});
            if (i > 1 && j > 1 && l[i - 1] == r[j - 2] && l[i - 2] == r[j - 1])
                distance = std::min(distance, (*beforeLast)[at - 2] + 1);
            (*current)[at] = distance;
            least = std::min(least, distance);
        }
        if (least > limit) // a swap goes back by two rows, and costs one
            return limit;
        std::swap(beforeLast, last);
        std::swap(last, current);
    }
    return (*last)[std::size_t(width)];
}

/// How far a name is from a word; none where nobody would have meant it.
std::optional<int> distanceOfNear(QStringView word, QStringView name)
{
    if (word == name)
        return 0;
    const int limit = std::max(1, int(word.size()) / 3) + 1;
    if (word.size() > longestName || name.size() > longestName
        || std::abs(name.size() - word.size()) >= limit)
        return {};
    const int distance = editDistance(word, name, limit);
    return distance < limit ? std::optional(distance) : std::nullopt;
}

/// The next part of an address, which is taken off it.
QStringView takePart(QStringView& address)
{
    const qsizetype end = std::find(address.begin(), address.end(), partEnd) - address.begin();
    const QStringView part = address.left(end);
    address = address.mid(std::min(end + 1, address.size()));
    return part;
}

/// The same of addresses: each part has to be near the one in its place.
std::optional<int> distanceOfNearAddress(QStringView address, QStringView known)
{
    if (std::count(address.begin(), address.end(), partEnd)
        != std::count(known.begin(), known.end(), partEnd))
        return {};
    int sum = 0;
    do {
        const std::optional<int> distance = distanceOfNear(takePart(address), takePart(known));
        if (!distance)
            return {};
        sum += *distance;
    } while (!address.isEmpty() || !known.isEmpty());
    return sum;
}

/// Whether an address is the beginning or the end of another one, in whole parts.
bool isEndOf(QStringView address, QStringView known)
{
    const auto more = known.size() - address.size();
    return more > 0 && !address.isEmpty()
        && ((known[address.size()] == partEnd && known.startsWith(address))
            || (known[more - 1] == partEnd && known.endsWith(address)));
}

} // namespace

QString nearestName(const QString& word, const QStringList& names)
{
    if (word.size() > longestName)
        return {};
    const QString folded = word.toCaseFolded();
    QString nearest;
    int least = std::max(1, word.size() / 3) + 1;
    for (const QString& name : names) {
        if (name.size() > longestName || std::abs(name.size() - word.size()) >= least)
            continue;
        const int distance = editDistance(folded, name.toCaseFolded(), least);
        if (distance < least) {
            least = distance;
            nearest = name;
        }
    }
    return nearest;
}

QString nearestAddress(const QString& address, const QStringList& known)
{
    constexpr int distanceOfEnd = 1; // as far as a letter
    const QString folded = address.toCaseFolded();
    QString nearest;
    int least = std::numeric_limits<int>::max();
    for (const QString& name : known) {
        if (name == address)
            continue;
        const QString foldedName = name.toCaseFolded();
        const std::optional<int> distance =
            isEndOf(folded, foldedName) ? distanceOfEnd : distanceOfNearAddress(folded, foldedName);
        if (distance && *distance < least) {
            least = *distance;
            nearest = name;
        }
    }
    return nearest;
}

QString suggestion(const QString& word, const QStringList& names)
{
    const QString name = nearestName(word, names);
    if (name.isEmpty())
        return {};
    return QCoreApplication::translate("Nereo::Inspection", "did you mean \"%1\"?").arg(name);
}

} // namespace Nereo::Inspection
