#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace {

using ::testing::HasSubstr;

std::string edit(const QStringList& args, int expectedExitCode)
{
    return printedBy(NEREO_EDIT_CONTROL_FILE, args, expectedExitCode);
}

TEST(EditControlFile, ChangesOneFactorAndNothingElse)
{
    const TemporaryFolder folder;
    const std::string before =
        "A header\r\nof another\r\n *** Relaxation\r\nkU 0.5 0 as usual\r\n *** Unheard\r\nof\r\n";
    const std::string path = folder.write("file.ctl", before);
    EXPECT_EQ(edit({QString::fromStdString(path), "kU", "0.7"}, 0), "relaxation/kU/under: 0.5 -> 0.7\n");
    std::string after = before;
    EXPECT_EQ(readBytes(path), after.replace(after.find("0.5"), 3, "0.7"));
}

TEST(EditControlFile, SaysWhatIsWrong)
{
    const TemporaryFolder folder;
    const QString path =
        QString::fromStdString(folder.write("file.ctl", "1\n2\n *** Relaxation\nkU 0.5 0\n"));
    EXPECT_EQ(edit({}, 2), "usage: edit_control_file FILE VARIABLE FACTOR\n");
    EXPECT_THAT(edit({path, "kU", "much"}, 1), HasSubstr("\"much\" is not a number\n"));
    EXPECT_THAT(edit({path, "kV", "0.7"}, 1), HasSubstr("isn't in the file"));
    EXPECT_THAT(edit({"/nonexistent", "kU", "0.7"}, 1), HasSubstr("No such file or directory"));
}

} // namespace
