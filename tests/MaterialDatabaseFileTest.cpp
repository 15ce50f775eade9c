#include "support/Assertions.h"

#include <NereoFileIO/MaterialDatabaseFile.h>

#include <gmock/gmock.h>

#include <type_traits>

namespace Nereo::Io {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

Material named(const std::string& name, int id = 0)
{
    Material material("solid");
    material.setName(name);
    material.setId(id);
    return material;
}

MaterialDatabaseFile databaseOf(const std::vector<std::string>& names)
{
    MaterialDatabaseFile database;
    for (const std::string& name : names)
        database.add(named(name));
    return database;
}

std::vector<std::string> namesOf(const MaterialDatabaseFile& database)
{
    std::vector<std::string> names;
    for (int i = 0; i < database.count(); ++i)
        names.push_back(database.material(i).name());
    return names;
}

TEST(MaterialDatabaseFile, StartsEmpty)
{
    const MaterialDatabaseFile database;
    EXPECT_EQ(database.count(), 0);
    EXPECT_FALSE(database.contains(""));
    EXPECT_EQ(database.version(), Util::Version::Current);
    EXPECT_EQ(database.filePath(), "");
}

TEST(MaterialDatabaseFile, KeepsMaterialsInTheOrderInWhichTheyWereAdded)
{
    const MaterialDatabaseFile database = databaseOf({"Water", "Air", "Water", ""});
    EXPECT_THAT(namesOf(database), ElementsAre("Water", "Air", "Water", ""));
    EXPECT_EQ(database.count(), 4);
}

TEST(MaterialDatabaseFile, AddsACopy)
{
    Material water = named("Water", 7);
    water.property("density").addPoint(1.0, 2.0);
    MaterialDatabaseFile database;
    database.add(water);
    water.setName("Ice");
    water.property("density").clearPoints();

    const Material& added = database.material(0);
    EXPECT_EQ(added.name(), "Water");
    EXPECT_EQ(added.id(), 7);
    EXPECT_EQ(added.type(), "solid");
    EXPECT_EQ(added.property("density").pointCount(), 1);
}

TEST(MaterialDatabaseFile, AddsMaterialsOfItsOwn)
{
    MaterialDatabaseFile database = databaseOf({"Air"});
    for (int i = 0; i < 100; ++i)
        database.add(database.material(i));
    EXPECT_EQ(namesOf(database), std::vector<std::string>(101, "Air"));
}

TEST(MaterialDatabaseFile, IsClearedButForItsVersion)
{
    MaterialDatabaseFile database = databaseOf({"Water", "Air"});
    database.setVersion(Util::Version(1, 2, 3, 4));
    database.clear();
    EXPECT_EQ(database.count(), 0);
    EXPECT_EQ(database.version(), Util::Version(1, 2, 3, 4));
    database.add(named("Iron"));
    EXPECT_THAT(namesOf(database), ElementsAre("Iron"));
}

TEST(MaterialDatabaseFile, ContainsExactlyTheNamesOfItsMaterials)
{
    const std::string withNul("Air\0", 4);
    const MaterialDatabaseFile database = databaseOf({"air", "Öl", withNul, "\uFFFD", "\uFEFFtin"});
    for (const std::string& name : {std::string("air"), std::string("Öl"), withNul, std::string("\uFFFD"),
                                    std::string("tin")}) // a new name loses its byte order mark
        EXPECT_TRUE(database.contains(name)) << name;
    for (const char* name : {"Air", "AIR", "air ", "ai", "", "o\u0308l", "O\u0308l", "\xFF", "\uFEFFair"})
        EXPECT_FALSE(database.contains(name)) << name;
    EXPECT_TRUE(databaseOf({"air", ""}).contains(""));
}

TEST(MaterialDatabaseFile, FindsEachMaterialByTheNameThatItGives)
{
    // A byte order mark at the beginning is dropped from a new name, a second one is a character of it.
    MaterialDatabaseFile database =
        databaseOf({"plain", "\uFEFFa", "\uFEFF\uFEFFb", "\uFEFF\uFEFF\uFEFFc", "\uFEFF\uFEFF", "\xFF"});
    const MaterialDatabaseFile& constant = database;
    EXPECT_EQ(database.material(3).name(), "\uFEFF\uFEFFc");
    for (int i = 0; i < database.count(); ++i) {
        const std::string name = database.material(i).name();
        EXPECT_TRUE(database.contains(name)) << name;
        EXPECT_EQ(&database.material(name), &database.material(i)) << name;
        EXPECT_EQ(&constant.material(name), &database.material(i)) << name;
    }
    for (const char* name : {"\uFEFFa", "b", "\uFEFF\uFEFFb", "\uFEFFc", "", "\xFF"})
        EXPECT_FALSE(database.contains(name)) << name;
}

TEST(MaterialDatabaseFile, FindsTheFirstMaterialOfAName)
{
    MaterialDatabaseFile database = databaseOf({"Water", "Air", "Water", "air"});
    const MaterialDatabaseFile& constant = database;
    const struct {
        const char* name;
        int index;
    } cases[] = {
        {"Water", 0},
        {"Air",   1},
        {"air",   3},
        {"AIR",   0}, // there is none: the first material
        {"",      0},
        {"\xFF",  0},
    };
    for (const auto& [name, index] : cases) {
        EXPECT_EQ(&database.material(name), &database.material(index)) << name;
        EXPECT_EQ(&constant.material(name), &constant.material(index)) << name;
    }
    static_assert(std::is_same_v<decltype(database.material(0)), Material&>);
    static_assert(std::is_same_v<decltype(constant.material(0)), const Material&>);
    static_assert(std::is_same_v<decltype(constant.material("Air")), const Material&>);
}

TEST(MaterialDatabaseFile, FindsAMaterialByItsNewName)
{
    MaterialDatabaseFile database = databaseOf({"Water", "Air", "Iron"});
    database.material("Iron").setName("Air");
    EXPECT_FALSE(database.contains("Iron"));
    EXPECT_EQ(&database.material("Air"), &database.material(1));
    database.material(0).setName("Air");
    EXPECT_EQ(&database.material("Air"), &database.material(0));
}

TEST(MaterialDatabaseFile, GivesMaterialsToChange)
{
    MaterialDatabaseFile database = databaseOf({"Water", "Air"});
    database.material(1).setId(5);
    database.material("Water").property("density").setValue(998.0);
    EXPECT_EQ(database.material("Air").id(), 5);
    EXPECT_EQ(database.material(0).property("density").value(), 998.0);
}

TEST(MaterialDatabaseFile, RemovesOneMaterial)
{
    MaterialDatabaseFile database = databaseOf({"a", "b", "c", "d"});
    database.remove(1);
    EXPECT_THAT(namesOf(database), ElementsAre("a", "c", "d"));
    database.remove(2);
    EXPECT_THAT(namesOf(database), ElementsAre("a", "c"));
    database.remove(0);
    database.remove(0);
    EXPECT_THAT(namesOf(database), IsEmpty());
}

TEST(MaterialDatabaseFile, ReplacesOneMaterial)
{
    MaterialDatabaseFile database = databaseOf({"a", "b"});
    Material replacement("fluid");
    replacement.setName("Air");
    const Material& second = database.material(1);
    database.setMaterial(1, replacement);
    EXPECT_THAT(namesOf(database), ElementsAre("a", "Air"));
    EXPECT_EQ(second.type(), "fluid");

    database.setMaterial(0, second);
    database.setMaterial(1, second);
    EXPECT_THAT(namesOf(database), ElementsAre("Air", "Air"));
}

TEST(MaterialDatabaseFile, KeepsMaterialsInTheirPlaces)
{
    MaterialDatabaseFile database = databaseOf({"a", "b"});
    Material& second = database.material(1);
    for (int i = 0; i < 100; ++i)
        database.add(named("c"));
    database.remove(0);
    second.setName("changed");
    EXPECT_EQ(&second, &database.material(0));
    EXPECT_EQ(database.material(0).name(), "changed");
}

TEST(MaterialDatabaseFile, IsCopiedWhole)
{
    MaterialDatabaseFile original = databaseOf({"a", "b"});
    original.setVersion(Util::Version(1, 2, 3, 4));
    EXPECT_FALSE(original.loadFrom("/missing/materials.xml"));
    Material& first = original.material(0);

    MaterialDatabaseFile copy(original);
    MaterialDatabaseFile assigned = databaseOf({"x", "y", "z"});
    EXPECT_EQ(&(assigned = original), &assigned);

    first.setName("changed");
    original.remove(1);
    for (const MaterialDatabaseFile* database : {&copy, &assigned}) {
        EXPECT_THAT(namesOf(*database), ElementsAre("a", "b"));
        EXPECT_EQ(database->version(), Util::Version(1, 2, 3, 4));
        EXPECT_EQ(database->filePath(), "/missing/materials.xml");
    }
    copy.material(0).setName("of the copy");
    EXPECT_THAT(namesOf(original), ElementsAre("changed"));
    EXPECT_THAT(namesOf(assigned), ElementsAre("a", "b"));
}

TEST(MaterialDatabaseFile, IsUnchangedByAssignmentToItself)
{
    MaterialDatabaseFile database = databaseOf({"a", "b"});
    database.setVersion(Util::Version(1, 2, 3, 4));
    const MaterialDatabaseFile& itself = database;
    const Material& first = database.material(0);
    database = itself;
    EXPECT_THAT(namesOf(database), ElementsAre("a", "b"));
    EXPECT_EQ(&first, &database.material(0));
    EXPECT_EQ(database.version(), Util::Version(1, 2, 3, 4));
}

TEST(MaterialDatabaseFileDeathTest, StopsAtAnIndexOutOfRange)
{
    MaterialDatabaseFile database = databaseOf({"a", "b"});
    const MaterialDatabaseFile& constant = database;
    const Material material;
    for (const int index : {-1, 2, 2147483647, -2147483647 - 1}) {
        EXPECT_INDEX_ASSERTION(database.material(index), "QList<T>::operator[]",
                               "FileIO/MaterialDatabaseFile");
        EXPECT_INDEX_ASSERTION(constant.material(index), "QList<T>::operator[]",
                               "FileIO/MaterialDatabaseFile");
        EXPECT_INDEX_ASSERTION(database.setMaterial(index, material), "QList<T>::operator[]",
                               "FileIO/MaterialDatabaseFile");
        EXPECT_INDEX_ASSERTION(database.remove(index), "QList<T>::removeAt", "FileIO/MaterialDatabaseFile");
    }
}

TEST(MaterialDatabaseFileDeathTest, StopsWhereAnEmptyDatabaseIsAskedForAMaterial)
{
    MaterialDatabaseFile database;
    const MaterialDatabaseFile& constant = database;
    EXPECT_INDEX_ASSERTION(database.material("Air"), "QList<T>::operator[]", "FileIO/MaterialDatabaseFile");
    EXPECT_INDEX_ASSERTION(constant.material("Air"), "QList<T>::operator[]", "FileIO/MaterialDatabaseFile");
    EXPECT_INDEX_ASSERTION(database.material(0), "QList<T>::operator[]", "FileIO/MaterialDatabaseFile");
}

} // namespace
} // namespace Nereo::Io
