#include "support/Assertions.h"

#include <NereoFileIO/MaterialProperty.h>

#include <gmock/gmock.h>

#include <limits>
#include <type_traits>

namespace Nereo::Io {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

MaterialProperty curve()
{
    MaterialProperty property("viscosity");
    property.setVariationType("piecewise_linear");
    property.setValue(2.5);
    property.setIndependentVariable(5);
    property.addPoint(0.0, 1.5);
    property.addPoint(Point(100.0, 2.25));
    return property;
}

void expectCurve(const MaterialProperty& property)
{
    EXPECT_EQ(property.type(), "viscosity");
    EXPECT_EQ(property.variationType(), "piecewise_linear");
    EXPECT_EQ(property.value(), 2.5);
    EXPECT_EQ(property.independentVariable(), 5);
    ASSERT_EQ(property.pointCount(), 2);
    EXPECT_EQ(property.point(0), Point(0.0, 1.5));
    EXPECT_EQ(property.point(1), Point(100.0, 2.25));
}

TEST(MaterialProperty, StartsAsAConstantZero)
{
    for (const auto& [property, type] : {
             std::pair(MaterialProperty(), ""), {MaterialProperty("density"), "density"}
    }) {
        EXPECT_EQ(property.type(), type);
        EXPECT_EQ(property.variationType(), "constant");
        EXPECT_EQ(property.value(), 0.0);
        EXPECT_EQ(property.pointCount(), 0);
        EXPECT_EQ(property.independentVariable(), 361);
    }
    static_assert(!std::is_convertible_v<std::string, MaterialProperty>);
}

TEST(MaterialProperty, KeepsWhatItIsGiven)
{
    expectCurve(curve());
}

TEST(MaterialProperty, KeepsNamesUncheckedInUtf8)
{
    for (const char* name : {"", "no such name", " density ", "Dichte größer null"}) {
        MaterialProperty property {std::string(name)};
        EXPECT_EQ(property.type(), name);
        property.setVariationType(name);
        EXPECT_EQ(property.variationType(), name);
    }
}

TEST(MaterialProperty, HasTheCodeOfItsType)
{
    EXPECT_EQ(MaterialProperty("density").typeCode(), 25);
    EXPECT_EQ(MaterialProperty("conductivity").typeCode(), 27);
    EXPECT_EQ(MaterialProperty("x_conductivity").typeCode(), 27);
    EXPECT_EQ(MaterialProperty("ratio_specific_heats").typeCode(), 250);
    EXPECT_EQ(MaterialProperty("flow_rate").typeCode(), 361);
}

TEST(MaterialProperty, HasTheCodeOfItsVariation)
{
    const struct {
        const char* variationType;
        int code;
    } cases[] = {
        {"constant",          1 },
        {"equation_of_state", 2 },
        {"EOS",               2 }, // as older files have it
        {"piecewise_linear",  15},
        {"piece_linear",      15},
        {"fan_curve",         27},
        {"Dehumidification",  45},
        {"eos",               -1}, // no name of a variation
        {"dehumidification",  -1},
        {"",                  -1},
    };
    MaterialProperty property("density");
    EXPECT_EQ(property.variationCode(), 1);
    for (const auto& [variationType, code] : cases) {
        property.setVariationType(variationType);
        EXPECT_EQ(property.variationCode(), code) << variationType;
        EXPECT_EQ(property.variationType(), variationType);
    }
}

TEST(MaterialProperty, AddsPointsAtTheEndAndRemovesThem)
{
    MaterialProperty property;
    for (const double x : {3.0, 1.0, 2.0, 1.0})
        property.addPoint(x, -x);
    ASSERT_EQ(property.pointCount(), 4);
    EXPECT_EQ(property.point(0), Point(3.0, -3.0));
    EXPECT_EQ(property.point(3), Point(1.0, -1.0));

    property.removePoint(1);
    ASSERT_EQ(property.pointCount(), 3);
    EXPECT_EQ(property.point(0), Point(3.0, -3.0));
    EXPECT_EQ(property.point(1), Point(2.0, -2.0));
    EXPECT_EQ(property.point(2), Point(1.0, -1.0));
    property.removePoint(2);
    property.removePoint(0);
    ASSERT_EQ(property.pointCount(), 1);
    EXPECT_EQ(property.point(0), Point(2.0, -2.0));

    property.clearPoints();
    EXPECT_EQ(property.pointCount(), 0);
    property.clearPoints();
    property.addPoint(5.0, 6.0);
    EXPECT_EQ(property.point(0), Point(5.0, 6.0));
}

TEST(MaterialProperty, AddsAPointOfItsOwn)
{
    MaterialProperty property;
    property.addPoint(1.0, 2.0);
    for (int i = 0; i < 100; ++i)
        property.addPoint(property.point(0));
    EXPECT_EQ(property.pointCount(), 101);
    EXPECT_EQ(property.point(100), Point(1.0, 2.0));
}

TEST(MaterialProperty, GivesItsPointsForChanging)
{
    MaterialProperty property = curve();
    property.point(1).setY(7.0);
    property.point(0) = Point(-1.0, -2.0);
    EXPECT_EQ(property.point(0), Point(-1.0, -2.0));
    EXPECT_EQ(property.point(1), Point(100.0, 7.0));
    static_assert(std::is_same_v<decltype(property.point(0)), Point&>);
    static_assert(std::is_same_v<decltype(std::as_const(property).point(0)), const Point&>);
}

TEST(MaterialProperty, IsEqualWhenEverythingIs)
{
    const MaterialProperty original = curve();
    EXPECT_TRUE(original == curve());
    EXPECT_FALSE(original != curve());

    const std::pair<const char*, void (*)(MaterialProperty&)> changes[] = {
        {"variation",            [](MaterialProperty& p) { p.setVariationType("piece_linear"); }}, // of the same meaning
        {"value",                [](MaterialProperty& p) { p.setValue(2.6); }                   },
        {"independent variable", [](MaterialProperty& p) { p.setIndependentVariable(6); }       },
        {"one y",                [](MaterialProperty& p) { p.point(1).setY(2.26); }             },
        {"one x",                [](MaterialProperty& p) { p.point(0).setX(1.0); }              },
        {"one point more",       [](MaterialProperty& p) { p.addPoint(200.0, 3.0); }            },
        {"one point less",       [](MaterialProperty& p) { p.removePoint(1); }                  },
        {"order of points",      [](MaterialProperty& p) { std::swap(p.point(0), p.point(1)); } },
    };
    for (const auto& [what, change] : changes) {
        MaterialProperty changed = original;
        EXPECT_TRUE(changed == original);
        change(changed);
        EXPECT_FALSE(changed == original) << what;
        EXPECT_TRUE(changed != original) << what;
    }
    EXPECT_NE(MaterialProperty("density"), MaterialProperty("viscosity"));
    EXPECT_NE(MaterialProperty("conductivity"),
              MaterialProperty("x_conductivity")); // though they share a code
}

TEST(MaterialProperty, ComparesNumbersExactly)
{
    MaterialProperty sum("density");
    MaterialProperty third("density");
    sum.setValue(0.1 + 0.2);
    third.setValue(0.3);
    EXPECT_NE(sum, third);
}

TEST(MaterialProperty, EqualsNothingWithANaN)
{
    MaterialProperty value("density");
    value.setValue(nan);
    EXPECT_NE(value, MaterialProperty(value));
    EXPECT_FALSE(value == value);

    MaterialProperty point("density");
    point.addPoint(0.0, nan);
    EXPECT_NE(point, MaterialProperty(point));
    EXPECT_FALSE(point == point);
}

TEST(MaterialProperty, IsCopiedWhole)
{
    const MaterialProperty original = curve();
    MaterialProperty copy(original);
    expectCurve(copy);

    MaterialProperty assigned("density");
    assigned.addPoint(7.0, 7.0);
    EXPECT_EQ(&(assigned = original), &assigned);
    expectCurve(assigned);

    copy.point(0).setX(9.0);
    assigned.clearPoints();
    expectCurve(original);
}

TEST(MaterialProperty, IsUnchangedByAssignmentToItself)
{
    MaterialProperty property = curve();
    const MaterialProperty& itself = property;
    property = itself;
    expectCurve(property);
}

TEST(MaterialProperty, KeepsReferencesToTheObjectTheyWereTakenFrom)
{
    MaterialProperty property = curve();
    Point& point = property.point(0);
    const MaterialProperty copy(property);
    MaterialProperty assigned;
    assigned = property;
    point.setY(9.0);
    EXPECT_EQ(property.point(0).y(), 9.0);
    expectCurve(copy);
    expectCurve(assigned);
}

TEST(MaterialPropertyDeathTest, StopsAtATypeThatIsNone)
{
    for (const char* type : {"", "Density", "constant"})
        EXPECT_INDEX_ASSERTION(MaterialProperty {std::string(type)}.typeCode(), "QVector<T>::operator[]",
                               "FileIO/PropertyType");
    EXPECT_INDEX_ASSERTION(MaterialProperty().typeCode(), "QVector<T>::operator[]", "FileIO/PropertyType");
}

TEST(MaterialPropertyDeathTest, StopsAtAPointThatIsNotThere)
{
    MaterialProperty property = curve();
    const MaterialProperty& constant = property;
    for (const int index : {-1, 2, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_INDEX_ASSERTION(property.point(index), "QList<T>::operator[]", "FileIO/MaterialProperty");
        EXPECT_INDEX_ASSERTION(constant.point(index), "QList<T>::operator[]", "FileIO/MaterialProperty");
        EXPECT_INDEX_ASSERTION(property.removePoint(index), "QList<T>::removeAt", "FileIO/MaterialProperty");
    }
    EXPECT_INDEX_ASSERTION(MaterialProperty().point(0), "QList<T>::operator[]", "FileIO/MaterialProperty");
    EXPECT_INDEX_ASSERTION(MaterialProperty().removePoint(0), "QList<T>::removeAt",
                           "FileIO/MaterialProperty");
}

} // namespace
} // namespace Nereo::Io
