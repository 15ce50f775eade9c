#include "NearestName.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <numeric>

namespace Nereo::Inspection {

namespace {

constexpr int longestName = 64;

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
            int distance = std::min(
                {(*last)[at] + 1, (*current)[at - 1] + 1, (*last)[at - 1] + (l[i - 1] == r[j - 1] ? 0 : 1)});
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

QString suggestion(const QString& word, const QStringList& names)
{
    const QString name = nearestName(word, names);
    if (name.isEmpty())
        return {};
    return QCoreApplication::translate("Nereo::Inspection", "did you mean \"%1\"?").arg(name);
}

} // namespace Nereo::Inspection
