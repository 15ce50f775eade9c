#include "faults/AllocationFaults.h"
#include "faults/FileKind.h"
#include "faults/Trials.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <new>

namespace Faults {
namespace {

using Nereo::Io::File;

class AllocationFaults : public ::testing::TestWithParam<std::tuple<FileKind, Allocator, bool>> {
protected:
    /// The operation while one allocation fails.
    template <class Operation>
    Trial runWithFault(int number, Operation operation) const
    {
        bool isReported = false;
        const AllocationFault fault(allocator, number, persists);
        try {
            operation();
        } catch (const std::bad_alloc&) {
            isReported = true;
        }
        const bool faultHappened = fault.hasHappened();
        return {faultHappened,
                faultHappened && !isReported ? "std::bad_alloc doesn't reach the caller" : nullptr};
    }

    /// Runs the trial, which leaves nothing behind.
    template <class Function>
    static Trial withoutLeak(Function trial)
    {
        const long before = liveAllocations();
        Trial result = trial();
        if (result.complaint == nullptr && liveAllocations() != before)
            result.complaint = "memory is lost";
        return result;
    }

    const FileKind& kind = std::get<FileKind>(GetParam());
    const Allocator allocator = std::get<Allocator>(GetParam());
    const bool persists = std::get<bool>(GetParam());
    const TemporaryFolder folder;
    const std::string path = folder.write(kind.fileName, bytesOf(kind, fewItems));
};

TEST_P(AllocationFaults, ReachTheCallerOfALoad)
{
    const auto whole = kind.makeEmpty();
    ASSERT_TRUE(whole->loadFrom(path));
    const std::string content = kind.describe(*whole);

    const auto isUsable = [&](File& file) {
        if (!kind.loadAdds)
            return file.loadFrom(path) && kind.describe(file) == content;
        kind.describe(file);
        const auto next = kind.makeEmpty();
        return next->loadFrom(path) && kind.describe(*next) == content;
    };
    runTrials([&](int number) {
        return withoutLeak([&] {
            const auto file = kind.makeEmpty();
            Trial trial = runWithFault(number, [&] { file->loadFrom(path); });
            if (trial.complaint == nullptr && !isUsable(*file))
                trial.complaint = "the object can't be used any more";
            return trial;
        });
    });
}

TEST_P(AllocationFaults, ReachTheCallerOfASave)
{
    const std::string target = folder.path(std::string("saved-") + kind.fileName);
    const auto file = kind.makeExample(fewItems);
    const std::string content = kind.describe(*file);
    ASSERT_TRUE(file->saveTo(target));

    const auto isUnchanged = [&] {
        return kind.describe(*file) == content && file->saveTo(target)
            && (!kind.hasWriter || readBytes(target) == content);
    };
    runTrials([&](int number) {
        return withoutLeak([&] {
            Trial trial = runWithFault(number, [&] { file->saveTo(target); });
            if (trial.complaint == nullptr && !isUnchanged())
                trial.complaint = "the object has changed";
            return trial;
        });
    });
}

std::string nameOfCase(const ::testing::TestParamInfo<std::tuple<FileKind, Allocator, bool>>& info)
{
    const auto& [kind, allocator, persists] = info.param;
    return std::string(kind.name) + (allocator == Allocator::OperatorNew ? "New" : "Malloc")
        + (persists ? "FromThenOn" : "Once");
}

INSTANTIATE_TEST_SUITE_P(, AllocationFaults,
                         ::testing::Combine(::testing::ValuesIn(fileKinds),
                                            ::testing::Values(Allocator::OperatorNew, Allocator::Malloc),
                                            ::testing::Bool()),
                         nameOfCase);

} // namespace
} // namespace Faults
