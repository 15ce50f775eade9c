#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace {

std::string checkFolder(const QStringList& args, int expectedExitCode)
{
    return printedBy(NEREO_CHECK_FOLDER, args, expectedExitCode);
}

TEST(CheckFolder, SaysWhatIsWrongWithEachFileAndBetweenThem)
{
    const TemporaryFolder folder;
    folder.write("b.cfg", "JobPrefix b\nMaxIter many\n");
    folder.write("a.xml", "<Nereo2Config Version=\"2024.0.0.0\"><JobPrefx>a</JobPrefx></Nereo2Config>\n");
    folder.write("c.xml", "<material_database version=\"2025.0.0.0\"/>\n");
    folder.write("notes.txt", "Call the lab on Monday\n");
    const std::string path = folder.path();
    EXPECT_EQ(checkFolder({QString::fromStdString(path)}, 1),
              path
                  + "/a.xml:1:36: warning: \"JobPrefx\" is no setting; it is ignored; did you mean "
                    "\"JobPrefix\"? [unknown-key] JobPrefx\n"
                  + path
                  + "/b.cfg:2:9: error: \"many\" is not a whole number; it is read as 0 [not-an-integer] "
                    "MaxIter\n"
                  + path + "/c.xml:1:29: warning: the version is 2025.0.0.0 in " + path
                  + "/c.xml, but 2024.0.0.0 in " + path + "/a.xml [version-differs] version\n");
}

TEST(CheckFolder, SaysNothingOfAFolderInWhichNothingIsWrong)
{
    const TemporaryFolder folder;
    folder.write("a.cfg", "MaxIter 500\n");
    EXPECT_EQ(checkFolder({QString::fromStdString(folder.path())}, 0), "");
}

TEST(CheckFolder, AsksForAFolder)
{
    for (const QStringList& args : {
             QStringList {},
              QStringList {    "/nonexistent"},
              QStringList { "/", "/"}
    })
        EXPECT_EQ(checkFolder(args, 2), "usage: check_folder FOLDER\n");
}

} // namespace
