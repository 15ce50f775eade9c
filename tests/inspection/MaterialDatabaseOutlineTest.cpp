#include "Checked.h"

#include "support/TemporaryFolder.h"

#include <NereoInspection/Outline.h>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace Nereo::Inspection {
namespace {

using ::testing::ElementsAre;

/// Each value as "address=spelling", and that its place holds its spelling.
std::vector<std::string> valuesOf(const std::string& bytes)
{
    const TemporaryFolder folder;
    std::vector<std::string> values;
    EXPECT_TRUE(outline(folder.write("materials.xml", bytes), FileKind::Materials, [&](const Item& item) {
        const std::string spelling = item.spelling.toStdString();
        values.push_back(item.address.toStdString() + '=' + spelling);
        if (item.place.hasOffset()) {
            EXPECT_EQ(bytes.substr(std::size_t(item.place.offset), std::size_t(item.length)), spelling);
        }
    }));
    return values;
}

std::string database(const std::string& materials)
{
    return "<material_database>" + materials + "</material_database>";
}

TEST(MaterialDatabaseOutlineTest, TellsOfEachValueInTheOrderOfTheFile)
{
    EXPECT_THAT(
        valuesOf("<material_database version=\"1.2.3.4\"><material type='fluid'><name>Water</name><id>7</id>"
                 "<ref_pressure> 1e5 </ref_pressure><property type='density'>"
                 "<variation_type>constant</variation_type><value>&#53;</value></property>"
                 "<property type='viscosity'><independent_variable>kT</independent_variable>"
                 "<point><x>1</x><y>2</y></point><point><y>4</y><x>3</x></point></property>"
                 "<other>9</other></material></material_database>"),
        ElementsAre("version=1.2.3.4", "Water/type=fluid", "Water/name=Water", "Water/id=7",
                    "Water/ref_pressure= 1e5 ", "Water/density/variation_type=constant",
                    "Water/density/value=&#53;", "Water/viscosity/independent_variable=kT",
                    "Water/viscosity/points/1/x=1", "Water/viscosity/points/1/y=2",
                    "Water/viscosity/points/2/y=4", "Water/viscosity/points/2/x=3"));
}

TEST(MaterialDatabaseOutlineTest, NamesMaterialsByTheLastOfTheirNames)
{
    EXPECT_THAT(valuesOf(database("<material type='a'><name>x</name><id>1</id><name>Air/1%#</name></material>"
                                  "<material/><material><name/><id>3</id></material>"
                                  "<material><id>4</id><name>Air/1%#</name></material>")),
                ElementsAre("Air%2F1%25%23/type=a", "Air%2F1%25%23/name=x", "Air%2F1%25%23/id=1",
                            "Air%2F1%25%23/name=Air/1%#", "#3/name=", "#3/id=3", "Air%2F1%25%23#2/id=4",
                            "Air%2F1%25%23#2/name=Air/1%#"));
}

TEST(MaterialDatabaseOutlineTest, CutsLongNamesAndTellsThemApart)
{
    const std::string longName(1000, 'a');
    const auto values = valuesOf(database("<material><name>" + longName + "</name></material><material><name>"
                                          + longName + "b</name></material>"));
    ASSERT_EQ(values.size(), 2U);
    EXPECT_LT(values[0].find('='), 300U);
    EXPECT_NE(values[0].substr(0, values[0].find('=')), values[1].substr(0, values[1].find('=')));
    EXPECT_EQ(values[1].find("#2"), std::string::npos);

    const auto inPieces = valuesOf(database("<material><name>" + std::string(199, 'a') + "<!-- -->aaa<b>c</b>"
                                            + std::string(798, 'a') + "</name></material>"));
    EXPECT_EQ(inPieces[0].substr(0, inPieces[0].find('=')), values[0].substr(0, values[0].find('=')));
}

/// A small file may have long names out of entities, of which only so much is kept.
TEST(MaterialDatabaseOutlineTest, HasPlacesForNamesWhereEntitiesMakeTooMany)
{
    constexpr int count = 215'000; // of 200 letters each: more than 32 MiB over the size of the file
    const std::string material = "<material><name>&e;</name></material>";
    std::string materials;
    for (int i = 1; i < count; ++i)
        materials += material;
    const std::string few =
        "<!DOCTYPE a [<!ENTITY e '" + std::string(200, 'e') + "'>]>" + "<material_database>" + material;
    const std::string last = "<material><id>x</id><name>&e;</name></material></material_database>";
    const TemporaryFolder folder;
    const auto addressOfLast = [&](const std::string& bytes) {
        const std::string path = folder.write("materials.xml", bytes);
        QString address;
        outline(path, FileKind::Materials, [&address](const Item& item) {
            if (item.address.endsWith(QLatin1String("/id")))
                address = item.address;
        });
        for (const Finding& finding : check(path).findings) {
            if (finding.code == QLatin1String("not-an-integer")) {
                EXPECT_EQ(finding.address.toStdString(), address.toStdString());
            }
        }
        return address.toStdString();
    };
    EXPECT_EQ(addressOfLast(few + last), std::string(200, 'e') + "#2/id");
    EXPECT_EQ(addressOfLast(few + materials + last), '#' + std::to_string(count + 1) + "/id");
}

TEST(MaterialDatabaseOutlineTest, CountsThePointsOfAPropertyThatComesTwice)
{
    const std::string property = "<property type='density'><point><x>1</x></point></property>";
    EXPECT_THAT(valuesOf(database("<material><name>a</name>" + property
                                  + "<property type='viscosity'><point><x>2</x></point></property>" + property
                                  + "</material><material>" + property + "</material>")),
                ElementsAre("a/name=a", "a/density/points/1/x=1", "a/viscosity/points/1/x=2",
                            "a/density/points/2/x=1", "#2/density/points/1/x=1"));
}

/// Of "\u010D" in UTF-16 a load leaves out one byte, and here two of them.
TEST(MaterialDatabaseOutlineTest, TellsWhatALoadReadsWhereItLosesBytesOfCharacters)
{
    const Marked marked("<material_database><material type='fluid'><name>[[\xC4\x8D\xC4\x8D]]</name>"
                        "<id>77</id></material></material_database>");
    EXPECT_THAT(valuesOf(marked.inUtf16().bytes()),
                ElementsAre("\xC4\x81/type=fluid", "\xC4\x81/name=\xC4\x81", "\xC4\x81/id=77"));
}

/// A check knows the names before it reads the materials, and an outline finds them out on its way.
TEST(MaterialDatabaseOutlineTest, HasTheAddressesOfACheck)
{
    const std::string id = "<id>x</id>"; // of which there is a finding
    const auto material = [&id](const std::string& rest) { return "<material>" + id + rest + "</material>"; };
    const auto named = [&material](const std::string& name) { return material("<name>" + name + "</name>"); };
    std::string manyPoints;
    for (int i = 0; i < 40'000; ++i)
        manyPoints += "<point><x>1</x><y>2</y></point>";
    manyPoints = "<property>" + manyPoints + "</property>";
    const std::string entities = "<!DOCTYPE a [<!ENTITY e 'Air'><!ENTITY f '<name>Oil</name>'>]>";
    const std::string mark = "\xEF\xBB\xBF";
    std::string longName;
    for (int i = 0; i < 60; ++i)
        longName += "\xC3\xA4\xF0\x9F\x98\x80";

    const std::string air = named("Air");
    const std::string files[] = {
        database(""),
        database(air),
        database(material("") + named("") + named(" ")),
        database(air + air + material("") + air),
        database(named("Air#2") + named("a/b%") + named("#2")),
        database(material("<name>Air</name><name>Oil</name>") + material("<name>Oil</name><name/>")),
        database(named("A<b>c</b>i<!-- -->r") + air),
        database(named("A<![CDATA[<i>]]>r&lt;&#65;")),
        database(named(mark + "Air") + named(mark + mark + "Air")),
        database(named(std::string(200, 'a')) + named(std::string(201, 'a')) + named(std::string(500, 'a'))),
        database(named(longName) + named("x" + longName) + named(mark + longName)),
        entities + database(named("&e;") + air + material("&f;")),
        "<material_database>" + air + "<material>" + id + "<name>Ai",
        "<material_database><material>" + id + "<name>Air</name><property type=",
        "<material_database><material>" + id + "<name>A<b>i</name>",
        "<a>" + database(air) + database(air) + "</a>",
        database("<material>" + id + database(air) + "<name>Oil</name></material>"),
        database(material(manyPoints + "<name>Air</name>") + air),
        database(air + material(manyPoints + "<name>Air</name>")),
    };
    for (const std::string& bytes : files) {
        SCOPED_TRACE(bytes.substr(0, 200));
        const TemporaryFolder folder;
        const std::string path = folder.write("materials.xml", bytes);
        std::vector<QString> ofOutline;
        outline(path, FileKind::Materials, [&ofOutline](const Item& item) {
            if (item.address.endsWith(QLatin1String("/id")))
                ofOutline.push_back(item.address);
        });
        std::vector<QString> ofCheck;
        CheckOptions options;
        options.kind = FileKind::Materials;
        for (const Finding& finding : check(path, options).findings) {
            if (finding.code == QLatin1String("not-an-integer"))
                ofCheck.push_back(finding.address);
        }
        EXPECT_EQ(ofOutline, ofCheck);
    }
}

TEST(MaterialDatabaseOutlineTest, GivesWhatALoadMakesOfTheTexts)
{
    const TemporaryFolder folder;
    const std::string path =
        folder.write("materials.xml",
                     "<material_database version='1.2'><material type='\xEF\xBB\xBF"
                     "fluid'><name>\xEF\xBB\xBF"
                     "a</name>"
                     "<id> 7</id><ref_pressure>1,5</ref_pressure><property type='density'>"
                     "<independent_variable>kCond</independent_variable><value><![CDATA[1e1]]></value></"
                     "property></material>"
                     "</material_database>");
    std::vector<QVariant> values;
    outline(path, [&](const Item& item) { values.push_back(item.value); });
    EXPECT_THAT(values,
                ElementsAre(QVariant("1.2.0.0"), QVariant("fluid"), QVariant("a"), QVariant(7), QVariant(0.0),
                            QVariant("kKXX"), QVariant(10.0)));
}

} // namespace
} // namespace Nereo::Inspection
