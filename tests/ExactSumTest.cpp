#include "support/Bits.h"

#include "FileIO/ExactSum.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace Nereo::Io {
namespace {

constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

ExactSum sumOf(const std::vector<double>& values)
{
    ExactSum sum;
    for (const double value : values)
        sum.add(value);
    return sum;
}

TEST(ExactSum, LosesNothing)
{
    const struct {
        std::vector<double> values;
        double sum;
    } cases[] = {
        {{},                             0.0         },
        {{0.0, -0.0},                    0.0         },
        {{1.5, -0.25},                   1.25        },
        {{1e300, 1.0, -1e300},           1.0         },
        {{largest, smallest, -largest},  smallest    },
        {{-largest, -smallest, largest}, -smallest   },
        {{smallest, smallest, smallest}, 3 * smallest},
        {{largest, largest, -largest},   largest     },
        {{-1.0, 0x1p-80},                -1.0        },
        {{0.1, 0.2, -0.1, -0.2},         0.0         },
        {{-5.0},                         -5.0        },
    };
    for (const auto& [values, sum] : cases)
        EXPECT_EQ(sumOf(values).dividedBy(1), sum) << ::testing::PrintToString(values);
}

TEST(ExactSum, CarriesBeforeALimbIsFull)
{
    constexpr int count = 1 << 28; // the most additions that wait for a carry
    constexpr double value = 1.0 + 0x1p-52;
    ExactSum sum;
    for (int i = 0; i < count; ++i)
        sum.add(value);
    EXPECT_EQ(sum.dividedBy(count), value);
}

TEST(ExactSum, RoundsToTheNearestAndHalvesToEven)
{
    constexpr double half = 0x1p-53; // of the last bit of a number from 1 to 2
    const struct {
        std::vector<double> values;
        double sum;
    } cases[] = {
        {{1.0, half},              1.0            },
        {{1.0, half, smallest},    1.0 + 2 * half },
        {{1.0, half, -smallest},   1.0            },
        {{1.0 + 2 * half, half},   1.0 + 4 * half },
        {{-1.0, -half},            -1.0           },
        {{-1.0, -half, -smallest}, -1.0 - 2 * half},
        {{0x1p63, 0x1p10, 1.0},    0x1p63 + 0x1p11},
    };
    for (const auto& [values, sum] : cases)
        EXPECT_EQ(sumOf(values).dividedBy(1), sum) << ::testing::PrintToString(values);
}

TEST(ExactSum, IsDividedWithoutOverflow)
{
    EXPECT_EQ(sumOf({largest, largest}).dividedBy(2), largest);
    EXPECT_EQ(sumOf({-largest, -largest, -largest}).dividedBy(3), -largest);
    EXPECT_EQ(sumOf({1.0, 1.0, 0.0}).dividedBy(3), 2.0 / 3.0);
    EXPECT_EQ(sumOf({largest}).dividedBy(1, -1), largest / 2);
    EXPECT_EQ(sumOf({3.0}).dividedBy(2, 10), 1536.0);
}

TEST(ExactSum, EqualsASumOfIntegersInAnyOrder)
{
    std::mt19937_64 random(20261121);
    for (const int exponent : {-1074, -1000, -60, 0, 31, 900}) {
        std::vector<double> values;
        qint64 integers = 0;
        for (int i = 0; i < 2000; ++i) {
            const auto integer = qint64(random() >> 14) - (qint64(1) << 49); // 2,000 of them have 61 bits
            integers += integer;
            values.push_back(std::ldexp(double(integer), exponent));
        }
        const double expected = std::ldexp(double(integers), exponent);
        for (int order = 0; order < 3; ++order) {
            EXPECT_EQ(bitsOf(sumOf(values).dividedBy(1)), bitsOf(expected)) << exponent;
            std::shuffle(values.begin(), values.end(), random);
        }
    }
}

} // namespace
} // namespace Nereo::Io
