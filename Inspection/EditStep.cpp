#include "EditStep.h"

#include <algorithm>
#include <cmath>

namespace Nereo::Inspection {

namespace {

bool isSame(const QVariant& left, const QVariant& right)
{
    if (left.userType() != QMetaType::Double)
        return left == right;
    const double first = left.toDouble();
    const double second = right.toDouble();
    return (first == second && std::signbit(first) == std::signbit(second))
        || (std::isnan(first) && std::isnan(second));
}

/// Compares the values one after the other.
class Comparison {
public:
    Comparison(const EditStep& step, const EditedFile& before, const EditedFile& after)
        : step_(step), before_(before), after_(after)
    {
    }

    bool isAsMeant()
    {
        for (const Item& item : before_.items()) {
            if (step_.removed.contains(item.address))
                continue;
            if (!passAdded() || isAtEnd() || !isAsMeant(item, after_.items()[at_]))
                return false;
            ++at_;
        }
        return passAdded() && isAtEnd() && added_ == step_.added.size();
    }

private:
    bool isAtEnd() const { return at_ == after_.items().size(); }

    /// False if a value was added in another way than it should be.
    bool passAdded()
    {
        for (; !isAtEnd(); ++at_, ++added_) {
            const Item& item = after_.items()[at_];
            const auto isOfItem = [&item](const AddedValue& value) { return value.address == item.address; };
            const auto added = std::find_if(step_.added.begin(), step_.added.end(), isOfItem);
            if (added == step_.added.end())
                return true;
            if (!isSame(item.value, added->text.value))
                return false;
        }
        return true;
    }

    bool isAsMeant(const Item& before, const Item& after) const
    {
        if (before.type != after.type || !isSameAddress(before.address, after.address))
            return false;
        const auto set = step_.set.find(&before);
        if (set != step_.set.end())
            return isSame(after.value, set->second.value);
        // Where a value that wasn't read to its end is mended, those behind it are read from their own words.
        return before.spelling == after.spelling
            && (isSame(before.value, after.value) || before_.hasErrors());
    }

    bool isSameAddress(const QString& before, const QString& after) const
    {
        if (before == after)
            return true;
        if (step_.isRenamed)
            return withoutMaterial(before_.kind(), before) == withoutMaterial(before_.kind(), after);
        return !step_.removed.isEmpty() && withoutPlaces(before) == withoutPlaces(after);
    }

    const EditStep& step_;
    const EditedFile& before_;
    const EditedFile& after_;
    std::size_t at_ = 0; ///< in the values after
    std::size_t added_ = 0;
};

} // namespace

bool isNameOfMaterial(FileKind kind, const QString& address)
{
    return withoutMaterial(kind, address) == QLatin1String("/name");
}

bool hasDone(const EditStep& step, const EditedFile& before, const EditedFile& after)
{
    return Comparison(step, before, after).isAsMeant();
}

} // namespace Nereo::Inspection
