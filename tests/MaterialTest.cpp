#include "support/Assertions.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/Material.h>

#include <gmock/gmock.h>

#include <QHash>
#include <QSet>

#include <type_traits>

namespace Nereo::Io {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A property of a new material: its code and its type.
using CodeAndType = std::pair<int, std::string>;

std::vector<CodeAndType> propertiesOf(const Material& material)
{
    std::vector<CodeAndType> properties;
    for (const int code : material.propertyCodes())
        properties.emplace_back(code, material.property(code).type());
    return properties;
}

TEST(Material, IsAFluidUnlessSaidOtherwise)
{
    EXPECT_EQ(Material().type(), "fluid");
    EXPECT_EQ(propertiesOf(Material()), propertiesOf(Material("fluid")));
    static_assert(!std::is_convertible_v<std::string, Material>);
}

TEST(Material, StartsWithoutNameAndNumbers)
{
    for (const char* type : {"fluid", "solid", "heat_sink", "Lüfter", ""}) {
        const Material material {std::string(type)};
        EXPECT_EQ(material.name(), "");
        EXPECT_EQ(material.type(), type);
        EXPECT_EQ(material.id(), Material::InvalidId);
        EXPECT_EQ(material.environmentType(), 0);
        EXPECT_EQ(material.refPressure(), 0.0);
        EXPECT_EQ(material.refTemperature(), 0.0);
        EXPECT_EQ(material.refCompressibility(), 0.0);
        EXPECT_EQ(material.vaporPressure(), 0.0);
        EXPECT_EQ(material.gasConstant(), 0.0);
        EXPECT_EQ(material.diffusionCoefficient(), 0.0);
    }
    EXPECT_EQ(Material::InvalidId, 0);
}

TEST(Material, HasThePropertiesOfAFluid)
{
    EXPECT_THAT(propertiesOf(Material("fluid")),
                ElementsAre(CodeAndType(25, "density"), CodeAndType(26, "viscosity"),
                            CodeAndType(27, "conductivity"), CodeAndType(28, "specific_heat"),
                            CodeAndType(29, "surface_tension"), CodeAndType(30, "emissivity"),
                            CodeAndType(31, "transmissivity"), CodeAndType(34, "resistivity"),
                            CodeAndType(35, "roughness")));
}

TEST(Material, HasThePropertiesOfASolid)
{
    EXPECT_THAT(propertiesOf(Material("solid")),
                ElementsAre(CodeAndType(25, "density"), CodeAndType(26, "viscosity"),
                            CodeAndType(27, "x_conductivity"), CodeAndType(28, "specific_heat"),
                            CodeAndType(29, "surface_tension"), CodeAndType(30, "emissivity"),
                            CodeAndType(34, "resistivity"), CodeAndType(35, "roughness"),
                            CodeAndType(47, "y_conductivity"), CodeAndType(48, "z_conductivity")));
}

TEST(Material, HasItsFirstPropertiesConstantZero)
{
    for (const char* type : {"fluid", "solid"}) {
        const Material material {std::string(type)};
        for (const int code : material.propertyCodes()) {
            const MaterialProperty property = material.property(code);
            EXPECT_EQ(property, MaterialProperty(property.type())) << type << ' ' << code;
        }
    }
}

TEST(Material, HasNoPropertiesOfAnotherType)
{
    for (const char* type :
         {"resistance", "internal_fan", "check_valve", "rotating_device", "centrifugal_fan", "ecomp_2resist",
          "printed_circuit_boards", "ecomp_tec", "contact_resistance", "led_device", "unassigned",
          "heat_exchanger", "heat_sink", "Fluid", "SOLID", " fluid", "", "gas"})
        EXPECT_THAT(Material {std::string(type)}.propertyCodes(), IsEmpty()) << type;
    static_assert(std::is_same_v<decltype(Material().propertyCodes()), std::list<int>>);
}

TEST(Material, KeepsWhatItIsGiven)
{
    Material material("solid");
    material.setName("Wärmeleitpaste");
    material.setId(-7);
    material.setEnvironmentType(Material::EnvironmentType(-2000000000));
    material.setRefPressure(101325.0);
    material.setRefTemperature(293.15);
    material.setRefCompressibility(1e9);
    material.setVaporPressure(2340.0);
    material.setGasConstant(287.05);
    material.setDiffusionCoefficient(2e-5);

    EXPECT_EQ(material.name(), "Wärmeleitpaste");
    EXPECT_EQ(material.id(), -7);
    EXPECT_EQ(material.environmentType(), -2000000000);
    EXPECT_EQ(material.refPressure(), 101325.0);
    EXPECT_EQ(material.refTemperature(), 293.15);
    EXPECT_EQ(material.refCompressibility(), 1e9);
    EXPECT_EQ(material.vaporPressure(), 2340.0);
    EXPECT_EQ(material.gasConstant(), 287.05);
    EXPECT_EQ(material.diffusionCoefficient(), 2e-5);
    static_assert(std::is_same_v<std::underlying_type_t<Material::EnvironmentType>, int>);
}

TEST(Material, FindsAPropertyByTypeAndByCode)
{
    Material material;
    material.property("density").setValue(1.25);
    EXPECT_EQ(&material.property("density"), &material.property(25));
    EXPECT_EQ(material.property(25).value(), 1.25);

    const Material& constant = material;
    EXPECT_EQ(constant.property("density"), material.property("density"));
    EXPECT_EQ(constant.property(25), material.property("density"));
}

TEST(Material, AddsAPropertyWithoutATypeWhenAskedForOneToChange)
{
    Material material("heat_sink");
    MaterialProperty& added = material.property(250);
    EXPECT_EQ(added.type(), "");
    EXPECT_EQ(added, MaterialProperty());
    material.property("density").setValue(2.0);
    EXPECT_THAT(propertiesOf(material), ElementsAre(CodeAndType(25, ""), CodeAndType(250, "")));
    EXPECT_EQ(material.property(25).value(), 2.0);
    EXPECT_EQ(&material.property("ratio_specific_heats"), &added);

    material.property(-5); // any number is a code here
    material.property(100000);
    EXPECT_THAT(material.propertyCodes(), ElementsAre(-5, 25, 250, 100000));
}

TEST(Material, AddsNothingWhenAskedForACopy)
{
    const Material material("heat_sink");
    EXPECT_EQ(material.property(25), MaterialProperty());
    EXPECT_EQ(material.property("density"), MaterialProperty()); // without the type
    EXPECT_THAT(material.propertyCodes(), IsEmpty());
    static_assert(std::is_same_v<decltype(material.property(25)), MaterialProperty>);
    static_assert(std::is_same_v<decltype(material.property("density")), MaterialProperty>);
}

TEST(Material, GivesAPropertyItselfOrNone)
{
    Material solid("solid");
    const Material& constant = solid;
    EXPECT_EQ(constant.findProperty(kRho), &solid.property(kRho));
    EXPECT_EQ(constant.findProperty(kTransmis), nullptr);
    EXPECT_EQ(constant.findProperty(-1), nullptr);
    EXPECT_EQ(solid.propertyCodes().size(), 10U);
}

TEST(Material, HasOnePropertyForEachCode)
{
    Material solid("solid");
    EXPECT_EQ(&solid.property("conductivity"), &solid.property("x_conductivity"));
    EXPECT_EQ(solid.property("conductivity").type(), "x_conductivity");

    Material fluid("fluid");
    EXPECT_EQ(&fluid.property("x_conductivity"), &fluid.property("conductivity"));
    EXPECT_EQ(fluid.property("x_conductivity").type(), "conductivity");
    EXPECT_EQ(fluid.propertyCodes().size(), 9u);

    Material heatSink("heat_sink");
    MaterialProperty& baseThickness = heatSink.property("base_thickness");
    baseThickness.setValue(0.004);
    EXPECT_EQ(&heatSink.property("sink_conductivity"), &baseThickness);
    EXPECT_EQ(heatSink.property("sink_conductivity").value(), 0.004);
    EXPECT_EQ(baseThickness.type(), "");
    EXPECT_THAT(heatSink.propertyCodes(), ElementsAre(361));

    Material fan("centrifugal_fan");
    EXPECT_EQ(&fan.property("flow_rate"), &fan.property("rotational_velocity"));
}

TEST(Material, KeepsReferencesWhenPropertiesAreAdded)
{
    Material material("heat_sink");
    MaterialProperty& first = material.property(500);
    for (int code = 0; code < 400; ++code)
        material.property(code);
    EXPECT_EQ(&material.property(500), &first);
}

TEST(Material, HasTheFlagsOfItsType)
{
    const struct {
        const char* type;
        int fluidFlag;
        int resistFlag;
    } cases[] = {
        {"fluid",                  1, 0 },
        {"solid",                  0, 0 },
        {"resistance",             1, 1 },
        {"internal_fan",           1, 2 },
        {"check_valve",            1, 3 },
        {"rotating_device",        1, 7 },
        {"centrifugal_fan",        1, 6 },
        {"ecomp_2resist",          0, 9 },
        {"printed_circuit_boards", 0, 10},
        {"ecomp_tec",              0, 11},
        {"contact_resistance",     0, 12},
        {"led_device",             0, 14},
        {"unassigned",             0, 13},
        {"heat_exchanger",         1, 15},
        {"heat_sink",              1, 16},
        {"Fluid",                  0, 13}, // unknown, as are those below
        {"heat sink",              0, 13},
        {"",                       0, 13},
    };
    for (const auto& [type, fluidFlag, resistFlag] : cases) {
        const Material material {std::string(type)};
        EXPECT_EQ(material.fluidFlag(), fluidFlag) << type;
        EXPECT_EQ(material.resistFlag(), resistFlag) << type;
    }
}

Material named(const std::string& type, const std::string& name)
{
    Material material(type);
    material.setName(name);
    return material;
}

TEST(Material, IsComparedByTypeAndName)
{
    const Material air = named("fluid", "Air");
    Material other = named("fluid", "Air");
    other.setId(7);
    other.setEnvironmentType(Material::EnvironmentType(1));
    other.setRefPressure(1.0);
    other.property("density").setValue(1.0);
    other.property(361);
    EXPECT_TRUE(air == other);
    EXPECT_FALSE(air != other);

    for (const Material& different :
         {named("fluid", "air"), named("fluid", "Air "), named("solid", "Air"), named("", "Air")}) {
        EXPECT_FALSE(air == different);
        EXPECT_TRUE(air != different);
    }
}

TEST(Material, HashesItsName)
{
    for (const char* name : {"", "Air", "Öl"}) {
        const uint expected = ::qHash(QString(name), 0);
        EXPECT_EQ(qHash(named("fluid", name)), expected) << name;
        EXPECT_EQ(Nereo::Io::qHash(named("solid", name)), expected) << name;
    }
}

TEST(Material, IsAKeyOfHashedContainers)
{
    const QSet<Material> materials {named("fluid", "Air"), named("solid", "Air"), named("fluid", "Air")};
    EXPECT_EQ(materials.size(), 2);
    EXPECT_TRUE(materials.contains(named("solid", "Air")));
    EXPECT_FALSE(materials.contains(named("solid", "Iron")));

    QHash<Material, int> numbers;
    numbers[named("fluid", "Air")] = 7;
    EXPECT_EQ(numbers.value(named("fluid", "Air")), 7);
}

Material fullMaterial()
{
    Material material = named("fluid", "Air");
    material.setId(7);
    material.setEnvironmentType(Material::EnvironmentType(3));
    material.setRefPressure(1.0);
    material.setRefTemperature(2.0);
    material.setRefCompressibility(3.0);
    material.setVaporPressure(4.0);
    material.setGasConstant(5.0);
    material.setDiffusionCoefficient(6.0);
    material.property("density").addPoint(1.0, 2.0);
    return material;
}

void expectFull(const Material& material)
{
    EXPECT_EQ(material.type(), "fluid");
    EXPECT_EQ(material.name(), "Air");
    EXPECT_EQ(material.id(), 7);
    EXPECT_EQ(material.environmentType(), 3);
    EXPECT_EQ(material.refPressure(), 1.0);
    EXPECT_EQ(material.refTemperature(), 2.0);
    EXPECT_EQ(material.refCompressibility(), 3.0);
    EXPECT_EQ(material.vaporPressure(), 4.0);
    EXPECT_EQ(material.gasConstant(), 5.0);
    EXPECT_EQ(material.diffusionCoefficient(), 6.0);
    EXPECT_EQ(material.propertyCodes().size(), 9u);
    EXPECT_EQ(material.property("density").value(), 0.0);
    ASSERT_EQ(material.property("density").pointCount(), 1);
    EXPECT_EQ(material.property("density").point(0), Point(1.0, 2.0));
}

TEST(Material, IsCopiedWhole)
{
    const Material original = fullMaterial();
    Material copy(original);
    expectFull(copy);

    Material assigned("solid");
    EXPECT_EQ(&(assigned = original), &assigned);
    expectFull(assigned);

    copy.property("density").point(0).setX(9.0);
    assigned.property("density").clearPoints();
    expectFull(original);
}

TEST(Material, IsUnchangedByAssignmentToItself)
{
    Material material = fullMaterial();
    const Material& itself = material;
    material = itself;
    expectFull(material);
}

TEST(Material, KeepsReferencesToTheObjectTheyWereTakenFrom)
{
    Material material = fullMaterial();
    MaterialProperty& density = material.property("density");
    Point& point = density.point(0);
    const Material copy(material);
    Material assigned;
    assigned = material;

    density.setValue(9.0);
    point.setX(9.0);
    EXPECT_EQ(material.property("density").value(), 9.0);
    EXPECT_EQ(material.property("density").point(0).x(), 9.0);
    expectFull(copy);
    expectFull(assigned);
}

TEST(MaterialDeathTest, StopsAtAPropertyTypeThatIsNone)
{
    Material material;
    const Material& constant = material;
    for (const char* type : {"", "Density", "constant"}) {
        EXPECT_INDEX_ASSERTION(material.property(type), "QVector<T>::operator[]", "FileIO/PropertyType");
        EXPECT_INDEX_ASSERTION(constant.property(type), "QVector<T>::operator[]", "FileIO/PropertyType");
    }
}

} // namespace
} // namespace Nereo::Io
