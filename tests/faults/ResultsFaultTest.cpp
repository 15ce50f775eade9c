#include "faults/AllocationFaults.h"
#include "faults/FileKind.h"
#include "faults/SystemCallFaults.h"
#include "faults/Trials.h"
#include "support/Pipe.h"
#include "support/TemporaryFolder.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ResultsFile.h>
#include <NereoFileIO/ResultsFileHeader.h>
#include <NereoFileIO/ResultsScan.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cerrno>

/// The ways into a results file that say by their result what became of it.

namespace Faults {
namespace {

using Nereo::Io::CodeNameTable;
using Nereo::Io::ResultsFile;
using Nereo::Io::ResultsFileHeader;
using Nereo::Io::ResultsLoadOptions;
using Nereo::Io::ResultsLoadResult;
using Nereo::Io::ResultsProblem;
using Nereo::Io::ResultsScan;

const FileKind& kind = *std::find_if(std::begin(fileKinds), std::end(fileKinds), [](const FileKind& each) {
    return std::string(each.name) == "Results";
});

class ResultsFaults : public ::testing::TestWithParam<std::tuple<Allocator, bool>> {
protected:
    /// The operation with each of its allocations failing. It must leave what it works on as it was.
    template <class Operation, class IsUnchanged>
    void tryAllocations(Operation operation, IsUnchanged isUnchanged) const
    {
        const auto [allocator, persists] = GetParam();
        CodeNameTable::instance(); // which is built once and kept
        runTrials([&, allocator = allocator, persists = persists](int number) {
            const long before = liveAllocations();
            Trial trial = runWithFault(allocator, number, persists, operation);
            if (trial.complaint == nullptr && trial.faultHappened && liveAllocations() != before)
                trial.complaint = "memory is lost";
            if (trial.complaint == nullptr && trial.faultHappened && !isUnchanged())
                trial.complaint = "the object has changed";
            return trial;
        });
    }

    const TemporaryFolder folder;
    const std::string path = folder.write("run.res", bytesOf(kind, fewItems));
};

TEST_P(ResultsFaults, LeaveTheObjectThatIsLoadedByChoice)
{
    ResultsFile results;
    results.setTitle("held before");
    tryAllocations([&] { results.loadFrom(path, ResultsLoadOptions()); },
                   [&] { return results.title() == "held before" && results.fieldDataCodes().isEmpty(); });
}

TEST_P(ResultsFaults, ReachTheCallerOfAHeader)
{
    ResultsFileHeader header;
    tryAllocations([this] { ResultsFileHeader().readFrom(path); }, [&] { return header.readFrom(path); });
}

TEST_P(ResultsFaults, ReachTheCallerOfAScan)
{
    ResultsScan scan;
    tryAllocations([this] { ResultsScan().scan(path); }, [&] { return scan.scan(path).isLoaded(); });
}

std::string nameOfCase(const ::testing::TestParamInfo<std::tuple<Allocator, bool>>& info)
{
    const auto& [allocator, persists] = info.param;
    return std::string(nameOf(allocator)) + (persists ? "FromThenOn" : "Once");
}

INSTANTIATE_TEST_SUITE_P(, ResultsFaults,
                         ::testing::Combine(::testing::Values(Allocator::OperatorNew, Allocator::Malloc),
                                            ::testing::Bool()),
                         nameOfCase);

class FailingReads : public ::testing::Test {
protected:
    /// Calls the operation with each read failing, once and for good, until there are no more reads.
    template <class Operation>
    void eachReadFails(Operation operation)
    {
        int failed = 0;
        for (const int bytesPerRead : {997, 4095}) {
            for (const int times : {1, FaultyFiles::always}) {
                bool isDone = false;
                for (int read = 0; !isDone; ++read) {
                    FaultyFiles files(folder.path());
                    files.limitTransfers(bytesPerRead);
                    files.fail(SystemCall::Read, EIO, read, times);
                    const ResultsLoadResult::Outcome outcome = operation();
                    isDone = files.count(SystemCall::Read) <= read;
                    failed += !isDone;
                    const bool isAllRead = files.transferred() == size; // and only the end was asked for
                    EXPECT_EQ(outcome, isAllRead ? ResultsLoadResult::Loaded : ResultsLoadResult::ReadFailed)
                        << "read " << read << " of " << bytesPerRead << " bytes, " << times << " times";
                }
            }
        }
        RecordProperty("reads", failed);
        EXPECT_GT(failed, 10);
    }

    const TemporaryFolder folder;
    const std::string bytes = bytesOf(kind, manyItems);
    const long size = long(bytes.size());
    const std::string path = folder.write("run.res", bytes);
};

TEST_F(FailingReads, EndALoadByChoice)
{
    ResultsFile results;
    results.setTitle("held before");
    eachReadFails([&] {
        ResultsFile loaded = results;
        const ResultsLoadResult result = loaded.loadFrom(path, ResultsLoadOptions());
        if (!result.isLoaded()) {
            EXPECT_EQ(loaded.title(), "held before");
            EXPECT_EQ(result.problem.kind, ResultsProblem::ReadFailed);
        }
        return result.outcome;
    });
}

TEST_F(FailingReads, EndALoadFromAPipe)
{
    eachReadFails([this] {
        const Pipe pipe(folder.path("pipe"), bytes);
        return ResultsFile().loadFrom(pipe.path(), ResultsLoadOptions()).outcome;
    });
}

TEST_F(FailingReads, EndAScan)
{
    eachReadFails([this] { return ResultsScan().scan(path).outcome; });
}

TEST_F(FailingReads, AreAProblemOfAHeader)
{
    FaultyFiles files(folder.path());
    files.limitTransfers(100);
    for (int read = 0; read < 3; ++read) {
        files.fail(SystemCall::Read, EIO, read);
        ResultsFileHeader header;
        EXPECT_TRUE(header.readFrom(path));
        ASSERT_EQ(header.problems().size(), 1u);
        EXPECT_EQ(header.problems().front().kind, ResultsProblem::ReadFailed);
        EXPECT_EQ(header.problems().front().offset, 100 * read);
    }
    files.fail(SystemCall::Open, EMFILE, 0);
    EXPECT_FALSE(ResultsFileHeader().readFrom(path));
    EXPECT_EQ(ResultsScan().scan(path).outcome, ResultsLoadResult::CannotOpen);
}

} // namespace
} // namespace Faults
