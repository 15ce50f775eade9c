#include "Checked.h"

#include "faults/SystemCallFaults.h"

#include <fuzz/LoadEnd.h>

#include <cerrno>

/// What a check says where the system fails it.

namespace Nereo::Inspection {
namespace {

using Faults::FaultyFiles;
using Faults::SystemCall;

struct Example {
    const char* name;
    FileKind kind;
    std::string bytes;
};

class InspectionFaultTest : public ::testing::Test {
protected:
    const TemporaryFolder folder;
    const Example examples[2] = {
        {"file.cfg", FileKind::ConfigurationText,
         "MaxIter 5\nAnalyzePath " + std::string(100'000,     'x') + "\n"                           },
        {"file.xml", FileKind::ConfigurationXml,
         "<Nereo2Config><AnalyzePath>" + std::string(100'000, 'x') + "</AnalyzePath></Nereo2Config>"},
    };
};

TEST_F(InspectionFaultTest, SaysWhatCannotBeOpened)
{
    for (const Example& example : examples) {
        const std::string path = folder.write(example.name, example.bytes);
        FaultyFiles faults(folder.path());
        faults.fail(SystemCall::Open, EACCES, 0);
        EXPECT_EQ(linesOf(check(path)),
                  path + ": error: the file can't be opened: Permission denied [cannot-open]\n");
    }
}

TEST_F(InspectionFaultTest, ReadsOnWhereReadsAreShort)
{
    for (const Example& example : examples) {
        const std::string path = folder.write(example.name, example.bytes);
        FaultyFiles faults(folder.path());
        faults.limitTransfers(5000);
        EXPECT_EQ(linesOf(check(path)), "");
    }
}

TEST_F(InspectionFaultTest, SaysWhatCannotBeReadToItsEnd)
{
    for (const Example& example : examples) {
        const std::string path = folder.write(example.name, example.bytes);
        CheckOptions options;
        options.kind = example.kind;
        int reads = 0;
        {
            const FaultyFiles counted(folder.path());
            check(path, options);
            reads = counted.count(SystemCall::Read);
        }
        ASSERT_GT(reads, 5);
        for (int first = 0; first < reads; ++first) {
            SCOPED_TRACE(std::string(example.name) + ", read " + std::to_string(first));
            FaultyFiles faults(folder.path());
            faults.fail(SystemCall::Read, EIO, first);
            const CheckedFile checked = check(path, options);
            for (const Finding& finding : checked.findings)
                EXPECT_EQ(finding.code, "cannot-open") << linesOf(checked);
        }
        FaultyFiles faults(folder.path());
        faults.fail(SystemCall::Read, EIO, 0);
        const CheckedFile checked = check(path, options);
        ASSERT_EQ(checked.findings.size(), 1U) << linesOf(checked);
        EXPECT_EQ(effectName(checked.findings[0].effect), effectName(endOfLoad(path, example.kind)));
    }
}

TEST_F(InspectionFaultTest, SaysWhatCannotBeReadAtAll)
{
    const std::string path = folder.write("file", "MaxIter 5\n");
    FaultyFiles faults(folder.path());
    faults.fail(SystemCall::Read, EIO, 0);
    const CheckedFile checked = check(path);
    ASSERT_EQ(checked.findings.size(), 1U) << linesOf(checked);
    EXPECT_EQ(checked.findings[0].code, "cannot-open");
    EXPECT_EQ(checked.findings[0].effect, Effect::None);
}

} // namespace
} // namespace Nereo::Inspection
