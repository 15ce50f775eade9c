#include "support/Pipe.h"
#include "support/TemporaryFolder.h"

#include <Inspection/ValueTable.h>
#include <NereoInspection/Comparison.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>

namespace Nereo::Inspection {
namespace {

using Outcome = Comparison::Outcome;

/// What differs between bytes in files of these names, a line each.
std::string compared(const std::string& nameOfA, const std::string& a, const std::string& nameOfB,
                     const std::string& b, const ComparisonOptions& options = {})
{
    const TemporaryFolder folder;
    const std::string other = folder.write("b-" + nameOfB, b);
    const Comparison comparison = compare(folder.write("a-" + nameOfA, a), other, options);
    EXPECT_EQ(comparison.outcome, Outcome::Compared) << comparison.message.toStdString();
    EXPECT_EQ(comparison.areSame(), comparison.differences.empty());
    EXPECT_EQ(comparison.message, "");
    EXPECT_EQ(comparison.file, "");
    return toText(comparison).toStdString();
}

struct Case {
    const char* what;
    std::string a;
    std::string b;
    const char* differences;
};

/// Expects the differences, and the same seen from the other file.
void expectDifferences(const std::string& name, const Case& example)
{
    EXPECT_EQ(compared(name, example.a, name, example.b), example.differences) << example.what;
    EXPECT_EQ(compared(name, example.a, name, example.a), "") << example.what;
    EXPECT_EQ(compared(name, example.a, name, example.a + '\n'), "") << example.what; // not the same bytes
    const TemporaryFolder folder;
    const Comparison back = compare(folder.write("b" + name, example.b), folder.write("a" + name, example.a));
    const Comparison forth = compare(folder.path("a" + name), folder.path("b" + name));
    EXPECT_EQ(back.differences.size(), forth.differences.size()) << example.what;
}

TEST(ComparisonTest, ComparesConfigurationsInText)
{
    const Case cases[] = {
        {"a value",             "MaxIter 5\nWidth 7\n",      "MaxIter 6\nWidth 7\n",            "MaxIter: 5 -> 6\n"         },
        {"spelling",            "StopTime 1e3\nMaxIter 5\n", "StopTime  1000.0\nMaxIter +5",    ""                          },
        {"order, empty lines",  "MaxIter 5\nWidth 7\n",      "Width 7\n\nMaxIter 5\n",          ""                          },
        {"what one leaves out", "MaxIter 5\nWidth 7\n",      "MaxIter 5\n",                     "- Width: 7\n"              },
        {"the other one",       "Width 7\n",                 "MaxIter 5\nWidth 7\n",            "+ MaxIter: 5\n"            },
        {"the last one counts", "MaxIter 5\nMaxIter 6\n",    "MaxIter 6\n",                     ""                          },
        {"in the other, too",   "MaxIter 5\n",               "MaxIter 6\nMaxIter 5\n",          ""                          },
        {"in both",             "MaxIter 1\nMaxIter 5\n",    "MaxIter 2\nMaxIter 5\n",          ""                          },
        {"both and differ",     "MaxIter 5\nMaxIter 1\n",    "MaxIter 5\nMaxIter 2\n",          "MaxIter: 1 -> 2\n"         },
        {"what a load reads",   "MaxIter abc\nWidth x\n",    "MaxIter 0\nWidth y\n",            ""                          },
        {"as it is spelled",    "MaxIter abc\n",             "MaxIter 1\n",                     "MaxIter: abc -> 1\n"       },
        {"also a repeated one", "MaxIter a\nMaxIter 1\n",    "MaxIter b\n",                     "MaxIter: 1 -> b\n"         },
        {"one that it lacks",   "Width 1\n",                 "MaxIter 5\nMaxIter 6\nWidth 1\n", "+ MaxIter: 6\n"            },
        {"blanks of a text",    "JobPrefix a  b\n",          "JobPrefix a b\n",                 ""                          },
        {"a text",              "JobPrefix \xC3\xA4\n",      "JobPrefix b\n",                   "JobPrefix: \xC3\xA4 -> b\n"},
        {"ASCII behind it",     "ExePath \xC3\xA4z\n",       "ExePath y\n",                     "ExePath: \xC3\xA4z -> y\n" },
        {"a control character", "JobPrefix \xC2\x80\n",      "JobPrefix b\n",                   "JobPrefix: \\u0080 -> b\n" },
        {"minus zero",          "StopTime -0\n",             "StopTime 0\n",                    ""                          },
        {"unlike numbers",      "StopTime inf\nWidth 1\n",   "StopTime nan\nWidth 1\n",         "StopTime: inf -> nan\n"    },
        {"like ones",           "StopTime nan\nWidth 1\n",   "StopTime NaN\nWidth 1\n",         ""                          },
    };
    for (const Case& example : cases)
        expectDifferences("file.cfg", example);
}

TEST(ComparisonTest, TellsWhatOnlyOneSaysWhereItStands)
{
    EXPECT_EQ(compared("file.cfg", "MaxIter 1\nWidth 2\nHeight 3\nStopTime 4\n", "file.cfg",
                       "TimeStepSize 5\nMaxIter 1\nJobPrefix a\nHeight 4\nStopTime 4\nAnalyzePath b\n"),
              "+ TimeStepSize: 5\n"
              "+ JobPrefix: a\n"
              "- Width: 2\n"
              "Height: 3 -> 4\n"
              "+ AnalyzePath: b\n");
}

std::string configuration(const std::string& settings, const std::string& version = "2024.1.0.0")
{
    return "<?xml version='1.0'?>\n<Nereo2Config Version='" + version + "'>" + settings + "</Nereo2Config>";
}

TEST(ComparisonTest, ComparesConfigurationsInXml)
{
    const Case cases[] = {
        {"comments, blanks",                                      configuration("<MaxIter>5</MaxIter>"),
         configuration("\n <!-- of the load -->\n <MaxIter> 5\n</MaxIter>"),                                        ""                                                                    },
        {"the spelling of a version",                             configuration("",                      "2024.1"), configuration(""),                                                      ""},
        {"the version",                                                       configuration("",                                                                                "2024.1"),                   configuration("", "2023"), "version: 2024.1 -> 2023\n"},
        {"entities",                                                configuration("<JobPrefix>a&amp;b</JobPrefix>"),
         configuration("<JobPrefix>a<![CDATA[&]]>c</JobPrefix>"),                                                                   "JobPrefix: a&b -> a&c\n"                                                                                                                               },
        {"a number with a comment", configuration("<MaxIter>1<!-- -->2</MaxIter>"),
         configuration("<MaxIter>13</MaxIter>"),"MaxIter: 12 -> 13\n"},
        {"an element that isn't known",                  configuration("<Other>1</Other>"),                                  configuration("<Other>2</Other>"),
         ""                                                                                                                                                                                                                                                               },
    };
    for (const Case& example : cases)
        expectDifferences("file.xml", example);
}

/// A load of them fails, or stops early.
TEST(ComparisonTest, ComparesWhatCanBeReadOfFaultyDocuments)
{
    const std::string five = configuration("<MaxIter>5</MaxIter>");
    const struct {
        std::string other;
        const char* differences;
    } cases[] = {
        {configuration("<MaxIter>5<b/>6</MaxIter>"),             "MaxIter: 5 -> 56\n"                   },
        {configuration("<MaxIter/>"),                            "MaxIter: 5 -> \n"                     },
        {"<Nereo2Config Version=''><MaxIter>5</MaxIter><Width>", "version: 2024.1.0.0 -> \n+ Width: \n" },
        {"<!-- <Nereo2Config> --><a>",                           "- version: 2024.1.0.0\n- MaxIter: 5\n"},
    };
    for (const auto& [other, differences] : cases)
        EXPECT_EQ(compared("a.xml", five, "b.xml", other), differences) << other;
}

/// The kind is found out without reading all of the document.
TEST(ComparisonTest, ComparesDocumentsWhoseRootIsAnotherAfterAll)
{
    const std::string comment = "<!-- " + std::string(3 << 20, '.') + " -->";
    for (const std::string root : {"Nereo2Config", "material_database"}) {
        const std::string document = "<!-- <" + root + "/> -->" + comment + "<a><MaxIter>5</MaxIter></a>";
        EXPECT_EQ(compared("a.xml", document, "b.xml", "<" + root + "/>"), "") << root;
    }
}

TEST(ComparisonTest, WritesADifferenceOnOneLine)
{
    EXPECT_EQ(compared("file.xml", configuration("<JobPrefix>a\nb</JobPrefix><Width>1</Width>"), "file.xml",
                       configuration("<JobPrefix>c\td</JobPrefix><AnalyzePath>\n</AnalyzePath>")),
              "JobPrefix: a\\nb -> c\\u0009d\n+ AnalyzePath: \\n\n- Width: 1\n");
}

TEST(ComparisonTest, ComparesTheFormsOfAConfigurationWithEachOther)
{
    const std::string xml =
        configuration("<MaxIter>5</MaxIter><JobPrefix>a &lt; b</JobPrefix><Width>7</Width>");
    EXPECT_EQ(compared("file.xml", xml, "file.cfg", "JobPrefix a < b\nWidth 7\nMaxIter 5\n"), "");
    EXPECT_EQ(compared("file.cfg", "JobPrefix a < b\nMaxIter 6\n", "file.xml", xml),
              "+ Width: 7\nMaxIter: 6 -> 5\n");
}

TEST(ComparisonTest, ComparesControlFiles)
{
    const std::string header = "NEREO Ver 1\n\n";
    const std::string title = " *** Title\na\n";
    const std::string relaxation = " *** Relaxation\nkU 0.5 0\nkV 0.5 0\n";
    const std::string materials = " *** Property Settings\n1 0 1 2 Steel\n293.15\n"
                                  "kRho 0 0 7\nkCp 0 0 1\nkKXX 0 0 2\nkKYY 0 0 2\nkKZZ 0 0 2\nkEmiss 0 0 1\n"
                                  "kEResist 0 0 1\n-----end of this index property data\n";
    const Case cases[] = {
        {"the order of sections",                  header + title + relaxation,                             header + relaxation + title,                       ""                                      },
        {"the spelling of a title and of numbers", header + " *** Relaxation\nkU .5 0 comment\nkV 0.5 0\n",
         header + " ***   Relaxation \n  kU 5e-1 0\nkV 0.50 0.0\n",                                                                                            ""                                      },
        {"a number",                               header + relaxation,                                     header + " *** Relaxation\nkU 0.25 0\nkV 0.5 0\n",
         "relaxation/kU/under: 0.5 -> 0.25\n"                                                                                                                                                          },
        {"a record that one file lacks",           header + relaxation,                                     header + " *** Relaxation\nkV 0.5 0\n",
         "- relaxation/kU/under: 0.5\n- relaxation/kU/inertial: 0\n"                                                                                                                                   },
        {"flags",                                  header + " *** Flag section\n2\nx 1\ny 2\n",             header + " *** Flag section\n2\ny 2\nx 3\n",
         "flags/x: 1 -> 3\n"                                                                                                                                                                           },
        {"a second flag of one name",              header + " *** Flag section\n2\nx 1\nx 2\n",
         header + " *** Flag section\n1\nx 1\n",                                                                                                               "- flags/x#2: 2\n"                      },
        {"a mark before the name of a section",    header + " *** \xEF\xBB\xBFMine\n1\n",
         header + " *** Mine\n1\n",                                                                                                                            "+ Mine/1: 1\n- \xEF\xBB\xBFMine/1: 1\n"},
        {"a material that one file lacks",         header + " *** Property Settings\n",                     header + materials,
         "+ property-settings/Steel: 1\n"                                                                                                                                                              },
    };
    for (const Case& example : cases)
        expectDifferences("file.ctl", example);
}

std::string database(const std::string& materials)
{
    return "<material_database version='1.0'>" + materials + "</material_database>";
}

std::string material(const std::string& name, const std::string& content)
{
    return "<material type='fluid'><name>" + name + "</name>" + content + "</material>";
}

std::string property(const std::string& type, const std::string& content)
{
    return "<property type='" + type + "'><variation_type>constant</variation_type>" + content
        + "</property>";
}

TEST(ComparisonTest, ComparesMaterials)
{
    const std::string density = property("density", "<value>5</value>");
    const std::string viscosity = property("viscosity", "<value>7</value>");
    const std::string water = material("Water", "<id>1</id>" + density + viscosity);
    const std::string air = material("Air", "<id>2</id>" + density);
    const std::string curve = "<property type='density'><point><x>1</x><y>2</y></point>";
    const Case cases[] = {
        {"their order",                                                           database(water + air),                 database(air + water), ""                                                                                   },
        {                                                                                                             "one with nothing in it before others",                                                  database(water + air), database(water + "<material/>" + air),
         "+ #2: \n"                                                                                                                                                                                                                },
        {                                                                                            "the order in one",                                              database(water),                                               database(material("Water",                                                                                                                                    viscosity + "<id>1</id>" + density)),
         ""},
        {                                                                                                                                                                                                                                                                                                                             "a value",                                               database(water),
         database(material("Water",                                     "<id>1</id>" + density + property("viscosity",                                                                                                                                                                                          "<value>7.5</value>"))),
         "Water/viscosity/value: 7 -> 7.5\n"},
        {                                                                                                                                                                                                                                                                                                      "a value that one file lacks",                                                        database(water),             database(material("Water", density + viscosity)),
         "- Water/id: 1\n"},
        {                                                                                                                                                                                                                                                                                                                        "a material",                                                  database(water + air),                       database(water),      "- Air: fluid\n"                                                                                     },
        {                                                                                                  "a property",                                              database(water + air),                                                   database(material("Water",                                                                                                         "<id>1</id>" + viscosity) + air),
         "- Water/density: constant\n"},
        {                                                                                                                                                                                                                                                                            "a material with nothing in it",                                        database(water),                                                                   database(water + "<material/>"),                      "+ #2: \n"                                                       },
        {                                                                                              "a property with nothing in it", database(water),
         database(material("Water",                                                                                                            "<id>1</id>" + density + viscosity + "<property type='emissivity'/>")),
         "+ Water/emissivity: \n"},
        {                                                                                                                                                                                                             "the second of one name",                                                   database(water + water),                                                                                        database(water),                                                                                                     "- Water#2: fluid\n"                 },
        { "a point",                                                database(material("a",                                                       curve + "<point><x>3</x><y>4</y></point></property>")),
         database(material("a",                                                                                                                                                   curve + "</property>")),
         "- a/density/points/2/x: 3\n- a/density/points/2/y: 4\n"},
        {                                                                                                                                                                                        "a value again",                                                   database(material("a",                                                                          "<id>1</id><id>2</id>")),
         database(material("a",                                                                                                                                                                                  "<id>2</id>")), ""},
        {                                                                                            "a property again",                                           database(material("a",                                                           density + property("density",                                                                                                                 "<value>6</value>"))),
         database(material("a", property("density", "<value>6</value>"))), ""},
        {                                                                                                                                                                                                                                                                           "names of values for names",                                                                       database(material("version",                                                                                  density)),
         database(material("id", density)), "+ id: fluid\n- version: fluid\n"},
        {                                                                                                                                                                                                                                                                                                                     "a name with a slash",                                      database(material("a/b",                                                                           "<id>1</id>")),                                                                            database(""),                                                                                                     "- a%2Fb: fluid\n"},
    };
    for (const Case& example : cases)
        expectDifferences("file.xml", example);
}

TEST(ComparisonTest, KnowsMaterialsByNamesThatStandAnywhere)
{
    const std::string small = "<material><id>1</id><name>x</name><name>a/b</name></material>";
    const auto curve = [](int points, int last) {
        std::string content = "<property type='density'>";
        for (int i = 1; i <= points; ++i)
            content += "<point><x>" + std::to_string(i) + "</x><y>" + std::to_string(i == points ? last : 0)
                + "</y></point>";
        return content + "</property>";
    };
    for (const int points : {1, 40'000}) {
        const std::string content = curve(points, 1);
        const std::string first = "<name>Oil</name>" + content;
        const std::string last = content + "<name>Oil</name>";
        const auto databaseWith = [&](const std::string& oil) {
            return database(small + "<material>" + oil + "</material>" + small
                            + "<material><id>5</id></material>");
        };
        EXPECT_EQ(compared("a.xml", databaseWith(first), "b.xml", databaseWith(last)), "");
        EXPECT_EQ(compared("a.xml", databaseWith(first), "b.xml",
                           databaseWith(curve(points, 2) + "<name>Oil</name>")),
                  "Oil/density/points/" + std::to_string(points) + "/y: 1 -> 2\n");
        EXPECT_EQ(compared("a.xml", databaseWith(last), "b.xml", database("")),
                  "- a%2Fb: 1\n- Oil: 1\n- a%2Fb#2: 1\n- #4: 5\n");
    }
    const std::string longName(300, 'n');
    EXPECT_EQ(
        compared("a.xml", database(material(longName, "")), "b.xml", database(material(longName + 'n', "")))
            .size(),
        std::string("+ : fluid\n- : fluid\n").size() + 2 * (200 + 3 + 16));
}

std::string geometry(const std::string& properties, const std::string& conditions)
{
    return "job\nNEREO 2024\nVersion 2024.1.0.0\n\n*** Coordinate System\nXYZ XYZ\n*** Properties\n"
        + properties + "-1\n*** Units\nmeter\n*** Surface nodal boundary conditions\n" + conditions + "-1\n";
}

TEST(ComparisonTest, ComparesGeometryAndBoundaryFiles)
{
    const std::string air = "1 \"Air\" 1 0\n";
    const std::string condition = "12 kP 2.5 0 -1\n";
    const Case cases[] = {
        {"spelling",                        geometry(air,                     condition), geometry(" 1 \"Air\"  1 0\n", "12  kP 2.50 0  -1\n\n"),      ""},
        {"a value",                         geometry(air,                     condition), geometry(air,                 "12 kP 3 0 -1\n"),
         "conditions/1/value: 2.5 -> 3\n"                                                                                                                },
        {"a property that one file lacks",  geometry(air + "2 \"Oil\" 1 0\n", ""),        geometry(air,                 ""),
         "- properties/2: 2\n"                                                                                                                           },
        {"a condition that one file lacks", geometry(air,                     condition),
         geometry(air,                                                                                                  condition + "13 kT 1 0 -1\n"),
         "+ conditions/2/entity: 13\n+ conditions/2/name: kT\n+ conditions/2/value: 1\n"
         "+ conditions/2/time-curve-flag: 0\n+ conditions/2/time-curve: -1\n"                                                                            },
    };
    for (const Case& example : cases)
        expectDifferences("file.gbi", example);
}

TEST(ComparisonTest, AllowsNumbersTheirTolerances)
{
    const auto differ = [](const char* a, const char* b, const ComparisonOptions& options) {
        return !compared("file.cfg", std::string("MaxIter 1\nStopTime ") + a + "\n", "file.cfg",
                         std::string("MaxIter 1\nStopTime ") + b + "\n", options)
                    .empty();
    };
    const auto tolerances = [](std::optional<double> absolute, std::optional<double> relative,
                               std::optional<double> peak = {}) {
        ComparisonOptions options;
        options.absolute = absolute;
        options.relative = relative;
        options.peak = peak;
        return options;
    };
    const struct {
        const char* a;
        const char* b;
        ComparisonOptions options;
        bool differ;
    } cases[] = {
        {"1",      "1.5",   tolerances(0.5, {}),       false                 },
        {"1",      "1.75",  tolerances(0.5, {}),       true                  },
        {"-4",     "-3",    tolerances({},  0.25),     false                 }, // of the larger one
        {"-4",     "-2.75", tolerances({},  0.25),     true                  },
        {"4",      "5",     tolerances(0.5, 0.25),     false                 }, // one of them is enough
        {"4",      "5",     tolerances(1,   0.125),    false                 },
        {"4",      "5",     tolerances(0.5, 0.125),    true                  },
        {"1",      "1.5",   tolerances({},  {},        1e300),                 true}, // there is no peak outside fields
        {"1",        "2",             tolerances(-1,                 -1, -1),     true},
        {"1",    "1",           tolerances(-1,                       -1,                          -1),                     false},
        {"1",     "2",       tolerances(qQNaN(),                     {}),   true},
        {"inf",     "1",        tolerances(qInf(),  qInf()),     true                      },
        {"inf", "inf",    tolerances({},                 {}),                  false            },
        {"inf",     "-inf",       tolerances(qInf(),     qInf()),true},
        {"nan", "1",    tolerances(qInf(),              qInf()),                           true                                                     },
        {"1", "1e308",    tolerances(qInf(),     {}),false},
        {"-1e308",     "1e308",       tolerances({},                 1),                                  true                                                                                                 }, // further apart than a number says
    };
    for (const auto& [a, b, options, expected] : cases)
        EXPECT_EQ(differ(a, b, options), expected) << a << ' ' << b;
}

TEST(ComparisonTest, AllowsWholeNumbersNone)
{
    ComparisonOptions options;
    options.absolute = options.relative = options.peak = 1e9;
    EXPECT_EQ(compared("file.cfg", "MaxIter 5\nWidth 1\n", "file.cfg", "MaxIter 6\nWidth 1\n", options),
              "MaxIter: 5 -> 6\n");
    const std::string section = "NEREO Ver 1\n\n *** Auto Convergence Control\n";
    EXPECT_EQ(compared("file.ctl", section + "0 1\n0.5\n", "file.ctl", section + "1 1\n0.75\n", options),
              "auto-convergence/on: 0 -> 1\n"); // a switch
}

TEST(ComparisonTest, SaysWhyFilesAreNotCompared)
{
    const TemporaryFolder folder;
    const std::string text = folder.write("file.cfg", "MaxIter 5\n");
    const std::string control = folder.write("file.ctl", "NEREO Ver 1\n\n *** Title\na\n *** Units\n0\n");
    const std::string other = folder.write("other", "anything\n");
    const struct {
        std::string a;
        std::string b;
        std::vector<std::string> fields;
        Outcome outcome;
        std::string file;
        const char* message;
    } cases[] = {
        {"/no/such/file",
         text,                           {},
         Outcome::CannotOpen,
         "/no/such/file",                                                             "the file can't be opened: No such file or directory"             },
        {text,            "",            {},     Outcome::CannotOpen,  "",            "the file can't be opened: No such file or directory"             },
        {text,            folder.path(), {},     Outcome::CannotOpen,  folder.path(), ""                                                                },
        {other,           text,          {},     Outcome::UnknownKind, other,         "the file is none of the five kinds"                              },
        {text,            other,         {},     Outcome::UnknownKind, other,         "the file is none of the five kinds"                              },
        {text,
         control,                        {},
         Outcome::OtherKinds,
         "",                                                                          "the files are of different kinds, configuration-text and control"},
        {control,
         text,                           {},
         Outcome::OtherKinds,
         "",                                                                          "the files are of different kinds, control and configuration-text"},
        {text,            text,          {"kU"}, Outcome::NoSuchField, "",            "files of this kind have no fields"                               },
    };
    for (const auto& [a, b, fields, outcome, file, message] : cases) {
        ComparisonOptions options;
        options.fields = fields;
        int calls = 0;
        options.progress = [&calls](qint64, qint64) { return ++calls > 0; };
        const Comparison comparison = compare(a, b, options);
        EXPECT_EQ(comparison.outcome, outcome) << a << ' ' << b;
        EXPECT_EQ(calls, 0);
        EXPECT_EQ(comparison.file, file);
        EXPECT_TRUE(comparison.message.startsWith(message)) << comparison.message.toStdString();
        EXPECT_FALSE(comparison.areSame());
        EXPECT_TRUE(comparison.differences.empty());
    }
    EXPECT_EQ(compare(text, control).kindOfA, FileKind::ConfigurationText);
    EXPECT_EQ(compare(text, control).kindOfB, FileKind::Control);
}

TEST(ComparisonTest, ReadsPipes)
{
    const TemporaryFolder folder;
    const Pipe a(folder.path("a"), "MaxIter 5\nWidth 1\n");
    const Pipe b(folder.path("b"), "MaxIter 6\nWidth 1\n");
    EXPECT_EQ(toText(compare(a.path(), b.path())), "MaxIter: 5 -> 6\n");
}

TEST(ComparisonTest, TellsOfItsProgressAndCanBeCancelled)
{
    const TemporaryFolder folder;
    std::string flags = "NEREO Ver 1\n\n *** Flag section\n100000\n";
    for (int i = 0; i < 100'000; ++i)
        flags += "flag" + std::to_string(i) + " 1\n";
    const std::string a = folder.write("a.ctl", flags);
    const std::string b = folder.write("b.ctl", flags + '\n');

    ComparisonOptions options;
    std::vector<std::pair<qint64, qint64>> calls;
    options.progress = [&](qint64 done, qint64 inAll) {
        calls.emplace_back(done, inAll);
        return true;
    };
    EXPECT_TRUE(compare(a, b, options).areSame());
    ASSERT_FALSE(calls.empty());
    EXPECT_TRUE(std::is_sorted(calls.begin(), calls.end()));
    for (const auto& [done, inAll] : calls)
        EXPECT_EQ(inAll, qint64(2 * flags.size() + 1)) << done;
    EXPECT_EQ(calls.back().first, calls.back().second);

    calls.clear();
    EXPECT_TRUE(compare(a, a, options).areSame());
    const auto both = qint64(2 * flags.size());
    EXPECT_LE(calls.size(), 2U); // the same byte by byte
    EXPECT_EQ(calls.back(), std::make_pair(both, both));

    options.progress = [](qint64, qint64) { return false; };
    const Comparison cancelled = compare(a, b, options);
    EXPECT_EQ(cancelled.outcome, Outcome::Cancelled);
    EXPECT_FALSE(cancelled.areSame());
    EXPECT_EQ(cancelled.message, "the comparison was cancelled");
}

/// However long a file is the same as another one before they differ.
TEST(ComparisonTest, FindsADifferenceAnywhere)
{
    const std::string text = "JobPrefix " + std::string(300'000, 'a');
    for (const std::size_t at : {std::size_t(10), std::size_t(131'071), std::size_t(131'072),
                                 std::size_t(262'143), std::size_t(262'144), text.size() - 1}) {
        std::string other = text;
        other[at] = 'b';
        EXPECT_NE(compared("file.cfg", text, "file.cfg", other), "") << at;
    }
    EXPECT_NE(compared("file.cfg", text, "file.cfg", text + 'a'), "");
    EXPECT_EQ(compared("file.cfg", text, "file.cfg", text), "");
}

TEST(ComparisonTest, TellsAllAsJson)
{
    const TemporaryFolder folder;
    const std::string a = folder.write("a.cfg", "MaxIter 5\nWidth 1\n");
    const std::string b = folder.write("b.cfg", "MaxIter 6\nHeight 2\n");
    EXPECT_EQ(toJson(compare(a, a)), "{\n    \"differences\": [\n    ],\n    \"same\": true\n}\n");
    EXPECT_EQ(toJson(compare(a, b)), R"({
    "differences": [
        {
            "a": "5",
            "address": "MaxIter",
            "b": "6"
        },
        {
            "a": null,
            "address": "Height",
            "b": "2"
        },
        {
            "a": "1",
            "address": "Width",
            "b": null
        }
    ],
    "same": false
}
)");
}

// What a comparison keeps

TEST(ValueTableTest, KeepsValuesInTheirOrder)
{
    const std::string longText(100'000, 'x');
    ValueTable table;
    const auto first = table.append("a", {SaidValue::Type::Number, 0.5, {}, "5e-1"});
    const auto second = table.append("b/", {SaidValue::Type::Element});
    const auto third = table.append(longText, {SaidValue::Type::Text, 0, longText, longText});
    const auto fourth = table.append("", {SaidValue::Type::Text, 0, "2024.0.0.0", ""});

    EXPECT_EQ(table.at(first).address, "a");
    EXPECT_EQ(table.at(first).value.number, 0.5);
    EXPECT_EQ(table.at(first).value.text, "");
    EXPECT_EQ(table.at(first).value.shown, "5e-1");
    EXPECT_EQ(table.at(first).next, second);
    EXPECT_EQ(table.at(second).value.type, SaidValue::Type::Element);
    EXPECT_EQ(table.at(third).address, longText);
    EXPECT_EQ(table.at(third).value.text, longText);
    EXPECT_EQ(table.at(third).value.shown, longText);
    EXPECT_EQ(table.at(fourth).value.text, "2024.0.0.0");
    EXPECT_EQ(table.at(fourth).value.shown, "");
    EXPECT_EQ(table.at(fourth).next, table.end());
}

/// Of which the table keeps what they have in common once.
TEST(ValueTableTest, KeepsAddressesThatBeginAlike)
{
    std::vector<std::string> addresses {"", "conditions", "conditions/", "conditions/1/entity", "condition"};
    for (int row = 1; row <= 2000; ++row) {
        for (const char* const item :
             {"entity", "name", "extra/1", "extra/2", "time-curve-flag", "time-curve"})
            addresses.push_back("conditions/" + std::to_string(row * row) + "/" + item
                                + (row == 7 ? "!" : ""));
    }
    addresses.push_back(addresses.back().substr(0, 20) + std::string(1000, 'x'));
    addresses.push_back(addresses.back() + 'y');

    ValueTable table;
    std::vector<ValueTable::Position> positions;
    for (const std::string& address : addresses)
        positions.push_back(
            table.append(address, {SaidValue::Type::WholeNumber, double(address.size()), {}, "1"}));
    EXPECT_LT(table.end(), 30 * addresses.size());
    for (std::size_t i = 0; i < addresses.size(); ++i) {
        const ValueTable::Entry entry = table.at(positions[i]);
        EXPECT_EQ(entry.address.text(), addresses[i]);
        EXPECT_TRUE(entry.address == addresses[i]);
        EXPECT_TRUE(entry.address != addresses[i] + 'z');
        EXPECT_EQ(entry.value.number, double(addresses[i].size()));
        EXPECT_EQ(entry.value.shown, "1");
        EXPECT_EQ(entry.next, i + 1 < addresses.size() ? positions[i + 1] : table.end());
        if (i != 3) {
            EXPECT_EQ(table.find(addresses[i]), positions[i]);
        }
    }
    EXPECT_TRUE(table.isReplaced(positions[3])); // by that of the first row
}

TEST(ValueTableTest, FindsTheLastValueOfAnAddress)
{
    ValueTable table;
    EXPECT_EQ(table.find("a"), ValueTable::none);
    std::vector<ValueTable::Position> positions;
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 1000; ++i)
            positions.push_back(table.append(std::to_string(i), {}));
    }
    for (std::size_t i = 0; i < 1000; ++i) {
        EXPECT_EQ(table.find(std::to_string(i)), positions[1000 + i]);
        EXPECT_TRUE(table.isReplaced(positions[i]));
        EXPECT_FALSE(table.isReplaced(positions[1000 + i]));
    }
    EXPECT_EQ(table.find("1000"), ValueTable::none);

    EXPECT_FALSE(table.isMet(positions[1000]));
    table.setMet(positions[1000]);
    table.append("0", {});
    EXPECT_TRUE(table.isMet(positions[1000]));
    EXPECT_TRUE(table.isReplaced(positions[1000]));
}

} // namespace
} // namespace Nereo::Inspection
