#include "Checked.h"

#include "support/Bytes.h"

#include <algorithm>

namespace Nereo::Inspection {
namespace {

constexpr auto None = Effect::None;
constexpr auto Ignored = Effect::Ignored;

const std::string head = "cavity\nNEREO 2024 (release)\nVersion 2024.0.0.0\n\n";

const std::string properties = "*** Properties\n1 \"Air\" 1 0\n2 \"Stainless \"\"18/8\"\" steel\" 0 13\n-1\n";

const std::string mesh = "*** Extruded Parts Summary\n0\n*** Nodes\n*** Elements\n*** Shell Elements\n"
                         "*** Shell Surface Node Links\n*** 3D Shells Data\n*** Part Surfaces\n"
                         "*** Surface Connectivity Data\n*** Extrusion Nodal Data\n*** Extrusion Face List\n"
                         "*** Periodic Nodal Data\n*** Periodic Face List\n*** Periodic Transform\n"
                         "*** Rotating Region Data\n*** Moving Region Data\n"
                         "*** Fan Thermostats\n-1 kP 0.0\n*** PCB Regions\n-1 kP 0.0\n"
                         "*** Heat Sink Model Info\n-1 kP 0.0\n";

const std::string conditions = "*** Surface nodal boundary conditions\n12 kP 2.5 0 -1\n"
                               "12 kSlipNode 1e-07 1 2 -1 5\n-1\n";

const std::string others = "*** Spatial nodal boundary conditions\n-1\n"
                           "*** Region element boundary conditions\n-1\n"
                           "*** Region initial conditions\n-1\n*** Surface initial conditions\n-1\n";

const std::string good = head + "*** Summary\n*** Coordinate System\nXYZ XYZ\n" + properties
    + "*** Units\nmeter\n" + mesh + conditions + others;

/// The good file with another text in the place of the first of these.
std::string with(const std::string& text, const std::string& other)
{
    std::string file = good;
    const std::size_t at = file.find(text);
    EXPECT_NE(at, std::string::npos) << text;
    return file.replace(at, text.size(), other);
}

Fault error(const std::string& text, const char* code, const QString& address = {},
            const QString& message = {})
{
    return {text, code, Severity::Error, Effect::None, address, message};
}

Fault warning(const std::string& text, const char* code, Effect effect, const QString& address = {},
              const QString& message = {})
{
    return {text, code, Severity::Warning, effect, address, message};
}

void expectFault(const Fault& fault)
{
    expectFinding("job.gbi", fault, true);
}

/// What a check says of bytes: a line for each finding, with its place, code and effect and what was found.
std::string foundIn(const std::string& bytes)
{
    std::string lines;
    for (const Finding& finding : checkedBytes("job.gbi", bytes, FileKind::GeometryBoundary).findings) {
        lines += std::to_string(finding.place.line) + ':' + std::to_string(finding.place.column) + ' '
            + severityName(finding.severity).toStdString() + ' ' + finding.code.toStdString() + ' '
            + effectName(finding.effect).toStdString() + " [" + finding.found.toStdString() + "] "
            + finding.address.toStdString() + '\n';
    }
    return lines;
}

TEST(GeometryBoundaryCheckTest, FindsNothingWrongInGoodFiles)
{
    expectClean("job.gbi", good);
    expectClean("job.gbi", good.substr(0, good.size() - 1));
    for (const char* name : {"cavity.gbi", "new-geometry-boundary.gbi"}) {
        std::string golden = readBytes(std::string(NEREO_GOLDEN_DIR "/") + name);
        golden.replace(golden.find("@VERSION@"), 9, "2024.0.0.0");
        expectClean("job.gbi", golden);
    }
    const std::pair<std::string, std::string> cases[] = {
        {"cavity\n",             "\n"                                             }, // without a name
        {"cavity\n",             "*** Nodes\n"                                    },
        {"cavity\n",             "  K\xC3\xBChlk\xC3\xB6rper 100%  \n"            },
        {"NEREO 2024",           "*** Summary"                                    },
        {"2024.0.0.0",           "7.0.-1.12"                                      },
        {"Version ",             "Version\t"                                      },
        {"XYZ XYZ",              " "                                              }, // no coordinate system
        {"XYZ XYZ",              ""                                               },
        {"XYZ XYZ",              "RTZ RTZ"                                        },
        {"meter",                "inch-WATT"                                      },
        {"1 \"Air\" 1 0\n",      "-1 \"-1\" 0 0\n0 \"a\" 0 0\n0 \"b\" 0 0\n"      }, // an id of 0 is none
        {"1 \"Air\" 1 0\n",      "7 \"\" 0 0\n8 \"\" 0 0\n"                       },
        {"1 \"Air\" 1 0\n",      "\n  3\t\"*** Air\"  1   0 \n"                   },
        {"12 kP 2.5 0 -1\n",     "-1 kKXX inf 0 0\n\t1  kNone nan -inf  0\t7 \n\n"},
        {"*** Nodes\n",          "*** Nodes\n1 0 0 0\nanything at all\n"          }, // others fill it
        {"*** Nodes\n",          "*** Nodes  \n"                                  },
        {"Summary\n0\n",         "Summary\n2\n1 2 3\n"                            },
        {"Thermostats\n",        "Thermostats\n4 kT 293.15\n"                     },
        {"initial conditions\n", "initial conditions\n1 kT 293.15\n"              },
        {"initial conditions\n", "initial conditions\n1 kT 293.15\n-1\n2 kT 1\n"  }, // in two lists
    };
    for (const auto& [text, other] : cases)
        expectClean("job.gbi", with(text, other));
}

TEST(GeometryBoundaryCheckTest, TakesTheSectionsInAnyOrder)
{
    const std::string start = "*** Summary\n*** Coordinate System\nXYZ XYZ\n";
    expectClean("job.gbi", head + conditions + others + mesh + "*** Units\nmeter\n" + properties + start);
    expectFault(error(head + "*** Units\nmeter\n" + others + mesh
                          + "*** Surface nodal boundary conditions\n1 kP [[x]] 0 0\n-1\n" + properties
                          + start,
                      "not-a-number", "conditions/1/value"));
}

TEST(GeometryBoundaryCheckTest, FindsWhatIsWrongInTheFirstLines)
{
    const Fault faults[] = {
        warning(with("2024.0.0.0", "[[2024.0.0]]"), "bad-version", Ignored, "version", "four whole numbers"),
        warning(with("2024.0.0.0", "[[2024.0.0.x]]"), "bad-version", Ignored, "version"),
        warning(with("2024.0.0.0", "[[1.2.3.4 beta]]"), "bad-version", Ignored, "version"),
        warning(with("Version 2024.0.0.0", "Version[[]]"), "bad-version", Ignored, "version"),
        warning(with("Version 2024.0.0.0", "[[version 2024.0.0.0]]"), "bad-header", None, "",
                "where a writer puts \"Version\" and the version"),
        warning(with("Version 2024.0.0.0\n\n", "[[]]\n"), "bad-header", None),
        warning(with("\n\n*** Summary", "\n[[*** Summary]]"), "bad-header", None),
        warning(with("\n\n***", "\n[[a remark]]\n***"), "bad-header", None, "", "an empty line"),
        warning(with("\n\n***", "\n\n\n [[a remark]] \nand more\n***"), "bad-header", None, "",
                "a section's title"),
        warning(with("cavity\nNEREO 2024 (release)", "a\ncavity\n[[NEREO 2024 (release)]]"), "bad-header",
                None),
    };
    for (const Fault& fault : faults)
        expectFault(fault);
}

TEST(GeometryBoundaryCheckTest, LeavesATitleInTheFirstLinesToItsSection)
{
    const CheckedFile checked =
        checkedBytes("file.gbi", "*** Properties\n-1\n*** Units\nmeter\n", FileKind::GeometryBoundary);
    ASSERT_FALSE(checked.findings.empty());
    EXPECT_EQ(checked.findings[0].code, "bad-header");
    for (const Finding& finding : checked.findings)
        EXPECT_NE(finding.address, "properties") << linesOf(checked);
}

TEST(GeometryBoundaryCheckTest, FindsWhatIsWrongWithTheSections)
{
    const Fault faults[] = {
        warning(with("*** Nodes\n", "*** Nodes\n*** [[Node Colours]]\nred\n12\n"), "unknown-section",
                Ignored),
        warning(with("*** Units", "*** [[Unit]]"), "unknown-section", Ignored, "", "did you mean \"Units\"?"),
        warning(with("*** Units", "*** [[UNITS]]"), "unknown-section", Ignored, "",
                "did you mean \"Units\"?"),
        warning(with("*** Units", "[[***Units]]"), "unknown-section", Ignored, "", "did you mean \"Units\"?"),
        warning(with("*** Units", " [[*** Units]]"), "unknown-section", Ignored, "",
                "did you mean \"Units\"?"),
        warning(with("*** Units", "[[** Units]]"), "unknown-section", Ignored, "", "did you mean \"Units\"?"),
        warning(with("*** Summary", "[[Summary]]"), "unknown-section", Ignored, "",
                "did you mean \"Summary\"?"),
        warning(with("*** Nodes\n", "*** Nodes\n[[***]]\n"), "unknown-section", Ignored),
        // meant for another section: by its mark, or by its place
        warning(with("*** Nodes", "[[x** Nodes]]"), "unknown-section", Ignored, "",
                "did you mean \"Nodes\"?"),
        warning(with("*** Units", "[[*x* Units]]"), "unknown-section", Ignored, "",
                "did you mean \"Units\"?"),
        warning(with("*** Units", "[[***?Units]]"), "unknown-section", Ignored, "",
                "did you mean \"Units\"?"),
        warning(with("*** Units", "[[# *** Units]]"), "unknown-section", Ignored, "",
                "did you mean \"Units\"?"),
        warning(with("*** PCB Regions", "[[note PCB Regions]]"), "unknown-section", Ignored, "",
                "did you mean \"PCB Regions\"?"),
        warning(with("*** Units", "*** [[Lengths]]"), "unknown-section", Ignored, "",
                "it is ignored; a writer puts the section \"Units\" here"),
        warning(with("*** Summary", "*** [[Contents]]"), "unknown-section", Ignored, "", "\"Summary\" here"),
        warning(with("*** Surface initial conditions", "*** [[Starts]]"), "unknown-section", Ignored, "",
                "\"Surface initial conditions\""),
        warning(with("*** Shell Elements", "*** [[Elements]]"), "repeated-section", Ignored, "",
                "a writer puts the section \"Shell Elements\" here"),
        warning(with("*** Elements\n", "*** Elements\n*** [[Nodes]]\n"), "repeated-section", Ignored),
        warning(with("*** Units\n", "*** Units\n*** [[Units]]\n"), "repeated-section", Ignored, "units",
                "again"),
        warning(with("*** Properties\n", "*** Properties\n*** [[Properties]]\n"), "repeated-section", Ignored,
                "properties"),
        warning(good + "*** [[Units]]\ncm\n", "repeated-section", Ignored, "units", "again"),
        warning(good + "*** [[Properties]]\n1 \"Air\" 1 0\n-1\n", "repeated-section", Ignored, "properties"),
        error(with("*** Nodes\n", "") + "[[]]", "missing-section", "", "\"Nodes\""),
        error(with("*** Units\nmeter\n", "") + "[[]]", "missing-section", "units", "\"Units\""),
        error(with("*** Summary\n", "") + "[[]]", "missing-section", "", "\"Summary\""),
        error(with(conditions, "") + "[[]]", "missing-section", "conditions"),
        error(with("Extruded Parts Summary\n0\n", "Extruded Parts Summary\n[[]]"), "missing-value"),
        warning(with("meter\n", "meter\n\n[[centimeter]]\nand more\n"), "trailing-text", Ignored),
    };
    for (const Fault& fault : faults)
        expectFault(fault);
}

TEST(GeometryBoundaryCheckTest, FindsWhatIsWrongWithTheWords)
{
    const QString systems = "one of XY, XR, RY, RT, ZY, XZ, XYZ, RTZ";
    const Fault faults[] = {
        error(with("XYZ XYZ", "[[XZY]] XZY"), "unknown-word", "coordinate-system", systems),
        error(with("XYZ XYZ", "[[xyz]] xyz"), "unknown-word", "coordinate-system", "did you mean \"XYZ\"?"),
        error(with("XYZ XYZ", "[[XZY]] XYZ"), "unknown-word", "coordinate-system"),
        error(with("XYZ XYZ", "XYZ [[XZY]]"), "unknown-word", "coordinate-system", "again"),
        error(with("XYZ XYZ", "XYZ [[RTZ]]"), "unknown-word", "coordinate-system", "again"),
        error(with("XYZ XYZ", "XYZ[[]]"), "missing-value", "coordinate-system"),
        warning(with("XYZ XYZ", "XYZ XYZ [[XYZ  1]]"), "trailing-text", Ignored, "coordinate-system"),
        error(with("XYZ XYZ\n", "[[]]"), "missing-value", "coordinate-system"),
        error(with("meter", "[[Meter]]"), "unknown-word", "units", "did you mean \"meter\"?"),
        error(with("meter", " [[m]] "), "unknown-word", "units",
              "one of meter, cm, mm, feet, inch, inch-WATT"),
        error(with("meter", "[[inch WATT]]"), "unknown-word", "units", "did you mean \"inch-WATT\"?"),
        error(with("meter\n", "[[]]\n"), "missing-value", "units"),
        error(with("meter\n", "[[]]"), "missing-value", "units"),
    };
    for (const Fault& fault : faults)
        expectFault(fault);
}

TEST(GeometryBoundaryCheckTest, FindsWhatIsWrongWithMaterials)
{
    const Fault faults[] = {
        error(with("1 \"Air", "[[one]] \"Air"), "not-an-integer", "properties/1/id", "whole number"),
        error(with("1 \"Air", "[[1.0]] \"Air"), "not-an-integer", "properties/1/id"),
        error(with("1 \"Air", "[[1 1]] \"Air"), "not-an-integer", "properties/1/id"),
        error(with("1 \"Air", "[[2147483648]] \"Air"), "out-of-range", "properties/1/id", "32 bits"),
        error(with("1 \"Air", "[[" + std::string(100, '1') + "]] \"Air"), "out-of-range", "properties/1/id"),
        error(with("1 \"Air", "[[]]\"Air"), "missing-value", "properties/1/id"),
        error(with("\"Air\" 1", "\"Air\" [[on]]"), "not-an-integer", "properties/1/fluid"),
        error(with("\"Air\" 1 0", "\"Air\" 1 [[-]]"), "not-an-integer", "properties/1/resistance"),
        error(with("\"Air\" 1 0", "\"\xC3\xA4\xF0\x9F\x98\x80\" 1[[]]"), "missing-value",
              "properties/1/resistance"),
        error(with("\"Air\" 1 0", "\"Air\"[[]]"), "missing-value", "properties/1/fluid"),
        warning(with("\"Air\" 1 0", "\"Air\" 1 0 [[7 8]]"), "trailing-text", Ignored),
        error(with("\"Air\" 1 0", "[[Air]] 1 0"), "missing-value", "properties/1/name", "in double quotes"),
        error(with("\"Air\" 1 0", "[[\"Air 1 0]]"), "missing-value", "properties/1/name"),
        error(with("\"Air\" 1 0", "[[Air\" 1 0]]"), "missing-value", "properties/1/name", "in double quotes"),
        error(with("1 \"Air\" 1 0", "1[[]]\n7 \"b\" 1 0"), "missing-value", "properties/1/name"),
        warning(with("2 \"Stain", "[[1]] \"Stain"), "repeated-id", None, "properties/2/id", "the id 1"),
        warning(with("2 \"Stain", "[[+01]] \"Stain"), "repeated-id", None, "properties/2/id"),
        warning(with("Air\" 1 0\n", "Air\" 1 0\n7 \"[[Air]]\" 0 0\n"), "repeated-material", None,
                "properties/2/name", "another material \"Air\""),
        error(with("-1\n*** Units", "[[]]*** Units"), "missing-end", "properties"),
        error(with("-1\n*** Units", "[[-l]]\n*** Units"), "missing-end", "properties", "end with -1"),
        warning(with("-1\n*** Units", "-1 [[2 3]]\n*** Units"), "trailing-text", Ignored, "properties"),
        warning(with("-1\n*** Units", "-1\n[[3 \"lost\" 1 0]]\n-1\n*** Units"), "trailing-text", Ignored),
    };
    for (const Fault& fault : faults)
        expectFault(fault);
}

TEST(GeometryBoundaryCheckTest, FindsWhatIsWrongWithConditions)
{
    const Fault faults[] = {
        error(with("12 kP 2.5", "[[12.0]] kP 2.5"), "not-an-integer", "conditions/1/entity"),
        error(with("12 kP 2.5", "[[-2147483649]] kP 2.5"), "out-of-range", "conditions/1/entity"),
        error(with("12 kP 2.5", " [[]]kP 2.5"), "missing-value", "conditions/1/entity"),
        error(with("12 kP 2.5", "12 [[kPressure]] 2.5"), "unknown-variable", "conditions/1/name"),
        error(with("12 kP 2.5", "12 [[kp]] 2.5"), "unknown-variable", "conditions/1/name",
              "did you mean \"kP\"?"),
        error(with("kSlipNode", "[[kSlipNod]]"), "unknown-variable", "conditions/2/name",
              "did you mean \"kSlipNode\"?"),
        error(with("12 kP 2.5", "12 [[kvolumerate]] 2.5"), "unknown-variable", "conditions/1/name",
              "did you mean \"kVolumeRate\"?"),
        error(with("12 kP 2.5", "12 [[" + std::string(100, 'k') + "]] 2.5"), "unknown-variable",
              "conditions/1/name"),
        error(with("12 kP 2.5", "12 [[]] 2.5"), "missing-value", "conditions/1/name"),
        // a word too many, and two in one
        error(with("12 kP 2.5", "[[no]] 12 kP 2.5"), "not-an-integer", "conditions/1/entity"),
        error(with("12 kP 2.5", "12 [[no]] kP 2.5"), "unknown-variable", "conditions/1/name"),
        error(with("12 kP 2.5", "[[12;kP]] 2.5"), "not-an-integer", "conditions/1/entity"),
        error(with("12 kP 2.5", "12 [[kP;2.5]]"), "unknown-variable", "conditions/1/name"),
        error(with("kP 2.5 0 -1", "kP [[2.5;0]] -1"), "not-a-number", "conditions/1/value"),
        error(with("kP 2.5 0 -1", "kP 2.5 [[0;-1]]"), "not-an-integer", "conditions/1/time-curve-flag"),
        error(with("5\n-1\n", "5\n[[x -1]]\n"), "missing-end", "conditions"),
        error(with("5\n-1\n", "5\n[[7 -1]]\n"), "missing-end", "conditions"),
        error(with("kP 2.5", "kP [[kT]]"), "not-a-number", "conditions/1/value"),
        error(with("12 kP 2.5", "12 [[]]2.5"), "missing-value", "conditions/1/name"),
        error(with("kP 2.5", "kP [[2,5]]"), "not-a-number", "conditions/1/value", "not a number"),
        error(with("kP 2.5", "kP [[1e400]]"), "out-of-range", "conditions/1/value", "outside the range"),
        error(with("kP 2.5", "kP [[1e-400]]"), "out-of-range", "conditions/1/value"),
        error(with("1e-07 1 2", "1e-07 1 [[two]]"), "not-a-number", "conditions/2/extra/2"),
        error(with("1 2 -1 5", "1 2 [[-1.5]] 5"), "not-an-integer", "conditions/2/time-curve-flag"),
        error(with("1 2 -1 5", "1 2 -1 [[five]]"), "not-an-integer", "conditions/2/time-curve"),
        error(with("2.5 0 -1", "2.5 0[[]]"), "missing-value", "conditions/1/time-curve"),
        error(with("2.5 0 -1", "2.5[[]]"), "missing-value", "conditions/1/time-curve-flag"),
        error(with("kP 2.5 0 -1", "kP[[]]"), "missing-value", "conditions/1/value"),
        error(with("12 kP 2.5 0 -1", "12[[]]"), "missing-value", "conditions/1/name"),
        error(with("5\n-1\n", "5\n[[]]"), "missing-end", "conditions", "no -1"),
        error(with("5\n-1\n", "5\n[[1]]\n"), "missing-end", "conditions"),
        warning(with("5\n-1\n", "5\n-1\n[[12 kT 5 0 0]]\n13 kT 5 0 0\n"), "trailing-text", Ignored),
        warning(with("5\n-1\n", "5\n-1 [[.]]\n"), "trailing-text", Ignored, "conditions"),
        error(with("PCB Regions\n-1 kP 0.0\n", "PCB Regions\n[[]]"), "missing-end"),
        error(with("PCB Regions\n-1 kP 0.0\n", "PCB Regions\n3 kP 0.0\n[[]]"), "missing-end"),
        error(good.substr(0, good.size() - 3) + "[[]]", "missing-end"),
        warning(good + "\n [[lost  1]] \nand more\n", "trailing-text", Ignored),
        warning(with("PCB Regions\n-1 kP 0.0\n", "PCB Regions\n1\n-1\n2\n-1\n[[3]]\n"), "trailing-text",
                Ignored),
        warning(with("*** PCB Regions", "[[PCB Regions]]"), "unknown-section", Ignored, "",
                "did you mean \"PCB Regions\"?"),
    };
    for (const Fault& fault : faults)
        expectFault(fault);
}

TEST(GeometryBoundaryCheckTest, FindsBadCharacters)
{
    using namespace std::string_literals;
    const std::string names = "2 \"Air\" 1 0\n3 \"A\xFFir\" 1 0\n4 \"A\xFFir\" 1 0\n";
    const std::string repeatedNames = "10:4 warning repeated-material none [Air] properties/2/name\n"
                                      "11:5 warning not-utf8 none [FF] properties/3/name\n"
                                      "12:4 warning repeated-material none [A\xEF\xBF\xBDir] "
                                      "properties/4/name\n";
    const std::string version = "3:9 warning bad-version ignored [2024.0.0.\xEF\xBF\xBD] version\n";
    const std::pair<std::string, std::string> cases[] = {
        {with("cavity",                        "cav\xFFity"),                                                    "1:4 warning not-utf8 none [FF] job\n"              },
        {with("NEREO 2024",                    "NEREO\xFF"),                                                     "2:6 warning not-utf8 none [FF] program\n"          },
        {with("\"Air",                         "\"\xFF\xFE"),                                                    "9:4 warning not-utf8 none [FF] properties/1/name\n"},
        {with("2 \"Stain",                     names + "5 \"Stain"),                                             repeatedNames                                       },
        {good + "\xC3",                        "48:1 warning not-utf8 none [C3] \n"                            },
        {with("cavity",                         "cav\rity"),                      "1:4 warning stray-character none [] job\n"                                                    },
        {with("cavity",                        "cav\0ity"s),                      "1:4 warning stray-character none [] job\n"},
        {with("meter",                          "met\xFF"),         "13:1 error unknown-word none [met\xEF\xBF\xBD] units\n"                                                    },
        {with("*** Nodes\n",                "*** Nodes\n\xFF\n"),                             "17:1 warning not-utf8 none [FF] \n"},
        {with("PCB Regions\n-1",                "PCB Regions\n\xFF"),                             "33:1 warning not-utf8 none [FF] \n"                                                    },
        {with("PCB Regions\n-1 kP 0.0\n", "PCB Regions\n\xFF kP\n3 kP 0.0\n"),
         "33:1 warning not-utf8 none [FF] \n35:1 error missing-end none [] \n"},
        {with("*** Nodes",                     "**\xFF Nodes"), "16:1 warning unknown-section ignored [**\xEF\xBF\xBD Nodes] \n"                                                                                     },
        {with("2024.0.0.0",                    "2024.0.0.\xFF"),                                                          version},
    };
    for (const auto& [bytes, lines] : cases)
        EXPECT_EQ(foundIn(bytes), lines) << bytes;
    const CheckedFile checked = checkedBytes("job.gbi", with("cavity", "\0"s), FileKind::GeometryBoundary);
    EXPECT_EQ(checked.findings.at(0).message, "a NUL in the text"); // which nobody reads
}

/// Two words in one take the place of one that is missing in their row only.
TEST(GeometryBoundaryCheckTest, FindsWhatIsMissingBehindTwoWordsInOne)
{
    std::string file = with("steel\" 0 13", "steel\" 0 13;5");
    file.replace(file.find("meter\n"), 6, "");
    EXPECT_EQ(foundIn(file),
              "10:32 error not-an-integer none [13;5] properties/2/resistance\n"
              "13:1 error missing-value none [] units\n");
    EXPECT_EQ(foundIn(with("12 kP 2.5 0 -1", "12;5 kP 2.5 0 -1\n12 kP 2.5 0")),
              "37:1 error not-an-integer none [12;5] conditions/1/entity\n"
              "38:12 error missing-value none [] conditions/2/time-curve\n");
}

TEST(GeometryBoundaryCheckTest, FindsSeveralFaultsOfOneRowOrSection)
{
    EXPECT_EQ(foundIn(with("12 kP 2.5", "no 12 2.5")),
              "37:1 error not-an-integer none [no] conditions/1/entity\n"
              "37:4 error missing-value none [] conditions/1/name\n");
    EXPECT_EQ(foundIn(with("12 kP 2.5 0 -1", "no\n12 kP 2.5 0 -1")),
              "37:1 error not-an-integer none [no] conditions/1/entity\n"
              "37:3 error missing-value none [] conditions/1/name\n");
    EXPECT_EQ(foundIn(with("12 kP 2.5 0", "1;2 kP 2;5 0.5")),
              "37:1 error not-an-integer none [1;2] conditions/1/entity\n"
              "37:8 error not-a-number none [2;5] conditions/1/value\n"
              "37:12 error not-an-integer none [0.5] conditions/1/time-curve-flag\n");
    EXPECT_EQ(foundIn(with("*** PCB Regions", "more\n[*** PCB Regions")),
              "32:1 warning trailing-text ignored [more] \n"
              "33:1 warning unknown-section ignored [[*** PCB Regions] \n");
}

TEST(GeometryBoundaryCheckTest, FindsAllFaultsInOnePass)
{
    EXPECT_EQ(foundIn(with("XYZ XYZ\n" + properties, "XY\n*** Properties\n1 Air\nx \"b\" 0 y\n")),
              "7:3 error missing-value none [] coordinate-system\n"
              "9:3 error missing-value none [Air] properties/1/name\n"
              "10:1 error not-an-integer none [x] properties/2/id\n"
              "10:9 error not-an-integer none [y] properties/2/resistance\n"
              "11:1 error missing-end none [] properties\n");
}

TEST(GeometryBoundaryCheckTest, SaysWhereAFileEndsEarly)
{
    const std::size_t sections = 27;
    const std::pair<std::string, std::string> cases[] = {
        {"",                                   "1:1 warning bad-header none [] \n"},
        {"cavity",                             "1:7 warning bad-header none [] \n"},
        {"cavity\nNEREO\n",                    "3:1 warning bad-header none [] \n"},
        {"cavity\nNEREO\nVersion 1.0.0.0\n",   "4:1 warning bad-header none [] \n"},
        {"cavity\nNEREO\nVersion 1.0.0.0\n\n", ""                                 },
    };
    for (const auto& [bytes, line] : cases) {
        const std::string found = foundIn(bytes);
        EXPECT_EQ(found.substr(0, line.size()), line) << bytes;
        EXPECT_EQ(std::size_t(std::count(found.begin(), found.end(), '\n')), sections + !line.empty())
            << found;
    }
}

TEST(GeometryBoundaryCheckTest, SaysThatThereIsNoFile)
{
    CheckOptions options;
    options.kind = FileKind::GeometryBoundary;
    const CheckedFile checked = check("/no/such/file", options);
    ASSERT_EQ(checked.findings.size(), 1U);
    EXPECT_EQ(checked.findings.front().code, "cannot-open");
    EXPECT_EQ(checked.findings.front().effect, Effect::Fails);
}

TEST(GeometryBoundaryCheckTest, CountsWhatItDoesNotList)
{
    std::string rows;
    for (int i = 0; i < 3000; ++i)
        rows += "1 kUnheard x 0 0\n";
    const CheckedFile checked =
        checkedBytes("job.gbi", with("12 kP 2.5 0 -1\n", rows), FileKind::GeometryBoundary);
    EXPECT_EQ(checked.findings.size(), 2000U);
    EXPECT_EQ(checked.counts.errors, 6000);
    EXPECT_EQ(checked.findings.back().more, 2000);
}

} // namespace
} // namespace Nereo::Inspection
