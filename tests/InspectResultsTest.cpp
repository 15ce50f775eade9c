#include "support/ProgramRun.h"

#include <gmock/gmock.h>

namespace {

using ::testing::HasSubstr;

std::string inspect(const QStringList& args, int expectedExitCode)
{
    return printedBy(NEREO_INSPECT_RESULTS, args, expectedExitCode);
}

TEST(InspectResults, ShowsFactsFieldsProgressAndACutFile)
{
    const std::string output = inspect({NEREO_SAMPLES_DIR "/cavity-be.res"}, 0);
    for (const char* text : {
             "4225 nodes",
             "(unknown)\n",
             "loaded: 4225 of 4225 records\n",
             " at node ",
             "0 nodes without a record\n",
             "cut short: 21",
         })
        EXPECT_THAT(output, HasSubstr(text));
}

TEST(InspectResults, SaysWhatIsWrong)
{
    EXPECT_EQ(inspect({}, 2), "usage: inspect_results FILE\n");
    EXPECT_EQ(inspect({"/nonexistent"}, 1), "inspect_results: can't open /nonexistent\n");
    EXPECT_THAT(inspect({NEREO_SAMPLES_DIR "/materials.xml"}, 1), HasSubstr("no results file: 0 of"));
}

} // namespace
