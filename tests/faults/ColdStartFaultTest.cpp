#include "faults/AllocationFaults.h"
#include "faults/FileKind.h"
#include "faults/ForkedProcess.h"
#include "faults/Shared.h"
#include "faults/Trials.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <cstring>
#include <limits>

namespace Faults {
namespace {

constexpr int noFault = std::numeric_limits<int>::max();

/// Each trial is the first use of the library in its process, so that what it builds once is built then. The
/// test itself uses it in processes of their own only.
class ColdStart : public ::testing::TestWithParam<std::tuple<FileKind, Allocator>> {
protected:
    void SetUp() override
    {
        ASSERT_EQ(exitCodeOf([this] {
                      writeBytes(path, bytesOf(kind, fewItems));
                      return int(HasFailure());
                  }),
                  0);
    }

    /// A load and a save, during which an allocation fails.
    Trial loadAndSave(int number) const
    {
        const std::string target = folder.freshPath(std::string("saved-") + kind.fileName);
        return runWithFault(allocator, number, false, [&] {
            const auto file = kind.makeEmpty();
            file->loadFrom(path);
            file->saveTo(target);
        });
    }

    std::string content() const
    {
        const auto file = kind.makeEmpty();
        EXPECT_TRUE(file->loadFrom(path));
        return kind.describe(*file);
    }

    const FileKind& kind = std::get<FileKind>(GetParam());
    const Allocator allocator = std::get<Allocator>(GetParam());
    const TemporaryFolder folder;
    const std::string path = folder.path(kind.fileName);
};

constexpr std::size_t contentCapacity = 10000;

/// What a process has after the first load, with a fault or without, and a second one.
struct State {
    long allocations;
    char content[contentCapacity]; ///< terminated
};

/// Gives whether the content fits.
bool keep(const std::string& content, State& state)
{
    const std::size_t length = content.copy(state.content, contentCapacity - 1);
    state.content[length] = '\0';
    return length == content.size();
}

TEST_P(ColdStart, BuildsItsTablesAgainAfterAnAllocationFailed)
{
    Shared<State> expected;
    const auto run = [&](int number, State& state) {
        const long before = liveAllocations();
        Trial trial = loadAndSave(number);
        if (!keep(content(), state) && trial.complaint == nullptr)
            trial.complaint = "the content is longer than contentCapacity";
        state.allocations = liveAllocations() - before;
        return trial;
    };
    runTrials([&](int) { return run(noFault, *expected); }, Isolation::Process);

    runTrials(
        [&](int number) {
            State state {};
            Trial trial = run(number, state);
            if (trial.complaint == nullptr && std::strcmp(state.content, expected->content) != 0)
                trial.complaint = "the next load gives something else";
            if (trial.complaint == nullptr && state.allocations != expected->allocations)
                trial.complaint = "memory is lost";
            return trial;
        },
        Isolation::Process);
}

INSTANTIATE_TEST_SUITE_P(, ColdStart,
                         ::testing::Combine(::testing::ValuesIn(fileKinds),
                                            ::testing::Values(Allocator::OperatorNew, Allocator::Malloc)),
                         [](const auto& info) {
                             return std::string(std::get<FileKind>(info.param).name)
                                 + nameOf(std::get<Allocator>(info.param));
                         });

} // namespace
} // namespace Faults
