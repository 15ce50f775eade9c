#include <NereoFileIO/Point.h>

#include <gtest/gtest.h>

#include <QHash>
#include <QSet>

#include <limits>

namespace Nereo::Io {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(Point, StartsAtTheOrigin)
{
    const Point point;
    EXPECT_EQ(point.x(), 0.0);
    EXPECT_EQ(point.y(), 0.0);
}

TEST(Point, HoldsItsCoordinates)
{
    Point point(1.5, -2.5);
    EXPECT_EQ(point.x(), 1.5);
    EXPECT_EQ(point.y(), -2.5);
    point.setX(3.5);
    EXPECT_EQ(point, Point(3.5, -2.5));
    point.setY(4.5);
    EXPECT_EQ(point, Point(3.5, 4.5));
}

TEST(Point, IsComparedExactly)
{
    const struct {
        Point left;
        Point right;
        bool isEqual;
    } cases[] = {
        {{1.0, 2.0},       {1.0, 2.0},  true },
        {{1.0, 2.0},       {1.0, 2.5},  false},
        {{1.0, 2.0},       {1.5, 2.0},  false},
        {{1.0, 2.0},       {2.0, 1.0},  false},
        {{0.1 + 0.2, 0.0}, {0.3, 0.0},  false},
        {{0.0, 0.0},       {-0.0, 0.0}, true },
        {{nan, 0.0},       {nan, 0.0},  false},
        {{0.0, nan},       {0.0, nan},  false},
    };
    for (const auto& [left, right, isEqual] : cases) {
        EXPECT_EQ(left == right, isEqual);
        EXPECT_EQ(left != right, !isEqual);
    }
}

TEST(Point, HashesBothCoordinates)
{
    const auto rotated = [](uint hash) { return (hash << 16) | (hash >> 16); };
    for (const auto& [x, y] : {
             std::pair(0.0, 0.0), {1.0,   2.0  },
               {2.0,   1.0  },
               {-3.25, 1e300},
               {1e-9,  7.0  }
    }) {
        const uint expected = ::qHash(y, 0) ^ rotated(::qHash(x, 0));
        EXPECT_EQ(qHash(Point(x, y)), expected);
        EXPECT_EQ(Nereo::Io::qHash(Point(x, y)), expected);
    }
    EXPECT_NE(qHash(Point(1.0, 2.0)), qHash(Point(2.0, 1.0)));
    EXPECT_EQ(qHash(Point(0.0, -0.0)), qHash(Point(-0.0, 0.0))); // as they are equal
}

TEST(Point, IsAKeyOfHashedContainers)
{
    const QSet<Point> points {
        {1.0, 2.0},
        {2.0, 1.0},
        {1.0, 2.0}
    };
    EXPECT_EQ(points.size(), 2);
    EXPECT_TRUE(points.contains({2.0, 1.0}));
    EXPECT_FALSE(points.contains({2.0, 2.0}));

    QHash<Point, int> numbers;
    numbers[{1.0, 2.0}] = 7;
    EXPECT_EQ(numbers.value(Point(1.0, 2.0)), 7);
}

} // namespace
} // namespace Nereo::Io
