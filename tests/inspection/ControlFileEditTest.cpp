#include "Edited.h"

#include <FileIO/ControlFileRecords.h>
#include <FileIO/ControlFileSections.h>
#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/FieldVariable.h>

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace Nereo::Inspection {
namespace {

constexpr FileKind control = FileKind::Control;

/// A file of some sections.
std::string fileWith(const std::string& sections)
{
    return "NEREO control file written by NEREO 2024 Ver 2024.0.0.0\nBranch release (x)\n *** Title\nCavity\n"
        + sections;
}

void expectSections(const std::string& before, const std::vector<Edit>& edits, const std::string& after)
{
    const bool isRefused = after.rfind("refused", 0) == 0;
    expectEdited(control, fileWith(before), edits, isRefused ? after : fileWith(after));
}

void expectSet(const char* before, const char* address, const char* value, const char* after)
{
    expectSections(before, setTo(address, value), after);
}

TEST(ControlFileEditTest, ChangesTheBytesOfTheValueOnly)
{
    expectSet(" *** Relaxation\nkU  0.5 0 \nkV 0.5 0\n", "relaxation/kU/under", "0.70",
              " *** Relaxation\nkU  0.70 0 \nkV 0.5 0\n");
    expectSet(" *** Relaxation\nkU  0.5 0", "relaxation/kU/inertial", "1", " *** Relaxation\nkU  0.5 1");
    expectSet(" *** Relaxation\nkU 0.5 0\nkU 0.6 0\n", "relaxation/kU/under", "1",
              " *** Relaxation\nkU 0.5 0\nkU 1 0\n"); // the last counts
    expectSet(" *** Relaxation\nkU abc 0.5\n", "relaxation/kU/under", "1", " *** Relaxation\nkU 1 0.5\n");
    expectSet(" *** Relaxation\nkU 0.5 0 # note\nkFoo 1 2\n", "relaxation/kU/under", "1",
              " *** Relaxation\nkU 1 0 # note\nkFoo 1 2\n");
    expectSet(" *** Unheard\nof\n *** Units\n3\n", "units", "2", " *** Unheard\nof\n *** Units\n2\n");
    expectSet(" *** Units\n3\n", "units", "010", " *** Units\n010\n"); // a load takes it for 8
    expectSet(" *** Units\n3\n", "units", "018", " *** Units\n18\n");  // of which a load reads 01
    expectSet(" *** Relaxation\nkU 1 0\n", "relaxation/kU/under",
              ("0.25" + std::string(400, '0') + "e0").c_str(),
              " *** Relaxation\nkU 0.25 0\n"); // the load would cut it
    expectSet(" *** Transient Data \n1 5\n1\n2\n", "transient-data/step-size", "-.5",
              " *** Transient Data \n1 5\n-.5\n2\n");
    expectSet(" *** Constants\nkPRef 5 text\n", "constants/kPRef", "101325",
              " *** Constants\nkPRef 101325 text\n");
    expectSet(" *** Flag section\n1\nx 5\n", "flags/x", "6", " *** Flag section\n1\nx 6\n");
    expectSet(" *** Flag section\n1\nx\n", "flags/x", "6", " *** Flag section\n1\nx 6\n");
    expectSet(" *** Flag section\n1\nx \n", "flags/x", "6", " *** Flag section\n1\nx 6\n");
    expectSet(" *** Flag section\n1\nx 5\n", "flags/x", "", " *** Flag section\n1\nx \n");
    expectSet(" *** Flag section\n1\nx\n", "flags/x", "", " *** Flag section\n1\nx\n");
    expectSet(" *** Flag section\n2\nx 5\nx 6\n", "flags/x", "7", " *** Flag section\n2\nx 7\nx 6\n");
    expectSet(" *** Flag section\n2\nx 5\nx 6\n", "flags/x#2", "7", " *** Flag section\n2\nx 5\nx 7\n");
    expectSet(" *** Flag section\n3\nx#2 5\n", "flags/x%232", "7",
              " *** Flag section\n3\nx#2 7\n"); // the number stays
    expectSet(" *** Auto Convergence Control\n0 1\nField Fluctuation 0.5\n", "auto-convergence/on", "1",
              " *** Auto Convergence Control\n1 1\nField Fluctuation 0.5\n");
    expectSet(" *** Auto Convergence Control\n1 1\nField Fluctuation 0.5\n", "auto-convergence/on", "0",
              " *** Auto Convergence Control\n0 1\nField Fluctuation 0.5\n");
    expectSet(" *** Auto Convergence Control\n0 1\nField Fluctuation 0.5\n",
              "auto-convergence/field-fluctuation", "0.25",
              " *** Auto Convergence Control\n0 1\nField Fluctuation 0.25\n");
}

TEST(ControlFileEditTest, TakesTheTitleAsItIs)
{
    EXPECT_EQ(edited(control, "1\n2\n *** Title\nCavity\n *** Units\n3\n", setTo("title", " A  new one ")),
              "1\n2\n *** Title\n A  new one \n *** Units\n3\n");
    EXPECT_EQ(edited(control, "1\n2\n *** Title\n\n", setTo("title", "x")), "1\n2\n *** Title\nx\n");
    EXPECT_EQ(edited(control, "1\n2\n *** Title\nCavity", setTo("title", "")),
              "refused: CannotCarry"); // nothing is read behind a title at the end
    EXPECT_EQ(edited(control, "1\n2\n *** Title\nCavity\n", setTo("title", " *** Units")),
              "refused: CannotCarry");
    EXPECT_EQ(edited(control, "1\n2\n *** Title\nCavity\n", setTo("title", "a\nb")), "refused: CannotCarry");
    EXPECT_EQ(edited(control, "1\n2\n *** Title\nCavity\n", setTo("header/2", "3")),
              "1\n3\n *** Title\nCavity\n");
    expectEdited(control, "1\n2\n *** Title\nCavity\n", setTo("header/1", "3"), "3\n2\n *** Title\nCavity\n");
}

TEST(ControlFileEditTest, AddsAConstantAtTheEndOfTheList)
{
    const std::vector<Edit> pressure = setTo("constants/kPRef", "101325");
    expectSections(" *** Constants\n", pressure, " *** Constants\nkPRef 101325\n");
    expectSections(" *** Constants", pressure, " *** Constants\nkPRef 101325");
    expectSections(" *** Constants\n  kTRef 5\n\n *** Units\n3\n", pressure,
                   " *** Constants\n  kTRef 5\n  kPRef 101325\n\n *** Units\n3\n");
    expectSections(" *** Constants\nkTRef 5", pressure, " *** Constants\nkTRef 5\nkPRef 101325");
    expectSections(" *** Constants\nkTRef 5\n *** Units\n3\n *** Constants\n", pressure,
                   " *** Constants\nkTRef 5\n *** Units\n3\n *** Constants\nkPRef 101325\n");
}

TEST(ControlFileEditTest, AddsAnyConstantThatAWriterWrites)
{
    const Io::CodeNameTable& table = Io::CodeNameTable::instance();
    const Io::ControlFile any;
    for (int code = Io::firstListedConstant; code <= Io::ControlFile::ConstantCount; ++code) {
        if (Io::visitRecord(any, code, [](const auto&, const auto&) {}))
            continue;
        const QString name = table.nameForCode(code, false);
        EXPECT_EQ(edited(control, fileWith(""), setTo("constants/" + name, "0.25")),
                  fileWith(" *** Constants\n" + name.toStdString() + " 0.25\n"));
    }
}

/// What is added has the indentation of a neighbour; where it has none, that of no other line.
TEST(ControlFileEditTest, IndentsNothingLikeTheFirstLine)
{
    const struct {
        const char* before;
        const char* address;
        const char* after;
    } cases[] = {
        {"",                      "constants/kPRef", " *** Constants\nkPRef 5\n"    },
        {" *** Constants\n\n",    "constants/kPRef", " *** Constants\nkPRef 5\n\n"  },
        {"",                      "flags/x",         " *** Flag section\n1\nx 5\n"  },
        {" *** Flag section\n\n", "flags/x",         " *** Flag section\n1\nx 5\n\n"},
    };
    for (const auto& [before, address, after] : cases)
        EXPECT_EQ(edited(control, std::string("  1\n2\n *** Title\na\n") + before, setTo(address, "5")),
                  std::string("  1\n2\n *** Title\na\n") + after);
}

TEST(ControlFileEditTest, MakesAMissingSectionWhereAWriterWritesIt)
{
    const std::vector<Edit> pressure = setTo("constants/kPRef", "101325");
    const std::vector<Edit> flag = setTo("flags/x", "5");
    expectSections(" *** Units\n3\n\n *** Monitor Points\n0\n", pressure,
                   " *** Units\n3\n\n *** Constants\nkPRef 101325\n *** Monitor Points\n0\n");
    expectSections(" *** Units\n3\n *** Monitor Points\n0", flag,
                   " *** Units\n3\n *** Flag section\n1\nx 5\n *** Monitor Points\n0");
    expectSections(" *** Constants\nkPRef 2", flag, " *** Constants\nkPRef 2\n *** Flag section\n1\nx 5");
    EXPECT_EQ(edited(control, "1\n2\n *** Monitor Points\n0\n", flag),
              "1\n2\n *** Flag section\n1\nx 5\n *** Monitor Points\n0\n");
    EXPECT_EQ(edited(control, "1\n2\n", flag), "1\n2\n *** Flag section\n1\nx 5\n");
    EXPECT_EQ(edited(control, "1\n", flag), "refused: Doubtful"); // the title would be the second line
}

TEST(ControlFileEditTest, AddsAFlagAndPutsTheNumberRight)
{
    const std::vector<Edit> flag = setTo("flags/x", "5");
    expectSections(" *** Flag section\n0\n", flag, " *** Flag section\n1\nx 5\n");
    expectSections(" *** Flag section\n", flag, " *** Flag section\n1\nx 5\n");
    expectSections(" *** Flag section", flag, " *** Flag section\n1\nx 5");
    expectSections(" *** Flag section\n 1 more\n y 6\n\n *** Monitor Points\n0\n", flag,
                   " *** Flag section\n 2 more\n y 6\n x 5\n\n *** Monitor Points\n0\n");
    expectSections(" *** Flag section\n7\ny 6", flag, " *** Flag section\n2\ny 6\nx 5"); // which was wrong
    expectSections(" *** Flag section\ny 6\nz 7\n", flag, "refused: Doubtful");          // there is no number
    expectSections(" *** Flag section\n0\n", setTo("flags/a%2Fb%23", ""), " *** Flag section\n1\na/b#\n");
    expectSections(" *** Flag section\n0\n", setTo("flags/%252F%2523%25", ""),
                   " *** Flag section\n1\n%2F%23%\n");
    expectSections(" *** Flag section\n1\ny 6\n *** \nz 7\n", flag,
                   " *** Flag section\n2\ny 6\nx 5\n *** \nz 7\n"); // which has a title without a name
}

TEST(ControlFileEditTest, RemovesConstantsAndFlagsWithTheirLines)
{
    expectSections(" *** Constants\nkTRef 5\n kPRef 6 text\n *** Units\n3\n", removed("constants/kPRef"),
                   " *** Constants\nkTRef 5\n *** Units\n3\n");
    expectSections(" *** Constants\nkPRef 5\nkTRef 5\nkPRef 6", removed("constants/kPRef"),
                   " *** Constants\nkTRef 5\n"); // or an earlier one would come back
    expectSections(" *** Relaxation\nkP 0.5 0\n *** Constants\nkP 5\nkFoo 1\n *** Mine\nkP 7\n",
                   removed("constants/kP"),
                   " *** Relaxation\nkP 0.5 0\n *** Constants\nkFoo 1\n *** Mine\nkP 7\n");
    expectSections(" *** Constants\nkU 5\nkFoo 1\n", removed("constants/kU"), " *** Constants\nkFoo 1\n");
    expectSections(" *** Flag section\n2\nx 5\ny 6\n", removed("flags/x"), " *** Flag section\n1\ny 6\n");
    expectSections(" *** Flag section\n3\nx 5\nx 6\nx\n", removed("flags/x#2"),
                   " *** Flag section\n2\nx 5\nx\n");
    expectSections(" *** Flag section\n3\nx 5\nx 6\nx\n", removed("flags/x"),
                   " *** Flag section\n2\nx 6\nx\n");
    expectSections(" *** Flag section\n1\nx\n", removed("flags/x"), " *** Flag section\n0\n");
}

TEST(ControlFileEditTest, RefusesWhatCannotBe)
{
    const std::string file = " *** Units\n3\n *** Relaxation\nkV 1 1\nkU 0.5\n *** Constants\nkPRef 5\n"
                             "kSmokeOn 1 2 3 4\n *** Auto Convergence Control\n0 0\n"
                             " *** Sequential Solver Iterations\n1\n1\n1\nkT 0.5\n"
                             " *** Solution Control\nkU 1 1 1 0.5\n"
                             " *** Batch\n0\n *** Flag section\n1\nx 5\n";
    const struct {
        const char* address;
        const char* value;
        const char* result;
    } cases[] = {
        {"units",                      "x",          "refused: NotAnInteger"  },
        {"units",                      "1e3",        "refused: NotAnInteger"  },
        {"units",                      "",           "refused: NotAnInteger"  },
        {"units",                      "3000000000", "refused: OutOfRange"    },
        {"units",                      "1 2",        "refused: NotAnInteger"  },
        {"relaxation/kV/under",        "0.5x",       "refused: NotANumber"    },
        {"relaxation/kV/under",        "1e999",      "refused: OutOfRange"    },
        {"relaxation/kU/inertial",     "1",          "refused: NotThere"      }, // the line ends before it
        {"relaxation/kW/under",        "1",          "refused: NotThere"      },
        {"relaxation/kFoo/under",      "1",          "refused: NotThere"      },
        {"auto-convergence/on",        "2",          "refused: NotASwitch"    },
        {"auto-convergence/on",        "true",       "refused: NotASwitch"    },
        {"constants/kSmokeOn/1",       "01",         "refused: NotASwitch"    },
        {"constants/kFoo",             "1",          "refused: UnknownAddress"},
        {"constants/kInflate",         "1",          "refused: UnknownAddress"},
        {"constants/kU",               "1",          "refused: NewFinding"    }, // a save would lose it
        {"sequential-solver/variable", "k T",        "refused: CannotCarry"   },
        {"sequential-solver/variable", "",           "refused: CannotCarry"   },
        {"sequential-solver/variable", "kFoo",       "refused: NewFinding"    },
        {"solution-control/kU/3",      "2",          "refused: NewFinding"    },
        {"batch/1",                    "1",          "refused: NewFinding"    },
        {"flags",                      "2",          "refused: UnknownAddress"},
        {"flags/",                     "2",          "refused: UnknownAddress"},
        {"flags/x",                    "a b",        "refused: CannotCarry"   },
        {"flags/a b",                  "1",          "refused: CannotCarry"   },
        {"flags/x#2",                  "1",          "refused: UnknownAddress"},
        {"flags/x%20",                 "1",          "refused: UnknownAddress"},
        {"flags/x/y",                  "1",          "refused: NotThere"      },
        {"constants",                  "1",          "refused: NotThere"      },
        {"constants/kSmokeOn",         "1",          "refused: UnknownAddress"}, // it has several values
        {"constants/kCond",            "1",          "refused: UnknownAddress"}, // a load gives it another name
        {"constants/kSlipNode",        "1",          "refused: UnknownAddress"},
        {"constants/kSmokeOn/9",       "1",          "refused: NotThere"      },
        {"title/1",                    "1",          "refused: NotThere"      },
        {"header/9",                   "1",          "refused: NotThere"      },
        {"nothing",                    "1",          "refused: UnknownAddress"},
    };
    for (const auto& [address, value, result] : cases)
        EXPECT_EQ(edited(control, fileWith(file), setTo(address, value)), result) << address << ' ' << value;
    for (const char* address : {"units", "title", "relaxation/kV/under", "constants/kSmokeOn/1"})
        EXPECT_EQ(edited(control, fileWith(file), removed(address)), "refused: NotRemovable") << address;
    for (const char* address : {"constants/kTRef", "flags/y", "flags/x#2", "nothing"})
        EXPECT_EQ(edited(control, fileWith(file), removed(address)), "refused: NotThere") << address;
}

TEST(ControlFileEditTest, KeepsBytesThatAreNoCharacters)
{
    EXPECT_EQ(edited(control, fileWith(" *** Units\n3 \xFF\xC3\n *** Flag section\n1\nx\xFF 2\n"),
                     setTo("units", "4")),
              fileWith(" *** Units\n4 \xFF\xC3\n *** Flag section\n1\nx\xFF 2\n"));
    EXPECT_EQ(edited(control, fileWith(" *** Flag section\n1 \xFF\nx\xFF 2\n"), setTo("flags/y", "3")),
              fileWith(" *** Flag section\n2 \xFF\nx\xFF 2\ny 3\n"));
    EXPECT_EQ(edited(control, fileWith(" *** Flag section\n\r1\nx 2\n"), setTo("flags/y", "3")),
              "refused: Doubtful"); // a load reads the number as if it stood there alone
}

TEST(ControlFileEditTest, RefusesWhatALaterSectionOverrides)
{
    expectSections(" *** Flag section\n1\nx 5\n *** Flag section\n1\ny 5\n", setTo("flags/x", "6"),
                   "refused: Doubtful");
    expectSections(" *** Flag section\n1\nx 5\n *** Flag section\n1\ny 5\n", removed("flags/x"),
                   "refused: Doubtful");
    expectSections(" *** Units\n1\n *** Units\n2\n", setTo("units", "3"), " *** Units\n1\n *** Units\n3\n");
    EXPECT_EQ(edited(control, "1\n2\n *** Title\na\n *** Title\n *** Units\n3\n", setTo("title", "b")),
              "refused: Doubtful");
}

/// Sections that are lists leave what they don't say themselves.
TEST(ControlFileEditTest, SetsWhatALaterSectionLeaves)
{
    const struct {
        const char* section;
        const char* address;
        const char* first;
        const char* second;
        const char* changed;
    } cases[] = {
        {"Solution Control",  "solution-control/kU/1",               "kU 1 0 0 0.5\n", "kV 1 0 0 0.5\n", "kU 7 0 0 0.5\n"},
        {"Relaxation",        "relaxation/kU/under",                 "kU 1 0\n",       "kV 1 0\n",       "kU 7 0\n"      },
        {"Constants",         "constants/kPRef",                     "kPRef 1\n",      "kTRef 2\n",      "kPRef 7\n"     },
        {"Property Settings", "property-settings/A/ref_temperature", "1 0 1 2 A\n3\n", "",               "1 0 1 2 A\n7\n"},
    };
    for (const auto& [section, address, first, second, changed] : cases) {
        const std::string title = " *** " + std::string(section) + '\n';
        expectSections(title + first + title + second, setTo(address, "7"), title + changed + title + second);
    }
    const std::string longName(70, 'x'); // of which each letter counts
    const std::string other = " *** " + longName + "z\n3\n";
    expectSections(" *** " + longName + "y\n1 2\n" + other,
                   setTo(QString::fromStdString(longName) + "y/1", "7"),
                   " *** " + longName + "y\n7\n" + other);
}

TEST(ControlFileEditTest, GivesALoadTheNewValues)
{
    const TemporaryFolder folder;
    const std::string path = folder.path("file.ctl");
    ASSERT_TRUE(Io::ControlFile().saveTo(path));
    FileEdit file(path);
    ASSERT_EQ(file.kind(), control);
    ASSERT_TRUE(file.apply({
        {"relaxation/kU/under",  QString("0.123456789")},
        {"constants/kPRef",      QString("5")          },
        {"flags/x",              QString("7")          },
        {"constants/kInflate/4", QString("3")          },
        {"title",                QString("T")          },
    }));
    Io::ControlFile loaded;
    ASSERT_TRUE(loaded.loadFrom(folder.write("file.ctl", file.bytes().toStdString())));
    EXPECT_EQ(loaded.phiUnderRelax(Io::kU), 0.123456789);
    EXPECT_EQ(loaded.constant(Io::kPRef), 5);
    EXPECT_EQ(loaded.flag(0).value(), "7");
    EXPECT_EQ(loaded.inflationData().integer4, 3);
    EXPECT_EQ(loaded.title(), "T");
}

} // namespace
} // namespace Nereo::Inspection
