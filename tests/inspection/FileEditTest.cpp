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
        {"a.cfg", text,      "Maxiter",             EditProblem::UnknownAddress, "MaxIter",             "MaxIter"},
        {"a.cfg", text,      "StopTme",             EditProblem::UnknownAddress, "StopTime",            ""       },
        {"a.xml", xml,       "MaxItr",              EditProblem::UnknownAddress, "MaxIter",             "MaxIter"},
        {"a.xml", xml,       "stoptime",            EditProblem::UnknownAddress, "StopTime",            ""       },
        {"a.ctl", control,   "relaxation/kP/undr",  EditProblem::NotThere,       "relaxation/kP/under",
         "relaxation/kP/under"                                                                                   },
        {"a.ctl", control,   "relaxatoin/kP/under", EditProblem::UnknownAddress, "relaxation/kP/under",
         "relaxation/kP/under"                                                                                   },
        {"a.ctl", control,   "constants/kGravy",    EditProblem::UnknownAddress, "constants/kGravY",    ""       },
        {"a.ctl", control,   "anything/at/all",     EditProblem::UnknownAddress, "",                    ""       },
        {"a.xml", materials, "Watr/density/value",  EditProblem::NotThere,       "Water/density/value",
         "Water/density/value"                                                                                   },
        {"a.xml", materials, "Water/refpressure",   EditProblem::UnknownAddress, "Water/ref_pressure",
         "Water/ref_pressure"                                                                                    },
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
