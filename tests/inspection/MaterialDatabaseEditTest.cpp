#include "Edited.h"

#include <gtest/gtest.h>

namespace Nereo::Inspection {
namespace {

constexpr FileKind materials = FileKind::Materials;

std::string database(const std::string& content)
{
    return "<material_database version=\"2024.0.0.0\">\n" + content + "</material_database>\n";
}

std::string water(const std::string& content)
{
    return " <material type=\"fluid\">\n  <name>Water</name>\n" + content + " </material>\n";
}

TEST(MaterialDatabaseEditTest, ChangesTheBytesOfTheValueOnly)
{
    const auto expectSet = [](const std::string& before, const char* address, const char* value,
                              const std::string& after) {
        expectEdited(materials, database(before), setTo(address, value), database(after));
    };
    const std::string steam = " <material type=\"fluid\"><name>Steam</name><id>3</id></material>\n";
    expectSet(water("  <id> 1 </id><!-- a -->\n") + steam, "Water/id", "2",
              water("  <id> 2 </id><!-- a -->\n") + steam);
    expectSet(water("  <id>1</id><id>2</id>\n"), "Water/id", "4", water("  <id>1</id><id>4</id>\n"));
    expectSet(water("") + water("<id>1</id>"), "Water#2/id", "2", water("") + water("<id>2</id>"));

    const std::string constant =
        "<property type=\"density\"><variation_type>constant</variation_type><value>";
    expectSet(water(constant + "1</value></property>"), "Water/density/value", "0.50",
              water(constant + "0.50</value></property>"));
    const std::string curve = "<property type=\"density\"><variation_type>piecewise_linear</variation_type>"
                              "<independent_variable>kT</independent_variable>"
                              "<point><x>1</x><y>2</y></point><point><x>";
    expectSet(water(curve + "3</x><y>4</y></point></property>"), "Water/density/points/2/x", "5",
              water(curve + "5</x><y>4</y></point></property>"));
}

TEST(MaterialDatabaseEditTest, GivesAMaterialAnotherName)
{
    const std::string ice = " <material type=\"fluid\"><name>Ice</name><id>5</id></material>\n";
    const std::vector<Edit> edits {
        {"Water/name", QString("Ice")},
        {"Ice/id",     QString("2")  }
    };
    EXPECT_EQ(edited(materials, database(water("<id>1</id>")), edits),
              database(" <material type=\"fluid\">\n  <name>Ice</name>\n<id>2</id> </material>\n"));
    EXPECT_EQ(edited(materials, database(water("<id>1</id>") + ice), edits), "refused: NewFinding");
    EXPECT_EQ(edited(materials, database(water("") + water("")), setTo("Water#2/name", "a/b")),
              database(water("") + " <material type=\"fluid\">\n  <name>a/b</name>\n </material>\n"));
}

TEST(MaterialDatabaseEditTest, AddsElementsInTheOrderOfAWriter)
{
    expectEdited(materials, database(water("  <vapor_pressure>1</vapor_pressure>\n")),
                 {
                     {"Water/id",                    QString("1")},
                     {"Water/ref_temperature",       QString("2")},
                     {"Water/diffusion_coefficient", QString("3")},
    },
                 database(water("  <id>1</id>\n  <ref_temperature>2</ref_temperature>\n"
                                "  <vapor_pressure>1</vapor_pressure>\n"
                                "  <diffusion_coefficient>3</diffusion_coefficient>\n")));
    expectEdited(
        materials, database(water("  <property type=\"density\">\n   <value>1</value>\n  </property>\n")),
        setTo("Water/density/variation_type", "constant"),
        database(water("  <property type=\"density\">\n   <variation_type>constant</variation_type>\n"
                       "   <value>1</value>\n  </property>\n")));
    expectEdited(materials, database(" <material type=\"fluid\"/>\n"), setTo("#1/name", "Ice"),
                 database(" <material type=\"fluid\">\n     <name>Ice</name>\n </material>\n"));
    expectEdited(materials,
                 database(water("  <property/><property a='b'/><property a='b' type = \"density\">"
                                "<value>1</value></property>\n")),
                 setTo("Water/density/variation_type", "constant"),
                 database(water("  <property/><property a='b'/><property a='b' type = \"density\">"
                                "<variation_type>constant</variation_type><value>1</value></property>\n")));
    const std::string curve = "<property type=\"density\"><variation_type>piecewise_linear</variation_type>"
                              "<independent_variable>kT</independent_variable><point>";
    EXPECT_EQ(edited(materials, database(water(curve + "<x>1</x></point></property>")),
                     setTo("Water/density/points/1/y", "4")),
              database(water(curve + "<x>1</x><y>4</y></point></property>")));
    EXPECT_EQ(edited(materials, database(water(curve + "<x>1</x></point><point><y>2</y></point></property>")),
                     setTo("Water/density/points/2/x", "4")),
              database(water(curve + "<x>1</x></point><point><x>4</x><y>2</y></point></property>")));
}

/// Elements that aren't those of the address stand before them.
TEST(MaterialDatabaseEditTest, FindsTheElementsOfAnAddress)
{
    const std::string ice = " <material type=\"fluid\"><name>Ice</name></material>\n";
    const std::string before = "<other>" + ice + "</other><note/>" + ice + "<x:note xmlns:x=\"y\"/>";
    const std::string steel = " <material type=\"solid\"><name>Steel</name>";
    expectEdited(materials, database(before + water("") + steel + "</material>\n"), setTo("Water/id", "1"),
                 database(before + water("  <id>1</id>\n") + steel + "</material>\n"));
    expectEdited(materials, database(before + water("") + steel + "</material>\n"), setTo("Steel/id", "1"),
                 database(before + water("") + steel + "<id>1</id></material>\n"));
    EXPECT_EQ(edited(materials,
                     "<material><material_database "
                     "version='1.0'><material><name>Ice</name></material></material_database></material>",
                     setTo("Ice/id", "1")),
              "<material><material_database "
              "version='1.0'><material><name>Ice</name><id>1</id></material></material_database></material>");

    const auto density = [](const std::string& content) {
        return "<property type=\"density\">" + content + "</property>";
    };
    const std::string others = "<property type=\"viscosity\"><point><x>1</x></point></property>"
        + density("<point><x>2</x></point>") + "<point/>";
    expectEdited(
        materials,
        database(water(others + density("<other/><point><x>3</x></point><point><x>4</x></point>"))),
        setTo("Water/density/points/3/y", "5"),
        database(water(others + density("<other/><point><x>3</x></point><point><x>4</x><y>5</y></point>"))));
    expectEdited(materials, database(water(others + density("<other/><value>1</value>"))),
                 setTo("Water/density/variation_type", "constant"),
                 database(water(
                     others + density("<variation_type>constant</variation_type><other/><value>1</value>"))));
}

/// Those of tags that are near don't count, nor what stands in quotes.
TEST(MaterialDatabaseEditTest, FindsTheAttributesOfAProperty)
{
    const char* const tags[] = {
        "<property type='density'>",
        "<property\ttype\n=\r\n\"density\">",
        "<property a='\">' b=\"/'=>\" type='density'>",
        "<property  xtype='viscosity' typ='b' type='density' typed='viscosity'  >",
    };
    for (const std::string tag : tags) {
        const auto withValues = [&](const std::string& values) {
            return database(water(tag + values
                                  + "</property><property><other type='density'/></property>"
                                    "<property a='type='><other/></property>"));
        };
        EXPECT_EQ(edited(materials, withValues("<value>1</value>"),
                         setTo("Water/density/variation_type", "constant")),
                  withValues("<variation_type>constant</variation_type><value>1</value>"));
    }
}

TEST(MaterialDatabaseEditTest, EscapesWhatAnAttributeCannotHold)
{
    const auto ofType = [](const std::string& type) {
        return database("<material type='" + type + "'><name>Ice</name></material>\n");
    };
    EXPECT_EQ(edited(materials, ofType("odd"), setTo("Ice/type", "<>&\"' a\tb\nc\rd")),
              ofType("&lt;&gt;&amp;&quot;&apos; a&#9;b&#10;c&#13;d")); // a check knew no such type before
}

/// Where a load ends early, what follows isn't there for it.
TEST(MaterialDatabaseEditTest, AddsWhatALoadReads)
{
    const std::string start = "<material_database version='1.0'><material type='fluid'><name>Water</name>";
    const std::string end = "&n;<id>1</id></material></material_database>";
    EXPECT_EQ(edited(materials, start + end, setTo("Water/id", "2")), start + "<id>2</id>" + end);
}

/// A load gives the name of a variable back as that of its code.
TEST(MaterialDatabaseEditTest, TakesAnyNameOfAVariable)
{
    const auto curve = [](const std::string& variable) {
        return database(water("<property type=\"density\"><variation_type>piecewise_linear</variation_type>"
                              "<independent_variable>"
                              + variable
                              + "</independent_variable>"
                                "<point><x>1</x><y>2</y></point></property>"));
    };
    for (const char* variable : {"kT", "kCond", "kKXX", "kVeff"})
        EXPECT_EQ(edited(materials, curve("kP"), setTo("Water/density/independent_variable", variable)),
                  curve(variable));
}

TEST(MaterialDatabaseEditTest, KeepsTheEncodingOfTheDeclaration)
{
    const std::string declaration = "<?xml version='1.0' encoding='ISO-8859-1'?>";
    const auto named = [&](const std::string& name) {
        return declaration + database(" <material type=\"fluid\"><name>" + name + "</name></material>\n");
    };
    EXPECT_EQ(edited(materials, named("\xF6"),
                     setTo(QString::fromUtf8("\xC3\xB6/name"), QString::fromUtf8("\xC3\xA4"))),
              named("\xE4"));
}

TEST(MaterialDatabaseEditTest, RefusesWhatCannotBe)
{
    const std::string file = database(
        water("<id>1</id><property type=\"density\"><variation_type>constant</variation_type><value>1</value>"
              "</property><property type=\"viscosity\"><variation_type>constant</variation_type>"
              "<value>1</value></property>")
        + " <material type=\"solid\"><name>Steel</name><id>2</id></material>\n");
    const struct {
        const char* address;
        const char* value;
        const char* result;
    } cases[] = {
        {"Water/id",                           "x",                "refused: NotAnInteger"  },
        {"Water/id",                           "2",                "refused: NewFinding"    }, // Steel's
        {"Water/density/value",                "x",                "refused: NotANumber"    },
        {"Water/density/variation_type",       "piecewise_linear", "refused: NewFinding"    },
        {"Water/density/variation_type",       "unheard of",       "refused: NewFinding"    },
        {"Water/density/independent_variable", "kT",               "refused: NewFinding"    }, // not used
        {"Water/density/points/1/x",           "1",                "refused: NotThere"      },
        {"Water/specific_heat/value",          "1",                "refused: NotThere"      },
        {"Water/density/colour",               "1",                "refused: UnknownAddress"},
        {"Water/colour",                       "1",                "refused: UnknownAddress"},
        {"Water/type",                         "unheard of",       "refused: NewFinding"    },
        {"Steel/vapor_pressure",               "1",                "refused: NewFinding"    }, // a solid has none
        {"Ice/id",                             "1",                "refused: NotThere"      },
        {"Ice/colour",                         "1",                "refused: UnknownAddress"},
        {"Ice/type",                           "1",                "refused: NotThere"      },
        {"Ice/density/colour",                 "1",                "refused: NotThere"      },
        {"Ice/density/lines/1/x",              "1",                "refused: NotThere"      },
        {"Water/density/type",                 "1",                "refused: UnknownAddress"},
        {"Water/density/points/x/x",           "1",                "refused: NotThere"      },
        {"type/colour",                        "1",                "refused: UnknownAddress"},
        {"Ice",                                "1",                "refused: NotThere"      },
        {"Water",                              "1",                "refused: UnknownAddress"},
        {"Water/type",                         "a\tb\nc",          "refused: NewFinding"    },
        {"Water/density/points/1",             "1",                "refused: UnknownAddress"},
        {"Water/density/lines/1/x",            "1",                "refused: UnknownAddress"},
        {"Water/density/points/1/x/1",         "1",                "refused: UnknownAddress"},
        {"version",                            "1",                "refused: NotAVersion"   },
    };
    for (const auto& [address, value, result] : cases)
        EXPECT_EQ(edited(materials, file, setTo(address, value)), result) << address << ' ' << value;
    const std::string noVersion = "<material_database></material_database>";
    EXPECT_EQ(edited(materials, noVersion, setTo("version", "2024.0.0.0")), "refused: NotThere");
    EXPECT_EQ(edited(materials, file, removed("Water/id")), "refused: NotRemovable");
    EXPECT_EQ(edited(materials, file, removed("Ice/id")), "refused: NotThere");
}

TEST(MaterialDatabaseEditTest, SetsOfPropertiesOfOneTypeTheLast)
{
    EXPECT_EQ(edited(materials,
                     database(water("<property type=\"density\"><value>1</value></property>"
                                    "<property type=\"density\"><value>2</value></property>")),
                     setTo("Water/density/value", "3")),
              database(water("<property type=\"density\"><value>1</value></property>"
                             "<property type=\"density\"><value>3</value></property>")));
}

TEST(MaterialDatabaseEditTest, RefusesAValueThatAnotherPropertyMayOverride)
{
    EXPECT_EQ(edited(materials,
                     database(water("<property type=\"conductivity\"><value>1</value></property>"
                                    "<property type=\"x_conductivity\"><value>2</value></property>")),
                     setTo("Water/conductivity/value", "3")),
              "refused: Doubtful");
    const std::string steel = " <material type=\"solid\"><name>Steel</name>"
                              "<property type=\"x_conductivity\"><value>2</value></property></material>\n";
    const std::string conductivity = "<property type=\"conductivity\"><value>";
    EXPECT_EQ(
        edited(materials, database(water(conductivity + "1</value></property>") + steel),
               setTo("Water/conductivity/value", "3")),
        database(water(conductivity + "3</value></property>") + steel)); // in another material it doesn't
}

} // namespace
} // namespace Nereo::Inspection
