#include "support/Assertions.h"
#include "support/FailingDevice.h"
#include "support/GoldenFile.h"
#include "support/PrivateAccess.h"
#include "support/TemporaryFolder.h"

#include "FileIO/MaterialDatabaseFileXmlReader.h"
#include "FileIO/MaterialDatabaseFileXmlWriter.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/MaterialDatabaseFile.h>

#include <gmock/gmock.h>

#include <QBuffer>

namespace Nereo::Io {

NEREO_PRIVATE_MEMBER(readDatabase, void (MaterialDatabaseFileXmlReader::*)(QXmlStreamReader&),
                     &MaterialDatabaseFileXmlReader::readDatabase)
NEREO_PRIVATE_MEMBER(readMaterial, void (MaterialDatabaseFileXmlReader::*)(QXmlStreamReader&),
                     &MaterialDatabaseFileXmlReader::readMaterial)
NEREO_PRIVATE_MEMBER(readProperty,
                     void (MaterialDatabaseFileXmlReader::*)(QXmlStreamReader&, MaterialProperty&),
                     &MaterialDatabaseFileXmlReader::readProperty)
NEREO_PRIVATE_MEMBER(readPoint, void (MaterialDatabaseFileXmlReader::*)(QXmlStreamReader&, MaterialProperty&),
                     &MaterialDatabaseFileXmlReader::readPoint)

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Util::Version;

std::vector<std::string> namesOf(const MaterialDatabaseFile& database)
{
    std::vector<std::string> names;
    for (int i = 0; i < database.count(); ++i)
        names.push_back(database.material(i).name());
    return names;
}

std::vector<Point> pointsOf(const MaterialProperty& property)
{
    std::vector<Point> points;
    for (int i = 0; i < property.pointCount(); ++i)
        points.push_back(property.point(i));
    return points;
}

class MaterialDatabaseFileXml : public ::testing::Test {
protected:
    /// Whether the document was read to its end without an error.
    bool read(const QByteArray& document)
    {
        QXmlStreamReader xml(document);
        EXPECT_TRUE(MaterialDatabaseFileXmlReader(database).read(xml));
        error = xml.errorString().toStdString();
        return !xml.hasError();
    }

    bool readContent(const QByteArray& content)
    {
        return read("<material_database>" + content + "</material_database>");
    }

    /// Reads the content of a material of its own.
    bool readMaterial(const QByteArray& content, const QByteArray& type = "fluid")
    {
        return readContent("<material type='" + type + "'>" + content + "</material>");
    }

    /// Reads the content of the viscosity of a material of its own.
    bool readViscosity(const QByteArray& content)
    {
        return readMaterial("<property type='viscosity'>" + content + "</property>");
    }

    const Material& material() const { return database.material(0); }
    MaterialProperty viscosity() const { return material().property(kVisc); }

    std::string written() const
    {
        QBuffer device;
        device.open(QIODevice::WriteOnly);
        QXmlStreamWriter xml(&device);
        xml.setAutoFormatting(true);
        MaterialDatabaseFileXmlWriter(database).write(xml);
        return device.data().toStdString();
    }

    /// The lines that are written for the one property of a material of an unknown type.
    std::string writtenProperty(const MaterialProperty& property)
    {
        database.clear();
        database.add(Material(std::string()));
        database.material(0).property(kVisc) = property;
        const std::string document = written();
        const std::size_t begin = document.find("        <property");
        return document.substr(begin, document.find("    </material>") - begin);
    }

