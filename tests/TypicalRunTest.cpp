#include "support/GoldenFile.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace {

using ::testing::HasSubstr;

ProgramRun typicalRun(const QStringList& args)
{
    return runProgram(NEREO_TYPICAL_RUN, args);
}

TEST(TypicalRun, WritesTheFilesOfTheRun)
{
    TemporaryFolder folder;
    const ProgramRun run = typicalRun({NEREO_SAMPLES_DIR, QString::fromStdString(folder.path("out"))});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    for (const char* name : {"cavity.xml", "cavity.cfg", "materials.xml", "cavity.ctl", "cavity.gbi"})
        expectGolden(readBytes(folder.path(std::string("out/") + name)), std::string("typical-run/") + name);
}

TEST(TypicalRun, ShowsWhatItFound)
{
    TemporaryFolder folder;
    const std::string output = typicalRun({NEREO_SAMPLES_DIR, QString::fromStdString(folder.path())}).output;
    for (const char* text : {
             "MaxIter                     10000       500\n", // of the command line
             "JobPrefix                               cavity\n",
             "tolerance of kP             1e-08       1e-09\n", // of the control file
             "flag restart_every                      100\n",
             "Lid-driven cavity, Re 100, Größe 65 × 65\n", // of the results
             "    0.5000    -0.20719    -0.20581    -0.00138\n",
         })
        EXPECT_THAT(output, HasSubstr(text));
}

TEST(TypicalRun, SaysWhatIsWrong)
{
    TemporaryFolder folder;
    const ProgramRun usage = typicalRun({});
    EXPECT_EQ(usage.exitCode, 2);
    EXPECT_EQ(usage.errors, "usage: typical_run SAMPLES OUTPUT\n");

    const ProgramRun missing = typicalRun({"/nonexistent", QString::fromStdString(folder.path())});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(missing.errors, "typical_run: can't load /nonexistent/NEREO2_default.xml\n");
}

} // namespace
