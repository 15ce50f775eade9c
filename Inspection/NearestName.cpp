#include "NearestName.h"

#include <QCoreApplication>

#include <algorithm>
#include <vector>

namespace Nereo::Inspection {

namespace {

constexpr int longestName = 64;

/// How many letters have to be inserted, removed, replaced or swapped with their neighbour to make one word
/// of the other.
int editDistance(const QString& left, const QString& right)
{
    const auto width = std::size_t(right.size()) + 1;
    std::vector<int> beforeLast(width);
    std::vector<int> last(width);
    std::vector<int> current(width);
    for (std::size_t j = 0; j < width; ++j)
        last[j] = int(j);
    for (int i = 1; i <= left.size(); ++i) {
        current[0] = i;
        for (int j = 1; j <= right.size(); ++j) {
            const auto at = std::size_t(j);
            const bool isSame = left[i - 1] == right[j - 1];
            current[at] = std::min({last[at] + 1, current[at - 1] + 1, last[at - 1] + !isSame});
            const bool isSwapped =
                i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1];
            if (isSwapped)
                current[at] = std::min(current[at], beforeLast[at - 2] + 1);
        }
        beforeLast.swap(last);
        last.swap(current);
    }
    return last.back();
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
        if (std::abs(name.size() - word.size()) >= least)
            continue;
        const int distance = editDistance(folded, name.toCaseFolded());
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
