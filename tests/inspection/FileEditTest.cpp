#include "Edited.h"

#include "support/TemporaryFolder.h"

#include <QFile>

#include <gmock/gmock.h>

namespace Nereo::Inspection {
namespace {

std::string linesOf(const std::vector<ValueChange>& changes)
{
    const auto shown = [](const std::optional<QString>& text) {
        return text ? '"' + text->toStdString() + '"' : std::string("none");
    };
    std::string lines;
    for (const auto& [address, before, after] : changes)
        lines += address.toStdString() + ": " + shown(before) + " -> " + shown(after) + '\n';
    return lines;
}

TEST(FileEditTest, SaysWhatHasChanged)
{
    FileEdit file("file.cfg", "MaxIter  5 \nJobPrefix a  b\nWidth 2\n");
    EXPECT_EQ(file.kind(), FileKind::ConfigurationText);
    EXPECT_EQ(file.value("JobPrefix"), QString("a b")); // as a load gives it
    EXPECT_EQ(file.value("Height"), std::nullopt);
    EXPECT_EQ(linesOf(file.changes()), "");

    EXPECT_TRUE(file.set("MaxIter", 7));
    EXPECT_TRUE(file.set("StopTime", 0.1));
    EXPECT_TRUE(file.remove("Width"));
    EXPECT_TRUE(file.set("MaxIter", "8"));
    EXPECT_EQ(linesOf(file.changes()),
              "MaxIter: \"5\" -> \"8\"\nStopTime: none -> \"0.1\"\nWidth: \"2\" -> none\n");
    EXPECT_EQ(file.bytes(), "MaxIter  8 \nJobPrefix a  b\nStopTime 0.1\n");

    EXPECT_TRUE(file.set("MaxIter", "5"));
    EXPECT_TRUE(file.remove("StopTime"));
    EXPECT_TRUE(file.set("Width", "2"));
    EXPECT_EQ(linesOf(file.changes()), "");
    EXPECT_EQ(file.bytes(), file.originalBytes());
}

/// As it says what a change was.
TEST(FileEditTest, ShowsNumbersAsTheyStandAndTextsAsLoadsGiveThem)
{
    const FileEdit file("file.xml",
                        "<Nereo2Config Version=' 1.0.0.0'><MaxIter> 0x5 </MaxIter><Width>1<!-- -->2</Width>"
                        "<Height>&#53;</Height><JobPrefix> a&amp;b </JobPrefix></Nereo2Config>");
    const struct {
        const char* address;
        const char* value;
    } cases[] = {
        {"version",   "1.0.0.0"},
        {"MaxIter",   "0x5"    },
        {"Width",     "12"     },
        {"Height",    "5"      },
        {"JobPrefix", " a&b "  },
    };
    for (const auto& [address, value] : cases)
        EXPECT_EQ(file.value(address), QString(value)) << address;
}

TEST(FileEditTest, WritesNumbersInTheirShortestForm)
{
    FileEdit file("file.cfg", "StopTime 1\nMaxIter 1\n");
    const struct {
        double number;
        const char* text;
    } cases[] = {
        {0.1,     "0.1"               },
        {1.0 / 3, "0.3333333333333333"},
        {1e300,   "1e+300"            },
        {-2,      "-2"                },
        {qInf(),  "inf"               },
    };
    for (const auto& [number, text] : cases) {
        EXPECT_TRUE(file.set("StopTime", number)) << text;
        EXPECT_EQ(file.value("StopTime"), QString(text));
    }
    EXPECT_TRUE(file.set("MaxIter", -7));
    EXPECT_EQ(file.bytes(), "StopTime inf\nMaxIter -7\n");
}

TEST(FileEditTest, DoesAllOrNothing)
{
    FileEdit file("file.cfg", "MaxIter 5\nWidth 2\n");
    const EditResult result = file.apply({
        {"MaxIter", QString("6")},
        {"Height",  QString("3")},
        {"Width",   QString("x")}
    });
    EXPECT_FALSE(result);
    EXPECT_EQ(result.problem, EditProblem::NotAnInteger);
    EXPECT_EQ(result.address, "Width");
    EXPECT_EQ(result.message, "\"x\" is not a whole number");
    EXPECT_EQ(file.bytes(), file.originalBytes());
    EXPECT_TRUE(file.changes().empty());
}

TEST(FileEditTest, DoesEditsOneAfterTheOther)
{
    FileEdit file("file.cfg", "MaxIter 5\n");
    EXPECT_TRUE(file.apply({
        {"MaxIter", QString("6")},
        {"MaxIter", QString("7")},
        {"Width",   QString("1")},
        {"Width",   std::nullopt},
        {"Height",  QString("2")}
    }));
    EXPECT_EQ(file.bytes(), "MaxIter 7\nHeight 2\n");
    EXPECT_TRUE(file.apply({}));
    EXPECT_EQ(linesOf(file.changes()), "MaxIter: \"5\" -> \"7\"\nHeight: none -> \"2\"\n");
    EXPECT_TRUE(file.apply({
        {"MaxIter", QString("8")},
        {"MaxIter", std::nullopt},
    }));
    EXPECT_EQ(file.bytes(), "Height 2\n");
    EXPECT_EQ(linesOf(file.changes()), "MaxIter: \"5\" -> none\nHeight: none -> \"2\"\n");
}

/// With the name of a material the addresses of others may change.
TEST(FileEditTest, FollowsTheNamesOfMaterials)
{
    const auto database = [](const char* first, const char* second, const char* third) {
        QByteArray bytes = "<material_database version='1.0.0.0'>";
        for (const char* material : {first, second, third})
            bytes += QByteArray("<material type='fluid'>") + material + "</material>";
        return bytes + "</material_database>";
    };
    FileEdit file(
        "file.xml",
        database("<name>A</name><id>1</id>", "<name>A</name><id>2</id>", "<name>C</name><id>x</id>"));
    EXPECT_TRUE(file.apply({
        {"A/id",           QString("3")},
        {"A/name",         QString("B")},
        {"A/id",           QString("4")}, // that of the second one
        {"C/name",         QString("D")}, // in which there is an error
        {"D/ref_pressure", QString("5")},
    }));
    EXPECT_EQ(file.bytes(),
              database("<name>B</name><id>3</id>", "<name>A</name><id>4</id>",
                       "<name>D</name><id>x</id><ref_pressure>5</ref_pressure>"));
}

TEST(FileEditTest, FollowsTheNamesOfMaterialsInAControlFile)
{
    const QByteArray start = "1\n2\n *** Title\na\n *** Property Settings\n1 0 1 2 ";
    FileEdit file("file.ctl", start + "A\n3\nkFoo\n", FileKind::Control);
    EXPECT_TRUE(file.set("property-settings/A/name", "B"));
    EXPECT_EQ(file.bytes(), start + "B\n3\nkFoo\n");
    EXPECT_TRUE(file.set("property-settings/B/ref_temperature", "4"));
    EXPECT_EQ(file.bytes(), start + "B\n4\nkFoo\n");
}

/// Where many are done in one go, the one is still known that can't be.
TEST(FileEditTest, SaysWhichEditIsRefused)
{
    FileEdit file("file.xml", "<Nereo2Config><Width>1</Width><JobPrefix>a</JobPrefix></Nereo2Config>");
    const EditResult result = file.apply({
        {"Width",     QString("6")          },
        {"JobPrefix", QString(QChar(0xD800))},
    });
    EXPECT_EQ(result.problem, EditProblem::CannotCarry);
    EXPECT_EQ(result.address, "JobPrefix");
}

TEST(FileEditTest, OffersTheNearestAddress)
{
    const char* const text = "MaxIter 5\n";
    const char* const xml = "<Nereo2Config><MaxIter>5</MaxIter></Nereo2Config>";
    const char* const control = "NEREO control file rev 06 NEREO Ver 2023.1.0.0\nNEREO\n *** Title\na\n"
                                " *** Relaxation\nkP 0.3 0\n *** Flag section\n1\ncfl 0.5\n";
    const char* const materials = "<material_database version='2024.0.0.0'><material type='fluid'>"
                                  "<name>Water</name><ref_pressure>1</ref_pressure>"
                                  "<property type='density'><value>1</value></property>"
                                  "</material></material_database>";
    const struct {
        const char* name;
        const char* bytes;
        const char* address;
        EditProblem setting;
        const char* forSetting;
        const char* forRemoving;
    } cases[] = {
        {"a.cfg", text,      "Maxiter",                     EditProblem::UnknownAddress, "MaxIter",              "MaxIter"},
        {"a.cfg", text,      "StopTme",                     EditProblem::UnknownAddress, "StopTime",             ""       },
        {"a.xml", xml,       "MaxItr",                      EditProblem::UnknownAddress, "MaxIter",              "MaxIter"},
        {"a.xml", xml,       "stoptime",                    EditProblem::UnknownAddress, "StopTime",             ""       },
        {"a.ctl", control,   "relaxation/kP/undr",          EditProblem::NotThere,       "relaxation/kP/under",
         "relaxation/kP/under"                                                                                            },
        {"a.ctl", control,   "relaxatoin/kP/under",         EditProblem::UnknownAddress, "relaxation/kP/under",
         "relaxation/kP/under"                                                                                            },
        {"a.ctl", control,   "constants/kGravy",            EditProblem::UnknownAddress, "constants/kGravY",     ""       },
        {"a.ctl", control,   "anything/at/all",             EditProblem::UnknownAddress, "",                     ""       },
        {"a.ctl", control,   "constants/kTurbRato",         EditProblem::UnknownAddress, "constants/kTurbRatio", ""       },
        {"a.ctl", control,   "constants/kHydrostatPresFlo", EditProblem::UnknownAddress,
         "constants/kHydrostatPresFlow",                                                                         ""       },
        {"a.ctl", control,   "constants/kSmokeOm",          EditProblem::UnknownAddress, "",
         ""                                                                                                               }, // it is none that is added
        {"a.xml", materials, "Watr/density/value",          EditProblem::NotThere,       "Water/density/value",
         "Water/density/value"                                                                                            },
        {"a.xml", materials, "Water/refpressure",           EditProblem::UnknownAddress, "Water/ref_pressure",
         "Water/ref_pressure"                                                                                             },
    };
    const auto expectRefused = [](const EditResult& result, EditProblem problem, const std::string& nearest) {
        const std::string question = nearest.empty() ? "" : "; did you mean \"" + nearest + "\"?";
        EXPECT_EQ(result.problem, problem);
        EXPECT_EQ(result.nearest.toStdString(), nearest);
        const std::string message = result.message.toStdString();
        EXPECT_GT(message.size(), question.size()) << message;
        EXPECT_THAT(message, testing::EndsWith(question));
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.address);
        FileEdit file(row.name, row.bytes);
        expectRefused(file.set(row.address, "1"), row.setting, row.forSetting);
        expectRefused(file.remove(row.address), EditProblem::NotThere, row.forRemoving);
    }
}

// What an edit is refused with, the whole of it

/// A value that can't be set, or without one a value that can't be removed.
struct RefusedEdit {
    QString address;
    std::optional<QString> value;
    std::string answer;
};

template <std::size_t size>
void expectRefused(FileKind kind, const QByteArray& bytes, const RefusedEdit (&edits)[size])
{
    const bool isXml = kind == FileKind::ConfigurationXml || kind == FileKind::Materials;
    for (const auto& [address, value, answer] : edits) {
        FileEdit file(isXml ? "file.xml" : "file.txt", bytes, kind);
        const EditResult result = value ? file.set(address, *value) : file.remove(address);
        EXPECT_EQ(nameOf(result.problem) + (": " + result.message.toStdString()), answer);
        EXPECT_EQ(result.address, address) << answer;
    }
}

const std::string doubtful = "Doubtful: it can't be told for sure which bytes of the file are to change";
const std::string notGivenBack = "CannotCarry: a load of the file wouldn't give such a text back";

TEST(FileEditTest, SaysWhyAnEditOfATextIsRefused)
{
    const std::string blanks = "has white space at an end, two blanks in a row, or white space other than "
                               "blanks, which a load doesn't keep";
    const std::string noCharacters = "CannotCarry: the encoding of the file has no characters for the text";
    const std::string noKind = "NewFinding: nothing in the file would tell any more of what kind it is";
    const QString tooLong(1000, '_');
    const std::string shortened = '"' + std::string(199, '_') + "\xE2\x80\xA6\"";
    const std::string stray = "NewFinding: a check of the file would then find stray-character JobPrefix";
    const RefusedEdit edits[] = {
        {"MaxIter",   "5.0",             R"(NotAnInteger: "5.0" is not a whole number)"                    },
        {"MaxIter",   "2147483648",      R"(OutOfRange: "2147483648" is outside -2147483648 to 2147483647)"},
        {"StopTime",  "1,5",             R"(NotANumber: "1,5" is not a number)"                            },
        {"StopTime",  "1e400",           R"(OutOfRange: "1e400" is outside the range of numbers)"          },
        {"StopTime",  "1e-400",          R"(OutOfRange: "1e-400" is outside the range of numbers)"         },
        {"StopTime",  tooLong,           "NotANumber: " + shortened + " is not a number"                   },
        {"JobPrefix", "a  b",            R"(CannotCarry: "a  b" )" + blanks                                },
        {"ExePath",   " b",              R"(CannotCarry: " b" )" + blanks                                  },
        {"JobPrefix", QString(QChar(0)), stray                                                             },
        {"JobPrefix", QChar(0xD800),     noCharacters                                                      },
        {"odd one",   "1",               R"(UnknownAddress: "odd one" is no value of such a file)"         },
        {"Width",     {},                R"(NotThere: "Width" isn't in the file)"                          },
    };
    expectRefused(FileKind::ConfigurationText, "MaxIter 5\nStopTime 1\nJobPrefix a\n", edits);
    const RefusedEdit lastOnes[] = {
        {"MaxIter", {}, noKind},
    };
    expectRefused(FileKind::ConfigurationText, "MaxIter 5\n", lastOnes);
}

TEST(FileEditTest, SaysWhyAnEditOfADocumentIsRefused)
{
    const std::string notAllowed = "CannotCarry: \"\x01\" has a character that XML doesn't allow";
    const std::string marks = ", or begins with a byte-order mark, which a load doesn't keep";
    const std::string notRemovable =
        R"(NotRemovable: "version" is neither a setting, nor a constant, nor a flag)";
    const RefusedEdit edits[] = {
        {"JobPrefix", QString(QChar(1)), notAllowed + marks                                                },
        {"ExePath",   QString(QChar(1)), notAllowed                                                        },
        {"version",   "2025.1",          R"(NotAVersion: "2025.1" isn't four whole numbers joined by dots)"},
        {"version",   {},                notRemovable                                                      },
        {"Width",     "2",               doubtful                                                          },
    };
    expectRefused(FileKind::ConfigurationXml,
                  "<Nereo2Config Version='1.0.0.0'><MaxIter>5</MaxIter><JobPrefix>a</JobPrefix>"
                  "<Width>1<b/></Width></Nereo2Config>",
                  edits);
    const RefusedEdit additions[] = {
        {"version", "1.0.0.0", R"(NotThere: "version" isn't in the file, and can't be added)"},
        {"MaxIter", "2",       doubtful                                                      },
        {"MaxIter", "x",       R"(NotAnInteger: "x" is not a whole number)"                  },
    };
    expectRefused(FileKind::ConfigurationXml, "<a><Nereo2Config/><Nereo2Config/></a>", additions);
}

TEST(FileEditTest, SaysWhyAnEditOfAControlFileIsRefused)
{
    const std::string count = "UnknownAddress: the number of flags is put right by itself where flags come "
                              "and go; did you mean \"flags/x\"?";
    const std::string space = R"(CannotCarry: "a b" has white space, and can be no part of a flag)";
    const std::string blanks = "is empty, or has white space at an end, two blanks in a row, or white space "
                               "other than blanks";
    const std::string ofTitle = R"(NotRemovable: "title" is neither a setting, nor a constant, nor a flag)";
    const std::string inertial =
        R"(NotThere: "relaxation/kU/inertial" isn't in the file, and can't be added)";
    const std::string smoke = R"(NotThere: "constants/kSmokeOn/9" isn't in the file, and can't be added)"
                              R"(; did you mean "constants/kSmokeOn/1"?)";
    const RefusedEdit edits[] = {
        {"constants/kSmokeOn/1",       "on",         R"(NotASwitch: "on" is neither 0 nor 1)"                    },
        {"constants/kSmokeOn/9",       "1",          smoke                                                       },
        {"constants/",                 "1",          R"(UnknownAddress: "constants/" is no value of such a file)"},
        {"relaxation/kU/inertial",     "1",          inertial                                                    },
        {"sequential-solver/variable", "",           R"(CannotCarry: "" )" + blanks                              },
        {"sequential-solver/variable", "k\tT",       "CannotCarry: \"k\tT\" " + blanks                           },
        {"sequential-solver/variable", "k T",        notGivenBack                                                },
        {"title",                      " *** Units", notGivenBack                                                },
        {"title",                      {},           ofTitle                                                     },
        {"flags",                      "2",          count                                                       },
        {"flags/y",                    "a b",        space                                                       },
        {"flags/z",                    "a b",        space                                                       },
        {"flags/a b",                  "1",          space                                                       },
        {"flags/x",                    "6",          doubtful                                                    },
        {"flags/x",                    {},           doubtful                                                    },
    };
    expectRefused(FileKind::Control,
                  "1\n2\n *** Title\na\n *** Relaxation\nkU 0.5\n *** Constants\nkSmokeOn 1 2 3 4\n"
                  " *** Sequential Solver Iterations\n1\n1\n1\nkT 0.5\n"
                  " *** Flag section\n1\nx 5\n *** Flag section\n1\ny 5\n",
                  edits);
    const RefusedEdit additions[] = {
        {"flags/z", "1", "Doubtful: there are bytes before it that are no characters"},
    };
    expectRefused(FileKind::Control, "1\n2\n *** Title\na\n *** Flag section\n\r1\ny 5\n", additions);
}

TEST(FileEditTest, SaysWhyAnEditOfMaterialsIsRefused)
{
    const std::string finds = "NewFinding: a check of the file would then find ";
    const RefusedEdit edits[] = {
        {"Water/id",     {},      R"(NotRemovable: "Water/id" is neither a setting, nor a constant, nor a flag)"},
        {"Water/colour", "1",     R"(UnknownAddress: "Water/colour" is no value of such a file)"                },
        {"Water#2/type", "odd",   finds + "unknown-material-type Water/type"                                    },
        {"Ice/name",     "Water", finds + "repeated-material /name"                                             },
    };
    expectRefused(FileKind::Materials,
                  "<material_database version='1.0.0.0'>"
                  "<material type='fluid'><name>Water</name><id>1</id></material>"
                  "<material type='fluid'><name>Water</name><id>2</id></material>"
                  "<material type='fluid'><name>Ice</name></material></material_database>",
                  edits);
}

/// Where the address is right, none is near.
TEST(FileEditTest, OffersNoAddressForAnotherProblem)
{
    FileEdit file("a.ctl",
                  "NEREO control file rev 06 NEREO Ver 2023.1.0.0\nNEREO\n *** Title\na\n"
                  " *** Relaxation\nkP 0.3\nkU 0.3 0\n");
    EXPECT_EQ(file.set("relaxation/kP/under", "x").nearest, "");
    EXPECT_EQ(file.remove("title").nearest, "");
    const EditResult result = file.set("relaxation/kP/inertial", "1");
    EXPECT_EQ(result.problem, EditProblem::NotThere);
    EXPECT_EQ(result.nearest, ""); // its place is known, and empty
}

TEST(FileEditTest, SetsMaterialsThatUseOneAnother)
{
    FileEdit file("file.xml",
                  "<material_database version='2024.0.0.0'><material type='fluid'><name>a</name>"
                  "<id>1</id></material><material type='fluid'><name>b</name><id>2</id></material>"
                  "</material_database>");
    EXPECT_EQ(file.set("a/id", "2").problem, EditProblem::NewFinding);
    EXPECT_TRUE(file.apply({
        {"a/id", QString("2")},
        {"b/id", QString("1")}
    })); // what is in between doesn't matter
}

TEST(FileEditTest, RefusesFilesThatAreNoneOfTheKinds)
{
    const TemporaryFolder folder;
    const struct {
        const char* name;
        std::string bytes;
        EditProblem problem;
    } cases[] = {
        {"file.gbi", "NEREO\n*** Units\n", EditProblem::NotEditable},
        {"file.res", std::string(400,      '\0'),                    EditProblem::NotEditable},
        {"file.txt",          "anything",                     EditProblem::NotEditable                         },
        {"file.cfg",          "MaxIter 5\n",                     EditProblem::None},
    };
    for (const auto& [name, bytes, problem] : cases) {
        FileEdit file(folder.write(name, bytes));
        EXPECT_EQ(file.state().problem, problem) << name;
        EXPECT_EQ(file.state().address, "");
        EXPECT_EQ(file.state().message,
                  problem == EditProblem::None
                      ? ""
                      : "only configurations, control files and material databases can be edited");
        EXPECT_EQ(file.set("MaxIter", 6).problem, problem) << name;
        EXPECT_EQ(file.save().status,
                  problem == EditProblem::None ? Io::SaveResult::Saved : Io::SaveResult::NoWriter);
    }
    FileEdit missing(folder.path("missing"));
    EXPECT_EQ(missing.state().problem, EditProblem::CannotOpen);
    EXPECT_EQ(missing.state().message, "No such file or directory");
    EXPECT_EQ(missing.value("MaxIter"), std::nullopt);
    EXPECT_EQ(missing.bytes(), "");
    EXPECT_EQ(missing.save().status, Io::SaveResult::NoWriter);
    EXPECT_EQ(missing.save().reason, "No such file or directory");
    EXPECT_EQ(missing.set("MaxIter", 1).message, "No such file or directory");
    ASSERT_TRUE(QFile::resize(QString::fromStdString(folder.write("large", "")), 1 << 30));
    FileEdit large(folder.path("large"), FileKind::ConfigurationText);
    EXPECT_EQ(large.state().problem, EditProblem::CannotOpen);
    EXPECT_EQ(large.state().message, "the file is too large");
    FileEdit nameless("");
    EXPECT_EQ(nameless.state().problem, EditProblem::CannotOpen);
}

TEST(FileEditTest, SavesToTheFileOrToAnother)
{
    const TemporaryFolder folder;
    const std::string path = folder.write("file.cfg", "MaxIter 5\n");
    FileEdit file(path);
    ASSERT_TRUE(file.set("MaxIter", 6));
    EXPECT_EQ(readBytes(path), "MaxIter 5\n");
    EXPECT_TRUE(file.saveTo(folder.path("other.cfg")));
    EXPECT_EQ(readBytes(path), "MaxIter 5\n");
    EXPECT_EQ(readBytes(folder.path("other.cfg")), "MaxIter 6\n");
    EXPECT_TRUE(file.save());
    EXPECT_EQ(readBytes(path), "MaxIter 6\n");
    EXPECT_EQ(file.saveTo(folder.path("no/folder/file.cfg")).status, Io::SaveResult::CannotCreate);
}

TEST(FileEditTest, TakesTheKindThatItIsGiven)
{
    FileEdit file("file", "", FileKind::ConfigurationText);
    EXPECT_TRUE(file.set("MaxIter", 6));
    EXPECT_EQ(file.bytes(), "MaxIter 6\n");
}

TEST(FileEditTest, KeepsAFileOfItsKind)
{
    FileEdit file("file.cfg", "MaxIter 6\n");
    EXPECT_EQ(file.remove("MaxIter").problem, EditProblem::NewFinding); // nothing would tell what it is
}

TEST(FileEditTest, CanBeMoved)
{
    FileEdit file("file.cfg", "MaxIter 6\n");
    FileEdit other = std::move(file);
    EXPECT_TRUE(other.set("MaxIter", 7));
    file = std::move(other);
    EXPECT_EQ(file.bytes(), "MaxIter 7\n");
}

TEST(FileEditTest, DoesManyEditsInOneGo)
{
    QByteArray text = "1\n2\n *** Title\na\n *** Flag section\n1000\n";
    std::vector<Edit> edits;
    for (int i = 0; i < 1000; ++i) {
        text += "f" + QByteArray::number(i) + " 1\n";
        edits.push_back({"flags/f" + QString::number(i), QString("2")});
    }
    FileEdit file("file.ctl", text);
    EXPECT_TRUE(file.apply(edits));
    EXPECT_EQ(file.bytes(), QByteArray(text).replace(" 1\n", " 2\n"));
}

} // namespace
} // namespace Nereo::Inspection