    MaterialDatabaseFile database;
    TemporaryFolder folder;
    std::string error;
};

TEST_F(MaterialDatabaseFileXml, WritesAnEmptyDatabase)
{
    database.setVersion(Version(1, 2, 3, 4));
    EXPECT_EQ(written(), R"(<?xml version="1.0" encoding="UTF-8"?>
<material_database version="1.2.3.4"/>
)");
    EXPECT_TRUE(read(QByteArray::fromStdString(written())));
    EXPECT_EQ(database.count(), 0);
}

TEST_F(MaterialDatabaseFileXml, WritesEachKindOfMaterial)
{
    Material air("fluid");
    air.setName("Air & <Lüfter>");
    air.setId(7);
    air.setRefPressure(101325.0);
    air.setRefTemperature(293.15);
    air.setRefCompressibility(1234567.0);
    air.setVaporPressure(-0.0);
    air.setGasConstant(287.05);
    air.setDiffusionCoefficient(0.00001);
    air.property("density").setVariationType("EOS");
    air.property("density").setValue(1.2047);
    MaterialProperty& viscosity = air.property("viscosity");
    viscosity.setVariationType("piecewise_linear");
    viscosity.setValue(9.0);
    viscosity.setIndependentVariable(kT);
    viscosity.addPoint(0.0, 1.5);
    viscosity.addPoint(100.0, 2.25);
    database.add(air);

    Material copper("solid");
    copper.setName("Copper");
    copper.setId(-2147483647 - 1);
    copper.setRefPressure(101325.0);
    copper.setRefTemperature(293.15);
    copper.property("y_conductivity").setVariationType("same_as_kxx");
    database.add(copper);

    Material fan("centrifugal_fan");
    fan.setRefTemperature(293.15);
    fan.property("flow_rate").setValue(0.25); // its type isn't known any more
    database.add(fan);
    database.add(Material("no \"such\" type"));
    ASSERT_TRUE(database.saveTo(folder.path("materials.xml")));
    expectGolden(readBytes(folder.path("materials.xml")), "materials.xml");
}

TEST_F(MaterialDatabaseFileXml, WritesTextsAsTheirGettersGiveThem)
{
    const std::string marked = "\uFEFF\uFEFFx"; // of which the first mark is dropped where it is set
    Material material("\uFEFF\uFEFFfluid");
    material.setName(marked);
    MaterialProperty property(marked);
    property.setVariationType(marked);
    material.property(kVisc) = property;
    database.add(material);
    EXPECT_THAT(written(),
                ::testing::HasSubstr("    <material type=\"\uFEFFfluid\">\n"
                                     "        <name>\uFEFFx</name>\n"
                                     "        <property type=\"\uFEFFx\">\n"
                                     "            <variation_type>\uFEFFx</variation_type>\n"
                                     "        </property>\n"
                                     "    </material>\n"));
}

TEST_F(MaterialDatabaseFileXml, WritesWhatTheVariationUses)
{
    const std::string value = "            <value>2.5</value>\n";
    const std::string curve = "            <independent_variable>kT</independent_variable>\n"
                              "            <point>\n"
                              "                <x>1</x>\n"
                              "                <y>2</y>\n"
                              "            </point>\n";
    const struct {
        const char* variation;
        std::string numbers;
    } cases[] = {
        {"constant",                    value},
        {"equation_of_state",           value},
        {"EOS",                         value},
        {"piecewise_linear",            curve},
        {"piece_linear",                curve},
        {"polynomial",                  ""   },
        {"permeability",                ""   }, // the solver's code is that of "constant"
        {"adiabatic_equation_of_state", ""   },
        {"same_as_kxx",                 ""   },
        {"fan_curve",                   ""   },
        {"time_table",                  ""   },
        {"Constant",                    ""   },
        {"eos",                         ""   },
    };
    for (const auto& [variation, numbers] : cases) {
        MaterialProperty property("viscosity");
        property.setVariationType(variation);
        property.setValue(2.5);
        property.setIndependentVariable(kT);
        property.addPoint(1.0, 2.0);
        EXPECT_EQ(writtenProperty(property),
                  "        <property type=\"viscosity\">\n"
                  "            <variation_type>"
                      + std::string(variation) + "</variation_type>\n" + numbers + "        </property>\n");
    }
}

TEST_F(MaterialDatabaseFileXml, WritesACurveWithoutPointsAndAnEmptyVariation)
{
    MaterialProperty property("viscosity");
    property.setVariationType("piecewise_linear");
    EXPECT_EQ(writtenProperty(property), R"(        <property type="viscosity">
            <variation_type>piecewise_linear</variation_type>
            <independent_variable>kNone</independent_variable>
        </property>
)");
    property.setVariationType("");
    EXPECT_EQ(writtenProperty(property), R"(        <property type="viscosity">
            <variation_type></variation_type>
        </property>
)");
}

TEST_F(MaterialDatabaseFileXml, WritesTheNameOfTheIndependentVariable)
{
    const struct {
        int code;
        const char* name;
    } cases[] = {
        {0,   ""     },
        {1,   "kU"   },
        {5,   "kT"   },
        {20,  "kVeff"},
        {27,  "kKXX" },
        {47,  "kKYY" },
        {48,  "kKZZ" },
        {361, "kNone"},
    };
    for (const auto& [code, name] : cases) {
        MaterialProperty property("viscosity");
        property.setVariationType("piecewise_linear");
        property.setIndependentVariable(code);
        EXPECT_THAT(
            writtenProperty(property),
            ::testing::HasSubstr("<independent_variable>" + std::string(name) + "</independent_variable>\n"));
    }
}

TEST_F(MaterialDatabaseFileXml, WritesNumbersWithSixSignificantDigits)
{
    const struct {
        double number;
        const char* text;
    } cases[] = {
        {0.0,       "0"          },
        {-0.0,      "0"          },
        {101325.0,  "101325"     },
        {0.00001,   "1e-05"      },
        {0.0001,    "0.0001"     },
        {1234567.0, "1.23457e+06"},
        {999999.5,  "1e+06"      },
        {293.15,    "293.15"     },
        {-2.5e-300, "-2.5e-300"  },
        {1e30,      "1e+30"      },
    };
    for (const auto& [number, text] : cases) {
        MaterialProperty property("viscosity");
        property.setValue(number);
        EXPECT_EQ(QString::number(number, 'g', 6).toStdString(), text);
        EXPECT_THAT(writtenProperty(property),
                    ::testing::HasSubstr("<value>" + std::string(text) + "</value>"));
    }
}

TEST_F(MaterialDatabaseFileXml, ReadsTheElementsOfAMaterial)
{
    EXPECT_TRUE(
        readMaterial("<diffusion_coefficient>6</diffusion_coefficient>text<id>7</id><!-- c -->"
                     "<gas_constant>5</gas_constant><vapor_pressure>4</vapor_pressure><ref_compressibility>3"
                     "</ref_compressibility><ref_temperature>2</ref_temperature><ref_pressure>1.5e3"
                     "</ref_pressure><name> Lüfter &amp; <![CDATA[<x>]]></name>",
                     "solid"));
    EXPECT_EQ(material().type(), "solid");
    EXPECT_EQ(material().name(), " Lüfter & <x>");
    EXPECT_EQ(material().id(), 7);
    EXPECT_EQ(material().refPressure(), 1500.0); // also of a solid
    EXPECT_EQ(material().refTemperature(), 2.0);
    EXPECT_EQ(material().refCompressibility(), 3.0);
    EXPECT_EQ(material().vaporPressure(), 4.0);
    EXPECT_EQ(material().gasConstant(), 5.0);
    EXPECT_EQ(material().diffusionCoefficient(), 6.0);
}

TEST_F(MaterialDatabaseFileXml, TakesTheLastOfRepeatedElementsAndSkipsUnknownOnesWhole)
{
    EXPECT_TRUE(
        readMaterial("<name>a</name><id>1</id><ref_pressure>1</ref_pressure>"
                     "<odd><name>b</name><property type='nothing'/></odd><Name>c</Name><value>1</value>"
                     "<name>d</name><id>2</id><ref_pressure>2</ref_pressure><point><x>1</x></point>"
                     "<material type='solid'><name>e</name></material>"));
    EXPECT_THAT(namesOf(database), ElementsAre("d"));
    EXPECT_EQ(material().id(), 2);
    EXPECT_EQ(material().refPressure(), 2.0);

    EXPECT_TRUE(readContent("<odd><material><name>a</name></material></odd><Material/><material_database>"
                            "<material/></material_database><material><name>b</name></material>"));
    EXPECT_THAT(namesOf(database), ElementsAre("b"));
}

TEST_F(MaterialDatabaseFileXml, ReadsNumbersAsQtDoes)
{
    const struct {
        const char* text;
        double number;
        int integer;
    } cases[] = {
        {"12",                 12.0,         12        },
        {" \n 12\t",           12.0,         12        },
        {"+12",                12.0,         12        },
        {"-12",                -12.0,        -12       },
        {"012",                12.0,         12        },
        {"1<!-- c -->2",       12.0,         12        },
        {"&#49;<![CDATA[2]]>", 12.0,         12        },
        {"1e2",                100.0,        0         },
        {"1.5",                1.5,          0         },
        {".5",                 0.5,          0         },
        {"5.",                 5.0,          0         },
        {"2147483647",         2147483647.0, 2147483647},
        {"2147483648",         2147483648.0, 0         },
        {"0x10",               0.0,          0         },
        {"12 13",              0.0,          0         },
        {"12,5",               0.0,          0         },
        {"12a",                0.0,          0         },
        {"abc",                0.0,          0         },
        {"1e",                 0.0,          0         },
        {"\xD9\xA1\xD9\xA2",   0.0,          0         }, // digits, but not those
        {"",                   0.0,          0         },
        {" ",                  0.0,          0         },
    };
    for (const auto& [text, number, integer] : cases) {
        EXPECT_TRUE(readMaterial(QByteArray("<id>") + text + "</id><gas_constant>" + text
                                 + "</gas_constant><property type='viscosity'><value>" + text
                                 + "</value><point><x>" + text + "</x><y>" + text
                                 + "</y></point></property>"))
            << text;
        EXPECT_EQ(material().id(), integer) << text;
        EXPECT_EQ(material().gasConstant(), number) << text;
        EXPECT_EQ(viscosity().value(), number) << text;
        EXPECT_THAT(pointsOf(viscosity()), ElementsAre(Point(number, number))) << text;
    }
}

TEST_F(MaterialDatabaseFileXml, ReadsAProperty)
{
    EXPECT_TRUE(readViscosity("<independent_variable>kT</independent_variable><value>3</value>"
                              "<point><x>0</x><y>1.5</y></point>text<odd><value>9</value><point/></odd>"
                              "<point><y>2.25</y><z><x>8</x></z><x>100</x></point><Point/><name>n</name>"
                              "<variation_type>piecewise_linear</variation_type>"));
    EXPECT_EQ(viscosity().type(), "viscosity");
    EXPECT_EQ(viscosity().variationType(), "piecewise_linear");
    EXPECT_EQ(viscosity().value(), 3.0);
    EXPECT_EQ(viscosity().independentVariable(), 5);
    EXPECT_THAT(pointsOf(viscosity()), ElementsAre(Point(0.0, 1.5), Point(100.0, 2.25)));
    EXPECT_EQ(material().name(), "");
}

TEST_F(MaterialDatabaseFileXml, AppendsThePointsOfRepeatedProperties)
{
    EXPECT_TRUE(
        readMaterial("<property type='viscosity'><value>1</value><point><x>1</x><y>2</y></point></property>"
                     "<property type='density'/>"
                     "<property type='viscosity'><value>3</value><value>4</value>"
                     "<point/><point><x>5</x></point><point><y>6</y></point>"
                     "<point><x>1</x><x>7</x></point></property>"));
    EXPECT_EQ(viscosity().value(), 4.0);
    EXPECT_THAT(pointsOf(viscosity()),
                ElementsAre(Point(1.0, 2.0), Point(), Point(5.0, 0.0), Point(0.0, 6.0), Point(7.0, 0.0)));
}

TEST_F(MaterialDatabaseFileXml, KeepsVariationsAsTheyStandInTheFile)
{
    for (const char* variation : {"EOS", "piece_linear", "polynomial", "no such", " constant ", ""}) {
        EXPECT_TRUE(readViscosity(QByteArray("<variation_type>") + variation + "</variation_type>"));
        EXPECT_EQ(viscosity().variationType(), variation);
    }
    EXPECT_TRUE(readViscosity(""));
    EXPECT_EQ(viscosity().variationType(), "constant");
}

TEST_F(MaterialDatabaseFileXml, ReadsTheNameOfTheIndependentVariable)
{
    const struct {
        const char* name;
        int code;
    } cases[] = {
        {"kU",        1  },
        {"kT",        5  },
        {"kCond",     27 },
        {"kKXX",      27 },
        {"kKYY",      47 },
        {"kKZZ",      48 },
        {"kNone",     361},
        {"kSlipNode", 20 },
        {"kVeff",     20 },
        {"kt",        361},
        {" kT",       361},
        {"",          361},
    };
    for (const auto& [name, code] : cases) {
        EXPECT_TRUE(readViscosity(QByteArray("<independent_variable>") + name + "</independent_variable>"));
        EXPECT_EQ(viscosity().independentVariable(), code) << name;
    }
}

TEST_F(MaterialDatabaseFileXml, GivesAMaterialTheDefaultsOfItsType)
{
    EXPECT_TRUE(readMaterial("<property type='density'><value>2</value></property>"));
    EXPECT_THAT(material().propertyCodes(), ElementsAre(25, 26, 27, 28, 29, 30, 31, 34, 35));
    EXPECT_EQ(viscosity(), MaterialProperty("viscosity"));

    EXPECT_TRUE(readContent("<material/><material type=''/><material type='Fluid'/><material name='n'/>"));
    ASSERT_EQ(database.count(), 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_THAT(database.material(i).propertyCodes(), IsEmpty());
    EXPECT_EQ(database.material(0).type(), "");
    EXPECT_EQ(database.material(2).type(), "Fluid");
    EXPECT_EQ(database.material(3).name(), "");
}

TEST_F(MaterialDatabaseFileXml, ReadsPropertiesOfOneCodeIntoOne)
{
    EXPECT_TRUE(
        readMaterial("<property type='flow_rate'><variation_type>fan_curve</variation_type><value>1</value>"
                     "<point><x>1</x></point></property><property type='rotational_velocity'>"
                     "<variation_type>constant</variation_type><value>2</value><point><x>3</x></point>"
                     "</property>",
                     "centrifugal_fan"));
    EXPECT_THAT(material().propertyCodes(), ElementsAre(361));
    const MaterialProperty property = material().property(361);
    EXPECT_EQ(property.type(), "");
    EXPECT_EQ(property.variationType(), "constant");
    EXPECT_EQ(property.value(), 2.0);
    EXPECT_THAT(pointsOf(property), ElementsAre(Point(1.0, 0.0), Point(3.0, 0.0)));

    ASSERT_TRUE(database.saveTo(folder.path("fan.xml")));
    EXPECT_THAT(readBytes(folder.path("fan.xml")), ::testing::HasSubstr("<property type=\"\">"));
    EXPECT_FALSE(database.loadFrom(folder.path("fan.xml")));
    ASSERT_EQ(database.count(), 1);
    EXPECT_EQ(material().type(), "centrifugal_fan");
    EXPECT_THAT(material().propertyCodes(), IsEmpty());
}

TEST_F(MaterialDatabaseFileXml, RefusesAnUnknownPropertyTypeAndKeepsWhatCameBefore)
{
    for (const char* type : {"viscosty", "Density", "", "constant", "a & b"}) {
        EXPECT_FALSE(readContent("<material><name>a</name></material>"
                                 "<material type='fluid'><name>b</name><id>7</id><property type='"
                                 + QByteArray(type).replace("&", "&amp;")
                                 + "'><value>1</value></property><id>8</id></material>"
                                   "<material><name>c</name></material>"));
        EXPECT_EQ(error, "Unknown property type \"" + std::string(type) + "\"");
        EXPECT_THAT(namesOf(database), ElementsAre("a", "b"));
        EXPECT_EQ(database.material(1).id(), 7);
        EXPECT_EQ(database.material(1).propertyCodes().size(), 9u);
    }
    EXPECT_FALSE(readMaterial("<property/>"));
    EXPECT_FALSE(database.loadFrom(folder.write(
        "unknown.xml", "<material_database><material><property type='x'/></material></material_database>")));
    EXPECT_EQ(database.count(), 1);
    EXPECT_TRUE(readContent("<material/>")); // and stays usable
}

TEST_F(MaterialDatabaseFileXml, FindsDatabasesAnywhere)
{
    const struct {
        const char* document;
        std::vector<std::string> names;
    } cases[] = {
        {"<other/>",                                                                                 {}        },
        {"<other><material><name>a</name></material></other>",                                       {}        },
        {"<Material_Database><material><name>a</name></material></Material_Database>",               {}        },
        {"<a><b><material_database><material><name>a</name></material></material_database></b></a>", {"a"}     },
        {"<a><material_database><material><name>a</name></material></material_database>"
         "<material_database><material><name>b</name></material></material_database></a>",  {"a", "b"}},
        {"<!-- c --><?p i?><material_database><material/></material_database><!-- end -->\n",        {""}      },
    };
    for (const auto& [document, names] : cases) {
        database.add(Material());
        EXPECT_TRUE(read(document)) << document;
        EXPECT_EQ(namesOf(database), names) << document;
    }
}

TEST_F(MaterialDatabaseFileXml, TakesTheVersionWhenThereIsOne)
{
    const struct {
        const char* attributes;
        Version version;
    } cases[] = {
        {" version='2023.1.0.7'",           {2023, 1, 0, 7}},
        {" version=' 2023.1 '",             {2023, 1, 0, 0}},
        {" version='next'",                 {0, 0, 0, 0}   },
        {" version=''",                     {9, 9, 9, 9}   }, // the one before
        {"",                                {9, 9, 9, 9}   },
        {" Version='2023.1.0.7'",           {9, 9, 9, 9}   },
        {" other='1' version='2023.1.0.7'", {2023, 1, 0, 7}},
    };
    for (const auto& [attributes, version] : cases) {
        database.setVersion(Version(9, 9, 9, 9));
        EXPECT_TRUE(read(QByteArray("<material_database") + attributes + "/>")) << attributes;
        EXPECT_EQ(database.version(), version) << attributes;
    }
}

TEST_F(MaterialDatabaseFileXml, FailsAtBadXmlAndKeepsWhatCameBefore)
{
    const struct {
        const char* content; // of the second material
        const char* name;
        int id;
        std::vector<Point> points;
    } cases[] = {
        {"<name>b</name><id>7",                                                       "b",  7,  {}      },
        {"<id>7</id><name>ab<i/>c</name>",                                            "ab", 7,  {}      }, // what the stream gave of it
        {"<name>b</name><id>25<i/>00</id>",                                           "b",  25, {}      },
        {"<name>b</name></property>",                                                 "b",  0,  {}      },
        {"<name>b</name><odd><a></odd>",                                              "b",  0,  {}      },
        {"<name>b</name>&undefined;",                                                 "b",  0,  {}      },
        {"<name>b</name>\x01",                                                        "b",  0,  {}      },
        {"<property type='viscosity'><point><x>1</x></point><point><x>2</x><y>3<i/>",
         "",                                                                                0,
         {{1, 0}, {2, 3}}                                                                               },
        {"<property type='viscosity'><point><x>2</x><odd></point>",                   "",   0,  {{2, 0}}},
        {"<property type='viscosity'><point><x>5<y>6</y></x></point>",                "",   0,  {{5, 0}}},
        {"<property type='viscosity'></material>",                                    "",   0,  {}      },
    };
    for (const auto& [content, name, id, points] : cases) {
        EXPECT_FALSE(readContent(QByteArray("<material><name>a</name></material><material type='fluid'>")
                                 + content + "<id>99</id></material><material><name>c</name></material>"))
            << content;
        EXPECT_THAT(namesOf(database), ElementsAre("a", name)) << content;
        EXPECT_EQ(database.material(1).id(), id) << content;
        EXPECT_EQ(pointsOf(database.material(1).property(kVisc)), points) << content;
    }
}

TEST_F(MaterialDatabaseFileXml, TakesTheNumbersOfBrokenElements)
{
    readMaterial("<gas_constant>2.5<i/>9</gas_constant>");
    EXPECT_EQ(material().gasConstant(), 2.5);
    readViscosity("<value>4</value><value>2.5<i/>9</value>");
    EXPECT_EQ(viscosity().value(), 2.5);
    readViscosity("<variation_type>pol<i/>y</variation_type>");
    EXPECT_EQ(viscosity().variationType(), "pol");
    readViscosity("<independent_variable>kT<i/>x</independent_variable>");
    EXPECT_EQ(viscosity().independentVariable(), 5);
    read("<material_database><material><gas_constant>2.5");
    EXPECT_EQ(material().gasConstant(), 0.0);
}

TEST_F(MaterialDatabaseFileXml, FailsAtADocumentWithoutAnElement)
{
    for (const char* document : {"", "  \n", "text", "<?xml version='1.0'?>"})
        EXPECT_FALSE(read(document)) << document;
}

TEST_F(MaterialDatabaseFileXml, FailsAtEveryPrefixOfTheSample)
{
    const QByteArray sample = QByteArray::fromStdString(readBytes(NEREO_SAMPLES_DIR "/materials.xml"));
    const int complete = sample.lastIndexOf('>') + 1;
    for (int length = 0; length < complete; ++length)
        ASSERT_FALSE(read(sample.left(length))) << length;
    EXPECT_TRUE(read(sample.left(complete)));
}

TEST_F(MaterialDatabaseFileXml, EndsWhereTheDeviceFails)
{
    const struct {
        const char* readable;
        std::vector<std::string> names;
        bool isWhole;
    } cases[] = {
        {"",                                                                           {},    false},
        {"<material_database><material><name>a</name>",                                {"a"}, false},
        {"<material_database><material><property type='density'><point><x>1",          {""},  false},
        {"<material_database><material><name>a</name></material></material_database>", {"a"}, true },
    };
    for (const auto& [readable, names, isWhole] : cases) {
        FailingDevice device(readable);
        QXmlStreamReader xml(&device);
        EXPECT_TRUE(MaterialDatabaseFileXmlReader(database).read(xml));
        EXPECT_EQ(!xml.hasError(), isWhole) << readable;
        EXPECT_EQ(namesOf(database), names) << readable;
    }
}

TEST_F(MaterialDatabaseFileXml, LooksAtNamesWithoutTheirNamespace)
{
    EXPECT_TRUE(read("<m:material_database xmlns:m='urn:site' version='1.2.3.4'><m:material type='fluid'>"
                     "<m:name>Air</m:name><other xmlns='urn:other'><name>not this</name></other>"
                     "<m:property type='viscosity'><m:value>2.5</m:value></m:property>"
                     "</m:material></m:material_database>"));
    EXPECT_EQ(database.version(), Version(1, 2, 3, 4));
    EXPECT_EQ(material().name(), "Air");
    EXPECT_EQ(viscosity().value(), 2.5);
    EXPECT_FALSE(read("<m:material_database/>")); // a prefix that nobody declares
}

TEST_F(MaterialDatabaseFileXml, ReadsAMillionPoints)
{
    QByteArray points;
    for (int i = 0; i < 1000000; ++i)
        points += "<point><x>1</x><y>2.5</y></point>";
    EXPECT_TRUE(readViscosity(points));
    ASSERT_EQ(viscosity().pointCount(), 1000000);
    EXPECT_EQ(viscosity().point(999999), Point(1.0, 2.5));
}

TEST_F(MaterialDatabaseFileXml, FailsWhereTheFileCanNotBeOpenedOrWritten)
{
    database.add(Material());
    database.setVersion(Version(1, 2, 3, 4));
    EXPECT_FALSE(database.loadFrom(folder.path("missing.xml")));
    EXPECT_EQ(database.filePath(), folder.path("missing.xml"));
    EXPECT_EQ(database.count(), 1);
    EXPECT_EQ(database.version(), Version(1, 2, 3, 4));
    EXPECT_FALSE(database.saveTo(folder.path("missing/materials.xml")));
    EXPECT_FALSE(database.loadFrom(folder.write("empty.xml", "")));
    EXPECT_EQ(database.count(), 0);
}

TEST_F(MaterialDatabaseFileXml, FailsWhereTheDiskIsFull)
{
    for (const int count : {1, 1000}) { // what fits in the buffer, and what doesn't
        for (int i = 0; i < count; ++i)
            database.add(Material());
        EXPECT_FALSE(database.saveTo("/dev/full"));
    }
}

MaterialProperty constant(const std::string& type, double value, const std::string& variation = "constant")
{
    MaterialProperty property(type);
    property.setVariationType(variation);
    property.setValue(value);
    return property;
}

MaterialProperty curve(const std::string& variation, std::initializer_list<Point> points)
{
    MaterialProperty property("viscosity");
    property.setVariationType(variation);
    property.setIndependentVariable(kT);
    for (const Point& point : points)
        property.addPoint(point);
    return property;
}

struct SampleMaterial {
    const char* type;
    const char* name;
    int id;
    double references[6];
    std::vector<MaterialProperty> properties; // those that stand in the file
};

std::vector<SampleMaterial> sampleMaterials()
{
    return {
        {"fluid",
         "Air",                           1,
         {101325, 293.15, 0, 0, 287.05, 0},
         {constant("density", 1.2047, "EOS"),
          curve("piece_linear",
                {{273.15, 1.716e-5}, {293.15, 1.813e-5}, {373.15, 2.181e-5}, {573.15, 2.934e-5}}),
          constant("conductivity", 0.02587), constant("specific_heat", 1006.1)}                            },
        {"fluid",
         "Water",                         2,
         {101325, 293.15, 0, 2339, 0, 0},
         {constant("density", 998.21),
          curve("piecewise_linear",
                {{273.15, 0.0017914}, {293.15, 0.0010016}, {313.15, 0.0006527}, {333.15, 0.0004658}}),
          constant("conductivity", 0.59801), constant("specific_heat", 4184.1),
          constant("surface_tension", 0.07275)}                                                            },
        {"solid",
         "Copper (annealed)",             3,
         {0, 293.15, 0, 0, 0, 0},
         {constant("density", 8960), constant("x_conductivity", 398),
          constant("y_conductivity", 0, "same_as_kxx"), constant("z_conductivity", 0, "same_as_kxx"),
          constant("specific_heat", 384.6), constant("resistivity", 1.68e-8), constant("emissivity", 0.03)}},
        {"solid",
         "FR-4 laminate & \"prepreg\"",   4,
         {0, 293.15, 0, 0, 0, 0},
         {constant("density", 1850), constant("x_conductivity", 0.81), constant("y_conductivity", 0.81),
          constant("z_conductivity", 0.29), constant("specific_heat", 1100)}                               },
        {"internal_fan", "Lüfter 40 mm", 5, {0, 0, 0, 0, 0, 0}, {}                                        },
    };
}

/// A material that was loaded has what stands in the file and otherwise what its type starts with.
void expectSampleMaterial(const Material& material, const SampleMaterial& sample)
{
    EXPECT_EQ(material.type(), sample.type);
    EXPECT_EQ(material.name(), sample.name);
    EXPECT_EQ(material.id(), sample.id);
    const double references[] = {material.refPressure(),        material.refTemperature(),
                                 material.refCompressibility(), material.vaporPressure(),
                                 material.gasConstant(),        material.diffusionCoefficient()};
    EXPECT_THAT(references, ::testing::ElementsAreArray(sample.references)) << sample.name;

    Material expected {std::string(sample.type)};
    for (const MaterialProperty& property : sample.properties)
        expected.property(property.type()) = property;
    ASSERT_EQ(material.propertyCodes(), expected.propertyCodes()) << sample.name;
    for (const int code : expected.propertyCodes())
        EXPECT_EQ(material.property(code), expected.property(code)) << sample.name << ' ' << code;
}

TEST_F(MaterialDatabaseFileXml, LoadsTheSampleAndSavesItWithoutLoss)
{
    ASSERT_TRUE(database.loadFrom(NEREO_SAMPLES_DIR "/materials.xml"));
    ASSERT_TRUE(database.saveTo(folder.path("materials.xml")));
    MaterialDatabaseFile reloaded;
    ASSERT_TRUE(reloaded.loadFrom(folder.path("materials.xml")));

    const std::vector<SampleMaterial> samples = sampleMaterials();
    for (const MaterialDatabaseFile* loaded : {&database, &reloaded}) {
        EXPECT_EQ(loaded->version(), Version(2023, 1, 0, 0));
        ASSERT_EQ(loaded->count(), int(samples.size()));
        for (int i = 0; i < loaded->count(); ++i)
            expectSampleMaterial(loaded->material(i), samples[std::size_t(i)]);
    }

    ASSERT_TRUE(reloaded.saveTo(folder.path("again.xml")));
    EXPECT_EQ(readBytes(folder.path("again.xml")), readBytes(folder.path("materials.xml")));
}

TEST(MaterialDatabaseFileXmlDeathTest, StopsAtAnIndependentVariableThatIsNoCode)
{
    for (const int code : {-1, 362}) {
        MaterialDatabaseFile database;
        database.add(Material());
        database.material(0).property(kVisc).setVariationType("piecewise_linear");
        database.material(0).property(kVisc).setIndependentVariable(code);
        const TemporaryFolder folder;
        EXPECT_INDEX_ASSERTION(database.saveTo(folder.path("materials.xml")), "QVector<T>::at",
                               "FileIO/CodeNameTable");
    }
}

TEST(MaterialDatabaseFileXmlDeathTest, StopsWhenTheReaderLosesItsPlace)
{
    MaterialDatabaseFile database;
    MaterialDatabaseFileXmlReader reader(database);
    MaterialProperty property;
    QXmlStreamReader before(QByteArray("<other/>"));
    QXmlStreamReader other(QByteArray("<other/>"));
    other.readNextStartElement();
    const auto place = ::testing::HasSubstr(" in file FileIO/MaterialDatabaseFileXmlReader, line ");
    for (QXmlStreamReader* xml : {&before, &other}) {
        EXPECT_DEATH((reader.*readDatabase())(*xml), place);
        EXPECT_DEATH((reader.*readMaterial())(*xml), place);
        EXPECT_DEATH((reader.*readProperty())(*xml, property), place);
        EXPECT_DEATH((reader.*readPoint())(*xml, property), place);
    }
}

} // namespace
} // namespace Nereo::Io
