#include <NereoFileIO/MaterialType.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace Clt {
namespace {

const struct {
    MaterialType type;
    const char* name;
    const char* displayName;
} rows[] = {
  // constant, name in files, name on screen; the index is the place in this table
    {MaterialType::Fluid,                "fluid",                  "Fluid"                  },
    {MaterialType::Solid,                "solid",                  "Solid"                  },
    {MaterialType::Resistance,           "resistance",             "Resistance"             },
    {MaterialType::InternalFan,          "internal_fan",           "Internal Fan/Pump"      },
    {MaterialType::CheckValve,           "check_valve",            "Check Valve"            },
    {MaterialType::RotatingDevice,       "rotating_device",        "Rotating Region"        },
    {MaterialType::CentrifugalFan,       "centrifugal_fan",        "Centrifugal Pump/Blower"},
    {MaterialType::Ecomp2resist,         "ecomp_2resist",          "Compact Thermal Model"  },
    {MaterialType::PrintedCircuitBoards, "printed_circuit_boards", "Printed Circuit Boards" },
    {MaterialType::EcompTec,             "ecomp_tec",              "Thermoelectric Comp."   },
    {MaterialType::ContactResistance,    "contact_resistance",     "Contact Resistance"     },
    {MaterialType::LedDevice,            "led_device",             "LED Device"             },
    {MaterialType::Unassigned,           "unassigned",             "Unassigned"             },
    {MaterialType::HeatExchanger,        "heat_exchanger",         "Heat Exchanger"         },
    {MaterialType::HeatSink,             "heat_sink",              "Heat Sink"              },
};

TEST(MaterialType, HasTheseRowsInThisOrder)
{
    EXPECT_EQ(std::size(rows), 15u);
    int index = 0;
    for (const auto& [type, name, displayName] : rows) {
        EXPECT_EQ(type.index(), index++) << name;
        EXPECT_TRUE(type.isValid()) << name;
        EXPECT_EQ(type.name(), name);
        EXPECT_EQ(type.displayName(), displayName);
    }
}

TEST(MaterialType, HasNoFurtherRows)
{
    int count = 0;
#define MATERIAL_TYPE(object, name, displayName) ++count;
#include <NereoFileIO/MaterialType.def>
    EXPECT_EQ(count, 15);
    EXPECT_EQ(MaterialType::displayNames().size(), 15);
}

TEST(MaterialType, IsFoundByItsName)
{
    for (const auto& [type, name, displayName] : rows)
        EXPECT_EQ(MaterialType::fromName(name), type) << name;
    EXPECT_EQ(MaterialType::fromName("fluid").index(), 0);
    EXPECT_EQ(MaterialType::fromName("heat_sink").index(), 14);
}

TEST(MaterialType, IsFoundByItsDisplayName)
{
    for (const auto& [type, name, displayName] : rows)
        EXPECT_EQ(MaterialType::fromDisplayName(displayName), type) << displayName;
}

TEST(MaterialType, IsInvalidForOtherNames)
{
    for (const char* name : {"", "FLUID", "fluid ", " fluid", "internal fan", "Internal_fan", "fan", "gas"}) {
        EXPECT_EQ(MaterialType::fromName(name).index(), -1) << name;
        EXPECT_EQ(MaterialType::fromDisplayName(name).index(), -1) << name;
    }
    EXPECT_FALSE(MaterialType::fromName("Fluid").isValid());
    EXPECT_FALSE(MaterialType::fromName(QString()).isValid());
    EXPECT_FALSE(MaterialType::fromDisplayName("fluid").isValid());
    EXPECT_FALSE(MaterialType::fromDisplayName("Internal fan/pump").isValid());
}

TEST(MaterialType, ListsItsDisplayNamesInOrder)
{
    const QStringList displayNames = MaterialType::displayNames();
    ASSERT_EQ(displayNames.size(), int(std::size(rows)));
    for (const auto& [type, name, displayName] : rows)
        EXPECT_EQ(displayNames[type.index()], displayName);
}

TEST(MaterialType, IsMadeFromAnyIndex)
{
    EXPECT_EQ(MaterialType(3), MaterialType::InternalFan);
    EXPECT_EQ(MaterialType(3).name(), "internal_fan");
    EXPECT_EQ(MaterialType(-1), MaterialType());
    EXPECT_FALSE(MaterialType(-1).isValid());
    for (const int outside : {-2, 15, 1000}) {
        EXPECT_EQ(MaterialType(outside).index(), outside);
        EXPECT_TRUE(MaterialType(outside).isValid());
    }
    static_assert(!std::is_convertible_v<int, MaterialType>);
}

TEST(MaterialType, IsEmptyOutsideTheTable)
{
    for (const int outside : {-2, -1, 15}) {
        EXPECT_EQ(MaterialType(outside).name(), "");
        EXPECT_EQ(MaterialType(outside).displayName(), "");
        EXPECT_FALSE(MaterialType(outside).isFlowComponent());
    }
}

TEST(MaterialType, IsComparedByItsIndex)
{
    EXPECT_TRUE(MaterialType::Solid == MaterialType(1));
    EXPECT_FALSE(MaterialType::Solid != MaterialType(1));
    EXPECT_TRUE(MaterialType::Solid != MaterialType::Fluid);
    EXPECT_FALSE(MaterialType::Solid == MaterialType::Fluid);
    MaterialType type;
    EXPECT_EQ(type.index(), -1);
    type = MaterialType::Solid;
    const MaterialType copy(type);
    EXPECT_EQ(copy, MaterialType::Solid);
    EXPECT_EQ(MaterialType(-1), MaterialType());
    EXPECT_NE(MaterialType(-2), MaterialType());
}

TEST(MaterialType, TellsWhatIsPartOfTheFlow)
{
    const struct {
        const char* name;
        bool isFlowComponent;
    } cases[] = {
        {"fluid",                  true },
        {"solid",                  false},
        {"resistance",             true },
        {"internal_fan",           true },
        {"check_valve",            true },
        {"rotating_device",        true },
        {"centrifugal_fan",        true },
        {"ecomp_2resist",          false},
        {"printed_circuit_boards", false},
        {"ecomp_tec",              false},
        {"contact_resistance",     true },
        {"led_device",             false},
        {"unassigned",             false},
        {"heat_exchanger",         true },
        {"heat_sink",              false},
    };
    EXPECT_EQ(std::size(cases), std::size(rows));
    for (const auto& [name, isFlowComponent] : cases)
        EXPECT_EQ(MaterialType::fromName(name).isFlowComponent(), isFlowComponent) << name;
}

} // namespace
} // namespace Clt
