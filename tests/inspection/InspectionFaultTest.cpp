#include "Checked.h"

#include "faults/SystemCallFaults.h"
#include "support/Pipe.h"
#include "support/ResultsBytes.h"

#include <Inspection/FreeMemory.h>
#include <NereoInspection/Comparison.h>
#include <NereoInspection/Edit.h>
#include <fuzz/LoadEnd.h>

#include <QDir>

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
    static std::string results()
    {
        ResultsBytes bytes;
        bytes.header(50'000).run().names({"kU", "kP"});
        for (int node = 1; node <= 50'000; ++node)
            bytes.record(node, {1, 2});
        return bytes.bytes().toStdString();
    }

    const TemporaryFolder folder;
    const Example examples[4] = {
        {"file.res",                   FileKind::Results,                          results()                                             },
        { "materials.xml",         FileKind::Materials,
         "<material_database><material type='fluid'><name>" + std::string(100'000, 'x')
             + "</name></material></material_database>"},
        { "file.cfg", FileKind::ConfigurationText,
         "MaxIter 5\nAnalyzePath " + std::string(100'000,                                                                     'x') + "\n"},
        { "file.xml",  FileKind::ConfigurationXml,
         "<Nereo2Config><AnalyzePath>" + std::string(100'000,                                      'x') + "</AnalyzePath></Nereo2Config>"},
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

TEST_F(InspectionFaultTest, EditsNoFileThatCannotBeRead)
{
    const std::string path = folder.write("file.cfg", examples[2].bytes);
    int reads = 0;
    {
        const FaultyFiles counted(folder.path());
        ASSERT_TRUE(FileEdit(path).state());
        reads = counted.count(SystemCall::Read);
    }
    for (int first = 0; first < reads; ++first) {
        FaultyFiles faults(folder.path());
        faults.fail(SystemCall::Read, EIO, first);
        const EditResult state = FileEdit(path, FileKind::ConfigurationText).state();
        if (faults.failed(SystemCall::Read) > 0) {
            EXPECT_EQ(state.problem, EditProblem::CannotOpen) << first;
            EXPECT_EQ(state.message, qt_error_string(EIO)) << first;
        }
    }
}

TEST_F(InspectionFaultTest, SaysWhyAPipeCannotBeCopied)
{
    const struct {
        const char* pipe;
        SystemCall call;
        int first;
    } cases[] = {
        {"a", SystemCall::Open,  1}, // which comes after that of the pipe
        {"b", SystemCall::Write, 0},
    };
    for (const auto& [name, call, first] : cases) {
        const Pipe pipe(folder.path(name), "MaxIter 5\n");
        FaultyFiles faults(QDir::tempPath().toStdString());
        faults.fail(call, ENOSPC, first);
        EXPECT_EQ(linesOf(check(pipe.path())),
                  pipe.path() + ": error: the file can't be opened: " + qt_error_string(ENOSPC).toStdString()
                      + " [cannot-open]\n");
    }
}

/// Where the system doesn't say what memory is free, a comparison takes some all the same.
TEST_F(InspectionFaultTest, ReckonsWithMemoryThatTheSystemDoesNotTellOf)
{
    const qint64 told = freeMemory();
    FaultyFiles faults("/proc/meminfo");
    faults.fail(SystemCall::Open, EACCES, 0);
    EXPECT_EQ(freeMemory(), qint64(2) << 30);
    EXPECT_EQ(faults.failed(SystemCall::Open), 1);
    EXPECT_GT(told, 0);
}

TEST_F(InspectionFaultTest, TakesNoFailureForTheEndOfAComparedFile)
{
    const auto results = [](std::initializer_list<int> nodes, double last) {
        ResultsBytes bytes;
        bytes.header(3).run().names({"kU"});
        for (const int node : nodes)
            bytes.record(node, {node == 3 ? last : 1});
        return bytes.bytes().toStdString();
    };
    const std::string text = examples[2].bytes;
    const std::string otherText = text + "Width 7\n";
    const std::string xml = examples[3].bytes;
    const std::string otherXml = std::string(xml).insert(30, "y");
    const std::string ordered = results({1, 2, 3}, 1);
    const std::string alsoOrdered = results({1, 2, 3}, 2);
    const std::string backwards = results({3, 2, 1}, 2);
    const struct {
        const char* what;
        std::string a;
        std::string b;
    } pairs[] = {
        {"text",                 text,    otherText  },
        {"XML",                  xml,     otherXml   },
        {"results in order",     ordered, alsoOrdered},
        {"results in any order", ordered, backwards  },
    };
    for (const auto& [what, bytesOfA, bytesOfB] : pairs) {
        const std::string a = folder.write("a", bytesOfA);
        const std::string b = folder.write("b", bytesOfB);
        int reads = 0;
        QString differences;
        {
            const FaultyFiles counted(folder.path());
            differences = toText(compare(a, b));
            reads = counted.count(SystemCall::Read);
        }
        EXPECT_NE(differences, "") << what;
        ASSERT_GT(reads, 5);
        for (int first = 0; first < reads; ++first) {
            SCOPED_TRACE(std::string(what) + ", read " + std::to_string(first));
            FaultyFiles faults(folder.path());
            faults.fail(SystemCall::Read, EIO, first);
            const Comparison comparison = compare(a, b);
            if (comparison.outcome == Comparison::Outcome::CannotOpen) {
                EXPECT_EQ(comparison.message, "the file can't be read to its end: " + qt_error_string(EIO));
                EXPECT_TRUE(comparison.file == a || comparison.file == b) << comparison.file;
            } else { // that read would have found the end
                EXPECT_EQ(comparison.outcome, Comparison::Outcome::Compared);
                EXPECT_EQ(toText(comparison), differences);
            }
        }
    }
}

} // namespace
} // namespace Nereo::Inspection
