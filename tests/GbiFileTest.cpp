#include "support/Assertions.h"
#include "support/Bytes.h"
#include "support/TemporaryFolder.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/GbiFile.h>

#include <gmock/gmock.h>

#include <limits>
#include <type_traits>
#include <vector>

namespace Nereo::Io {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int least = std::numeric_limits<int>::min();
constexpr int most = std::numeric_limits<int>::max();

static_assert(std::is_same_v<std::underlying_type_t<GbiFile::CoordinateSystem>, int>);
static_assert(std::is_same_v<std::underlying_type_t<GbiFile::Units>, int>);

GbiFile fileWith(const std::vector<int>& codes)
{
    GbiFile file;
    for (const int code : codes)
        file.addSurfaceBoundaryCondition(BoundaryCondition(code));
    return file;
}

std::vector<int> codes(const GbiFile& file)
{
    std::vector<int> codes;
    for (int i = 0; i < file.surfaceBoundaryConditionCount(); ++i)
        codes.push_back(file.surfaceBoundaryCondition(i).kCode());
    return codes;
}

GbiFile cavity()
{
    GbiFile file = fileWith({kU, kV});
    file.setJobName("cavity");
    file.setProductLine("product");
    file.setCoordinateSystem(GbiFile::RTZ);
    file.setUnits(GbiFile::Inch);
    file.setVersion(Util::Version(1, 2, 3, 4));
    file.materialDatabase().add(Material("solid"));
    return file;
}

void expectCavity(const GbiFile& file)
{
    EXPECT_EQ(file.jobName(), "cavity");
    EXPECT_EQ(file.productLine(), "product");
    EXPECT_EQ(file.coordinateSystem(), GbiFile::RTZ);
    EXPECT_EQ(file.units(), GbiFile::Inch);
    EXPECT_EQ(file.version(), Util::Version(1, 2, 3, 4));
    ASSERT_EQ(file.materialDatabase().count(), 1);
    EXPECT_EQ(file.materialDatabase().material(0).type(), "solid");
    EXPECT_THAT(codes(file), ElementsAre(1, 2));
}

TEST(GbiFile, StartsWithTheseDefaults)
{
    const GbiFile file;
    EXPECT_EQ(file.jobName(), "");
    EXPECT_EQ(file.productLine(), "NEREO 2024 (" + Util::Version::Branch().toStdString() + ")");
    EXPECT_EQ(file.coordinateSystem(), GbiFile::XYZ);
    EXPECT_EQ(file.units(), GbiFile::Meter);
    EXPECT_EQ(file.materialDatabase().count(), 0);
    EXPECT_EQ(file.surfaceBoundaryConditionCount(), 0);
    EXPECT_EQ(file.version(), Util::Version::Current);
    EXPECT_EQ(file.filePath(), "");
}

TEST(GbiFile, NumbersItsEnumerators)
{
    EXPECT_THAT((std::vector<int> {GbiFile::None, GbiFile::XY, GbiFile::XR, GbiFile::RY, GbiFile::RT,
                                   GbiFile::ZY, GbiFile::XZ, GbiFile::XYZ, GbiFile::RTZ}),
                ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8));
    EXPECT_THAT((std::vector<int> {GbiFile::Meter, GbiFile::Centimeter, GbiFile::Millimeter, GbiFile::Feet,
                                   GbiFile::Inch, GbiFile::InchWatt}),
                ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST(GbiFile, KeepsWhatIsSetUnchecked)
{
    GbiFile file;
    file.setJobName("a \"job\"\nof two lines");
    file.setProductLine("Strömung");
    file.setCoordinateSystem(GbiFile::CoordinateSystem(most));
    file.setUnits(GbiFile::Units(least));
    EXPECT_EQ(file.jobName(), "a \"job\"\nof two lines");
    EXPECT_EQ(file.productLine(), "Strömung");
    EXPECT_EQ(int(file.coordinateSystem()), most);
    EXPECT_EQ(int(file.units()), least);
}

TEST(GbiFile, KeepsConditionsInOrder)
{
    GbiFile file = fileWith({kU, kV, kW, kV});
    EXPECT_EQ(file.surfaceBoundaryConditionCount(), 4);
    file.setSurfaceBoundaryCondition(1, BoundaryCondition(kT));
    EXPECT_THAT(codes(file), ElementsAre(1, 5, 3, 2));
    file.removeSurfaceBoundaryCondition(0);
    EXPECT_THAT(codes(file), ElementsAre(5, 3, 2));
    file.removeSurfaceBoundaryCondition(2);
    EXPECT_THAT(codes(file), ElementsAre(5, 3));
    file.addSurfaceBoundaryCondition(file.surfaceBoundaryCondition(0));
    EXPECT_THAT(codes(file), ElementsAre(5, 3, 5));
    file.clearSurfaceBoundaryConditions();
    EXPECT_THAT(codes(file), IsEmpty());
}

TEST(GbiFile, HoldsCopiesOfWhatItIsGiven)
{
    GbiFile file;
    BoundaryCondition condition(kU);
    file.addSurfaceBoundaryCondition(condition);
    condition.setValue(2.0);
    EXPECT_EQ(file.surfaceBoundaryCondition(0).value(), 0.0);

    MaterialDatabaseFile materials;
    materials.add(Material("fluid"));
    file.setMaterialDatabase(materials);
    materials.clear();
    EXPECT_EQ(file.materialDatabase().count(), 1);
}

TEST(GbiFile, GivesItsConditionsToBeChanged)
{
    GbiFile file = fileWith({kU});
    file.surfaceBoundaryCondition(0).setValue(1.5);
    EXPECT_EQ(qAsConst(file).surfaceBoundaryCondition(0).value(), 1.5);
}

TEST(GbiFile, KeepsReferencesWhenConditionsAreAddedOrSet)
{
    GbiFile file = fileWith({kU});
    BoundaryCondition& condition = file.surfaceBoundaryCondition(0);
    for (int i = 0; i < 1000; ++i)
        file.addSurfaceBoundaryCondition(BoundaryCondition(kV));
    file.setSurfaceBoundaryCondition(0, BoundaryCondition(kT));
    condition.setValue(1.5);
    EXPECT_EQ(file.surfaceBoundaryCondition(0).value(), 1.5);
    EXPECT_EQ(condition.kCode(), 5);
}

TEST(GbiFile, CopiesEverything)
{
    const GbiFile original = cavity();
    expectCavity(GbiFile(original));
    GbiFile assigned = fileWith({kP, kP, kP});
    assigned = original;
    expectCavity(assigned);
    assigned = *&assigned;
    expectCavity(assigned);
}

TEST(GbiFile, StaysApartFromItsCopies)
{
    GbiFile original = cavity();
    BoundaryCondition& condition = original.surfaceBoundaryCondition(0);
    Material& material = original.materialDatabase().material(0);
    condition.addExtraValue(1.0);
    const GbiFile copy(original);
    GbiFile assigned;
    assigned = original;

    // through references that are older than the copies
    condition.setValue(7.0);
    condition.setExtraValue(0, 7.0);
    material.setId(7);
    original.setJobName("other");
    for (const GbiFile& other : {copy, assigned}) {
        expectCavity(other);
        EXPECT_EQ(other.surfaceBoundaryCondition(0).value(), 0.0);
        EXPECT_EQ(other.surfaceBoundaryCondition(0).extraValue(0), 1.0);
        EXPECT_EQ(other.materialDatabase().material(0).id(), 0);
    }
}

TEST(GbiFile, StopsAtAnIndexWithoutACondition)
{
    for (const int count : {0, 2}) {
        GbiFile file = fileWith(std::vector<int>(std::size_t(count), kU));
        for (const int index : {-1, count, least, most}) {
            const auto message = testing::Message() << index << " of " << count;
            EXPECT_INDEX_ASSERTION(file.surfaceBoundaryCondition(index), "QList<T>::operator[]",
                                   "FileIO/GbiFile")
                << message;
            EXPECT_INDEX_ASSERTION(qAsConst(file).surfaceBoundaryCondition(index), "QList<T>::operator[]",
                                   "FileIO/GbiFile")
                << message;
            EXPECT_INDEX_ASSERTION(file.setSurfaceBoundaryCondition(index, BoundaryCondition()),
                                   "QList<T>::operator[]", "FileIO/GbiFile")
                << message;
            EXPECT_INDEX_ASSERTION(file.removeSurfaceBoundaryCondition(index), "QList<T>::removeAt",
                                   "FileIO/GbiFile")
                << message;
        }
    }
}

TEST(GbiFile, LoadsNothingFromAFileThatOpens)
{
    const TemporaryFolder folder;
    GbiFile file = cavity();
    for (const char* content : {"", "other\nother\nVersion 9.9.9.9\n\n*** Summary\n"}) {
        const std::string path = folder.write("job.gbi", content);
        EXPECT_TRUE(file.loadFrom(path));
        expectCavity(file);
        EXPECT_EQ(file.filePath(), path);
        EXPECT_EQ(readBytes(path), content);
    }
}

TEST(GbiFile, DoesNotLoadWhatCannotBeOpened)
{
    const TemporaryFolder folder;
    GbiFile file = cavity();
    for (const std::string& path : {folder.path("missing"), folder.path(), std::string()}) {
        EXPECT_FALSE(file.loadFrom(path)) << path;
        expectCavity(file);
        EXPECT_EQ(file.filePath(), path);
    }
}

TEST(GbiFile, ReplacesAFileWhenSaved)
{
    const TemporaryFolder folder;
    const std::string path = folder.write("job.gbi", std::string(100'000, 'x'));
    const GbiFile file = cavity();
    EXPECT_TRUE(file.saveTo(path));
    EXPECT_EQ(file.filePath(), path);
    EXPECT_THAT(readBytes(path), ::testing::StartsWith("cavity\nproduct\nVersion 1.2.3.4\n\n*** Summary\n"));
    EXPECT_THAT(readBytes(path), ::testing::EndsWith("\n*** Surface initial conditions\n-1\n"));
}

TEST(GbiFile, DoesNotSaveWhereNoFileCanBe)
{
    const TemporaryFolder folder;
    const GbiFile file;
    for (const std::string& path : {folder.path("missing/job.gbi"), folder.path(), std::string()}) {
        EXPECT_FALSE(file.saveTo(path)) << path;
        EXPECT_EQ(file.filePath(), path);
    }
}

} // namespace
} // namespace Nereo::Io
