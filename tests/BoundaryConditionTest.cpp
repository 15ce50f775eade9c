#include "support/Assertions.h"

#include <NereoFileIO/BoundaryCondition.h>
#include <NereoFileIO/FieldVariable.h>

#include <gmock/gmock.h>

#include <QHash>
#include <QSet>
#include <QString>

#include <limits>
#include <type_traits>
#include <vector>

namespace Nereo::Io {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int least = std::numeric_limits<int>::min();
constexpr int most = std::numeric_limits<int>::max();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

BoundaryCondition conditionWith(int code, int entityId, int timeCurveId, double value,
                                const std::vector<double>& extraValues = {})
{
    BoundaryCondition condition(code);
    condition.setEntityId(entityId);
    condition.setTimeCurveId(timeCurveId);
    condition.setValue(value);
    for (const double extraValue : extraValues)
        condition.addExtraValue(extraValue);
    return condition;
}

std::vector<double> extraValues(const BoundaryCondition& condition)
{
    std::vector<double> values;
    for (int i = 0; i < condition.extraValueCount(); ++i)
        values.push_back(condition.extraValue(i));
    return values;
}

TEST(BoundaryCondition, StartsWithTheseDefaults)
{
    const BoundaryCondition condition(kSlipNode);
    EXPECT_EQ(condition.kCode(), 20);
    EXPECT_EQ(condition.entityId(), 0);
    EXPECT_EQ(condition.timeCurveId(), -1);
    EXPECT_EQ(condition.timeCurveFlag(), 0);
    EXPECT_EQ(condition.value(), 0.0);
    EXPECT_EQ(condition.extraValueCount(), 0);
}

TEST(BoundaryCondition, HasCodeZeroWithoutAnArgument)
{
    EXPECT_EQ(BoundaryCondition().kCode(), 0);
    EXPECT_EQ(BoundaryCondition(), BoundaryCondition(0));
    static_assert(!std::is_convertible_v<int, BoundaryCondition>);
}

TEST(BoundaryCondition, TakesAnyNumbers)
{
    const BoundaryCondition condition = conditionWith(least, most, least, -infinity, {infinity, -0.5});
    EXPECT_EQ(condition.kCode(), least);
    EXPECT_EQ(condition.entityId(), most);
    EXPECT_EQ(condition.timeCurveId(), least);
    EXPECT_EQ(condition.value(), -infinity);
    EXPECT_THAT(extraValues(condition), ElementsAre(infinity, -0.5));
}

TEST(BoundaryCondition, FlagsATimeCurveFromOneOnWithAllBits)
{
    const struct {
        int timeCurveId;
        int flag;
    } cases[] = {
        {-1,    0 },
        {1,     -1},
        {0,     0 },
        {2,     -1},
        {most,  -1},
        {least, 0 },
    };
    BoundaryCondition condition;
    for (const auto& [timeCurveId, flag] : cases) {
        condition.setTimeCurveId(timeCurveId);
        EXPECT_EQ(condition.timeCurveId(), timeCurveId);
        EXPECT_EQ(condition.timeCurveFlag(), flag) << timeCurveId;
    }
}

TEST(BoundaryCondition, KeepsExtraValuesInOrder)
{
    BoundaryCondition condition;
    for (const double value : {1.0, 2.0, 2.0, 3.0})
        condition.addExtraValue(value);
    EXPECT_EQ(condition.extraValueCount(), 4);
    EXPECT_THAT(extraValues(condition), ElementsAre(1.0, 2.0, 2.0, 3.0));

    condition.setExtraValue(1, 5.0);
    EXPECT_THAT(extraValues(condition), ElementsAre(1.0, 5.0, 2.0, 3.0));
    condition.removeExtraValue(0);
    EXPECT_THAT(extraValues(condition), ElementsAre(5.0, 2.0, 3.0));
    condition.removeExtraValue(2);
    EXPECT_THAT(extraValues(condition), ElementsAre(5.0, 2.0));
    condition.clearExtraValues();
    EXPECT_THAT(extraValues(condition), IsEmpty());
    condition.addExtraValue(7.0);
    EXPECT_THAT(extraValues(condition), ElementsAre(7.0));
}

TEST(BoundaryCondition, IsEmptyWithoutItsOnlyExtraValue)
{
    BoundaryCondition condition = conditionWith(kU, 1, -1, 0.0, {4.0});
    condition.removeExtraValue(0);
    EXPECT_EQ(condition.extraValueCount(), 0);
    EXPECT_EQ(condition, conditionWith(kU, 1, -1, 0.0));
}

TEST(BoundaryCondition, StopsAtAnIndexWithoutAnExtraValue)
{
    for (const int count : {0, 2}) {
        BoundaryCondition condition;
        for (int i = 0; i < count; ++i)
            condition.addExtraValue(1.0);
        for (const int index : {-1, count, least, most}) {
            const auto message = testing::Message() << index << " of " << count;
            EXPECT_INDEX_ASSERTION(condition.extraValue(index), "QList<T>::operator[]",
                                   "FileIO/BoundaryCondition")
                << message;
            EXPECT_INDEX_ASSERTION(condition.setExtraValue(index, 1.0), "QList<T>::operator[]",
                                   "FileIO/BoundaryCondition")
                << message;
            EXPECT_INDEX_ASSERTION(condition.removeExtraValue(index), "QList<T>::removeAt",
                                   "FileIO/BoundaryCondition")
                << message;
        }
    }
}

TEST(BoundaryCondition, CopiesEverythingAndThenStandsAlone)
{
    const BoundaryCondition original = conditionWith(kT, 7, 2, 1.5, {1.0, 2.0});
    BoundaryCondition assigned(kP);
    assigned.addExtraValue(9.0);
    assigned = original;
    for (BoundaryCondition copy : {original, assigned}) {
        EXPECT_EQ(copy.kCode(), 5);
        EXPECT_EQ(copy.entityId(), 7);
        EXPECT_EQ(copy.timeCurveId(), 2);
        EXPECT_EQ(copy.value(), 1.5);
        EXPECT_THAT(extraValues(copy), ElementsAre(1.0, 2.0));

        copy.setEntityId(8);
        copy.setTimeCurveId(3);
        copy.setValue(2.5);
        copy.setExtraValue(0, 5.0);
        copy.removeExtraValue(1);
        copy.addExtraValue(6.0);
        EXPECT_THAT(extraValues(copy), ElementsAre(5.0, 6.0));
        copy.clearExtraValues();
        EXPECT_EQ(original, conditionWith(kT, 7, 2, 1.5, {1.0, 2.0}));
    }
}

TEST(BoundaryCondition, IsACopyThatItsOriginalDoesNotChange)
{
    BoundaryCondition original = conditionWith(kT, 7, 2, 1.5, {1.0, 2.0});
    const BoundaryCondition copy = original;
    original.setExtraValue(0, 5.0);
    original.addExtraValue(6.0);
    original.setValue(0.0);
    EXPECT_EQ(copy, conditionWith(kT, 7, 2, 1.5, {1.0, 2.0}));
}

TEST(BoundaryCondition, SurvivesAssignmentToItself)
{
    BoundaryCondition condition = conditionWith(kT, 7, 2, 1.5, {1.0, 2.0});
    const BoundaryCondition& itself = condition;
    condition = itself;
    EXPECT_EQ(condition, conditionWith(kT, 7, 2, 1.5, {1.0, 2.0}));
}

TEST(BoundaryCondition, DiffersInEachOfItsParts)
{
    const BoundaryCondition condition = conditionWith(1, 2, 3, 4.0, {5.0, 6.0});
    EXPECT_TRUE(condition == conditionWith(1, 2, 3, 4.0, {5.0, 6.0}));
    EXPECT_FALSE(condition != conditionWith(1, 2, 3, 4.0, {5.0, 6.0}));

    const BoundaryCondition others[] = {
        conditionWith(9, 2, 3, 4.0, {5.0, 6.0}),       conditionWith(1, 9, 3, 4.0, {5.0, 6.0}),
        conditionWith(1, 2, 9, 4.0, {5.0, 6.0}),       conditionWith(1, 2, 3, 9.0, {5.0, 6.0}),
        conditionWith(1, 2, 3, 4.0, {9.0, 6.0}),       conditionWith(1, 2, 3, 4.0, {5.0, 9.0}),
        conditionWith(1, 2, 3, 4.0, {6.0, 5.0}),       conditionWith(1, 2, 3, 4.0, {5.0}),
        conditionWith(1, 2, 3, 4.0, {5.0, 6.0, 0.0}),  conditionWith(1, 2, 3, 4.0, {}),
        conditionWith(1, 2, 3, 4.0000001, {5.0, 6.0}), // all digits count
    };
    for (const BoundaryCondition& other : others) {
        const auto index = &other - others;
        EXPECT_FALSE(condition == other) << index;
        EXPECT_TRUE(condition != other) << index;
        EXPECT_FALSE(other == condition) << index;
    }
}

TEST(BoundaryCondition, EqualsAnotherWithTheSameCodeUntilOneIsChanged)
{
    BoundaryCondition first(kT);
    const BoundaryCondition second(kT);
    EXPECT_EQ(first, second);
    first.addExtraValue(1.0);
    EXPECT_NE(first, second);

    BoundaryCondition copy = first;
    EXPECT_EQ(copy, first);
    copy.setExtraValue(0, 2.0);
    EXPECT_NE(copy, first);
    copy.setExtraValue(0, 1.0);
    EXPECT_EQ(copy, first);
}

TEST(BoundaryCondition, EqualsWithEitherZero)
{
    EXPECT_EQ(conditionWith(1, 2, 3, 0.0, {0.0}), conditionWith(1, 2, 3, -0.0, {-0.0}));
}

TEST(BoundaryCondition, EqualsNothingWhileItsValueIsNaN)
{
    const BoundaryCondition condition = conditionWith(1, 2, 3, notANumber);
    const BoundaryCondition copy = condition;
    EXPECT_FALSE(condition == condition);
    EXPECT_TRUE(condition != condition);
    EXPECT_NE(condition, copy);
}

TEST(BoundaryCondition, EqualsWithNaNAmongTheExtraValuesOnlyWhileTheListIsShared)
{
    const BoundaryCondition condition = conditionWith(1, 2, 3, 4.0, {5.0, notANumber});
    BoundaryCondition copy = condition;
    EXPECT_TRUE(condition == condition);
    EXPECT_TRUE(condition == copy);
    EXPECT_NE(condition, conditionWith(1, 2, 3, 4.0, {5.0, notANumber}));

    copy.setExtraValue(0, 5.0); // the same value, in a list of its own
    EXPECT_FALSE(condition == copy);
}

TEST(BoundaryCondition, HashesItsNumbersWrittenOneAfterTheOther)
{
    const struct {
        int code;
        int entityId;
        int timeCurveId;
        double value;
        const char* text;
    } cases[] = {
        {0,     0,    -1, 0.0,        "00-10"                  },
        {1,     23,   -1, 0.0,        "123-10"                 },
        {12,    3,    -1, 0.0,        "123-10"                 },
        {-1,    -2,   3,  -4.5,       "-1-23-4.5"              },
        {least, most, 0,  1.0,        "-2147483648214748364701"},
        {1,     2,    3,  1.0 / 3,    "1230.333333"            },
        {1,     2,    3,  123456.5,   "123123457"              }, // six digits, rounded
        {1,     2,    3,  1234567.0,  "1231.23457e+06"         },
        {1,     2,    3,  1e20,       "1231e+20"               },
        {1,     2,    3,  0.0000125,  "1231.25e-05"            },
        {1,     2,    3,  -0.0,       "1230"                   },
        {1,     2,    3,  infinity,   "123inf"                 },
        {1,     2,    3,  -infinity,  "123-inf"                },
        {1,     2,    3,  notANumber, "123nan"                 },
    };
    for (const auto& [code, entityId, timeCurveId, value, text] : cases) {
        const BoundaryCondition condition = conditionWith(code, entityId, timeCurveId, value);
        EXPECT_EQ(qHash(condition), ::qHash(QString(text), 0)) << text;
    }
}

TEST(BoundaryCondition, HashesTheSameInEveryProcess)
{
    EXPECT_EQ(qHash(conditionWith(1, 23, -1, 0.0)), 1450568602u);
}

TEST(BoundaryCondition, HashesEqualConditionsAlike)
{
    EXPECT_EQ(qHash(conditionWith(1, 2, 3, 0.0)), qHash(conditionWith(1, 2, 3, -0.0)));
    EXPECT_EQ(qHash(conditionWith(1, 2, 3, 4.0, {1.0})), qHash(conditionWith(1, 2, 3, 4.0, {1.0})));
}

TEST(BoundaryCondition, LeavesExtraValuesOutOfItsHash)
{
    EXPECT_EQ(qHash(conditionWith(1, 2, 3, 4.0, {5.0, notANumber})), qHash(conditionWith(1, 2, 3, 4.0)));
}

TEST(BoundaryCondition, IsAKeyOfHashedContainers)
{
    const BoundaryCondition first = conditionWith(1, 23, -1, 0.0);
    const BoundaryCondition second = conditionWith(12, 3, -1, 0.0); // with the same hash
    const BoundaryCondition third = conditionWith(1, 23, -1, 0.0, {1.0});
    const QSet<BoundaryCondition> set {first, second, third, first};
    EXPECT_EQ(set.size(), 3);
    EXPECT_TRUE(set.contains(conditionWith(12, 3, -1, -0.0)));
    EXPECT_FALSE(set.contains(conditionWith(12, 3, -1, 1.0)));

    QHash<BoundaryCondition, int> numbers;
    numbers[first] = 1;
    numbers[second] = 2;
    numbers[third] = 3;
    EXPECT_EQ(numbers.value(first), 1);
    EXPECT_EQ(numbers.value(second), 2);
    EXPECT_EQ(numbers.value(third), 3);
}

} // namespace
} // namespace Nereo::Io
