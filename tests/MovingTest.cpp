#include "support/SameContent.h"
#include "support/TemporaryFolder.h"

#include <NereoFileIO/BoundaryCondition.h>
#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/Flag.h>
#include <NereoFileIO/GbiFile.h>
#include <NereoFileIO/Material.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoFileIO/ResultsFile.h>

#include <gmock/gmock.h>

#include <type_traits>
#include <utility>

namespace Nereo::Io {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Util::Version;

template <class... Values>
constexpr bool areMovedWithoutThrowing =
    ((std::is_nothrow_move_constructible_v<Values> && std::is_nothrow_move_assignable_v<Values>)&&...);
static_assert(areMovedWithoutThrowing<BoundaryCondition, Flag, Material, MaterialProperty, Point, Setting>);
static_assert(areMovedWithoutThrowing<ControlFile, MaterialDatabaseFile, ResultsFile>);
// What these two leave behind takes memory: a container of conditions, the factory defaults.
static_assert(std::is_move_constructible_v<GbiFile> && std::is_nothrow_move_assignable_v<GbiFile>);
static_assert(std::is_move_constructible_v<Nereo2ConfigFile>);
static_assert(std::is_nothrow_move_assignable_v<Nereo2ConfigFile>);

/// Moves it into a new object and from there into one that held something else; what it leaves behind can be
/// used on.
template <class Value>
Value movedTwice(Value value, Value target)
{
    Value constructed(std::move(value));
    target = std::move(constructed);
    for (Value* const left : {&value, &constructed}) {
        const Value copy(*left);
        *left = target;
    }
    return target;
}

TEST(Moving, KeepsFlags)
{
    Flag flag;
    flag.setName("a");
    flag.setValue(1);
    Flag other;
    other.setName("b");
    EXPECT_EQ(movedTwice(flag, other), flag);
}

TEST(Moving, KeepsSettings)
{
    Nereo2ConfigFile config;
    const Setting moved = movedTwice(config.setting(Nereo2ConfigFile::MaxIter), Setting());
    EXPECT_EQ(moved.name(), "MaxIter");
    EXPECT_EQ(moved.type(), Setting::Int);
    EXPECT_EQ(moved.valueAsInt(), 10000);
}

TEST(Moving, KeepsConditions)
{
    BoundaryCondition condition(kT);
    condition.setEntityId(3);
    condition.setTimeCurveId(4);
    condition.setValue(1.5);
    condition.addExtraValue(2.5);
    EXPECT_EQ(movedTwice(condition, BoundaryCondition(kP)), condition);
}

TEST(Moving, KeepsPropertiesWithTheirPoints)
{
    MaterialProperty property("density");
    property.setVariationType("piecewise_linear");
    property.setIndependentVariable(kT);
    property.setValue(1.5);
    property.addPoint(1.0, 2.0);
    const MaterialProperty expected = property;
    EXPECT_EQ(movedTwice(property, MaterialProperty("viscosity")), expected);

    const Point* const point = &property.point(0);
    MaterialProperty target(std::move(property));
    EXPECT_EQ(&target.point(0), point);
}

Material copper()
{
    Material material("solid");
    material.setName("Copper");
    material.setId(7);
    material.setRefTemperature(293.15);
    material.property("density").setValue(8960.0);
    return material;
}

TEST(Moving, KeepsMaterialsWithTheirProperties)
{
    Material material = copper();
    const Material moved = movedTwice(material, Material());
    EXPECT_EQ(moved, material);
    EXPECT_EQ(moved.id(), 7);
    EXPECT_EQ(moved.refTemperature(), 293.15);
    EXPECT_EQ(moved.propertyCodes(), material.propertyCodes());
    EXPECT_EQ(moved.property("density").value(), 8960.0);

    const MaterialProperty* const density = &material.property("density");
    Material target;
    target = std::move(material);
    EXPECT_EQ(&target.property("density"), density);
}

TEST(Moving, KeepsMaterialsWhereTheyAre)
{
    MaterialDatabaseFile database;
    database.setVersion(Version(1, 2, 3, 4));
    database.add(copper());
    database.add(Material("fluid"));
    expectSameContent(movedTwice(database, MaterialDatabaseFile()), database);

    const Material* const first = &database.material(0);
    MaterialDatabaseFile target;
    target.add(Material("fan"));
    target = std::move(database);
    EXPECT_EQ(&target.material(0), first);
    EXPECT_EQ(target.count(), 2);
    EXPECT_EQ(target.version(), Version(1, 2, 3, 4));
}

TEST(Moving, PutsAMaterialIntoADatabase)
{
    Material material = copper();
    const MaterialProperty* const density = &material.property("density");
    MaterialDatabaseFile database;
    database.add(std::move(material));
    EXPECT_EQ(database.material(0), copper());
    EXPECT_EQ(&database.material(0).property("density"), density);
}

TEST(Moving, KeepsControlFiles)
{
    ControlFile file;
    file.setHeaderLine1("x Ver 1.2.3.4");
    file.setTitle("Lüfter");
    file.setConstant(kGravX, -9.81);
    file.smokeData().on = true;
    file.materialDatabase().add(copper());
    Flag flag;
    flag.setName("a");
    file.addFlag(flag);
    expectSameContent(movedTwice(file, ControlFile()), file);
}

TEST(Moving, KeepsGeometryFiles)
{
    const TemporaryFolder folder;
    GbiFile file;
    file.setJobName("job");
    file.setUnits(GbiFile::Inch);
    file.materialDatabase().add(copper());
    file.addSurfaceBoundaryCondition(BoundaryCondition(kT));
    ASSERT_TRUE(file.saveTo(folder.path("job.gbi")));

    const GbiFile moved = movedTwice(file, GbiFile());
    EXPECT_EQ(moved.filePath(), folder.path("job.gbi"));
    ASSERT_TRUE(moved.saveTo(folder.path("moved.gbi")));
    EXPECT_EQ(readBytes(folder.path("moved.gbi")), readBytes(folder.path("job.gbi")));
}

TEST(Moving, KeepsTheValuesOfResults)
{
    ResultsFile results;
    results.setTitle("Cavity");
    results.setNodeCount(2);
    results.addFieldDataCode(kP);
    results.setFieldData(kP, 2, 1.5);
    expectSameContent(movedTwice(results, ResultsFile()), results);

    const double* const values = results.fieldData(kP).constData();
    ResultsFile target(std::move(results));
    EXPECT_EQ(target.fieldData(kP).constData(), values);
    EXPECT_THAT(target.fieldData(kP), ElementsAre(0.0, 1.5));
}

TEST(Moving, LeavesTheFactoryDefaultsOfAConfiguration)
{
    Nereo2ConfigFile config;
    config.setting(Nereo2ConfigFile::MaxIter).setValueFromString("7");
    config.remove(Nereo2ConfigFile::Schur);
    expectSameContent(movedTwice(config, Nereo2ConfigFile()), config);

    Nereo2ConfigFile constructed(std::move(config));
    Nereo2ConfigFile assigned;
    assigned = std::move(constructed);
    EXPECT_EQ(assigned.setting(Nereo2ConfigFile::MaxIter).valueAsInt(), 7);
    for (Nereo2ConfigFile* const left : {&config, &constructed}) {
        EXPECT_THAT(left->keys(), IsEmpty());
        left->resetAll();
        expectSameContent(*left, Nereo2ConfigFile());
    }
    assigned.resetAll();
    expectSameContent(assigned, Nereo2ConfigFile());
}

TEST(Moving, KeepsPathAndVersion)
{
    const TemporaryFolder folder;
    MaterialDatabaseFile database;
    database.setVersion(Version(1, 2, 3, 4));
    ASSERT_TRUE(database.saveTo(folder.path("materials.xml")));
    const MaterialDatabaseFile moved = movedTwice(database, MaterialDatabaseFile());
    EXPECT_EQ(moved.filePath(), folder.path("materials.xml"));
    EXPECT_EQ(moved.version(), Version(1, 2, 3, 4));
}

TEST(Defaults, AreMadeFromNothing)
{
    const Material material = {};
    const BoundaryCondition condition = {};
    const Material materials[2] = {};
    const BoundaryCondition conditions[2] = {};
    for (const Material& each : {material, materials[1]}) {
        EXPECT_EQ(each.type(), "fluid");
        EXPECT_EQ(each.propertyCodes().size(), 9U);
    }
    for (const BoundaryCondition& each : {condition, conditions[1]})
        EXPECT_EQ(each, BoundaryCondition(0));
    static_assert(!std::is_convertible_v<std::string, Material>);
    static_assert(!std::is_convertible_v<int, BoundaryCondition>);
}

} // namespace
} // namespace Nereo::Io
