#include "faults/AllocationFaults.h"
#include "faults/FileKind.h"
#include "faults/Trials.h"
#include "support/Folder.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QDir>

namespace Faults {
namespace {

using Nereo::Io::File;

class AllocationFaults : public ::testing::TestWithParam<std::tuple<FileKind, Allocator, bool>> {
protected:
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

    /// Loads of a file, behind each of which the object has to be as good as new for a load of the whole one.
    void tryLoadsOf(const std::string& faultyPath) const
    {
        const auto whole = kind.makeEmpty();
        ASSERT_TRUE(whole->loadFrom(path));
        const std::string content = kind.describe(*whole);

        const auto givesWhole = [&](File& file) {
            return file.loadFrom(path) && kind.describe(file) == content;
        };
        const auto isUsable = [&](File& file) {
            if (!kind.loadAdds)
                return givesWhole(file);
            kind.describe(file);
            return givesWhole(*kind.makeEmpty());
        };
        runTrials([&](int number) {
            return withoutLeak([&] {
                const auto file = kind.makeEmpty();
                const auto load = [&] { file->loadFrom(faultyPath); };
                Trial trial = runWithFault(allocator, number, persists, load);
                if (trial.complaint == nullptr && !isUsable(*file))
                    trial.complaint = "the object can't be used any more";
                return trial;
            });
        });
    }

    const FileKind& kind = std::get<FileKind>(GetParam());
    const Allocator allocator = std::get<Allocator>(GetParam());
    const bool persists = std::get<bool>(GetParam());
    const TemporaryFolder folder;
    const std::string path = folder.write(kind.fileName, bytesOf(kind, fewItems));
    const std::string targetName = std::string("saved-") + kind.fileName;
};

TEST_P(AllocationFaults, ReachTheCallerOfALoad)
{
    tryLoadsOf(path);
}

TEST_P(AllocationFaults, ReachTheCallerOfALoadOfABrokenFile)
{
    const std::string bytes = readBytes(path);
    const std::size_t end = bytes.rfind('\n', bytes.size() / 2) + 1; // between two lines, where there are any
    tryLoadsOf(folder.write(std::string("broken-") + kind.fileName, bytes.substr(0, end)));
}

TEST_P(AllocationFaults, ReachTheCallerOfALoadOfNoFile)
{
    tryLoadsOf(folder.path(std::string("missing-") + kind.fileName));
}

TEST_P(AllocationFaults, ReachTheCallerOfASave)
{
    const auto file = kind.makeExample(fewItems);
    const std::string content = kind.describe(*file);
    ASSERT_TRUE(file->saveTo(folder.path(targetName)));

    const auto isUnchanged = [&] {
        const std::string target = folder.freshPath(targetName);
        return kind.describe(*file) == content && file->saveTo(target)
            && (!kind.hasWriter || readBytes(target) == content);
    };
    runTrials([&](int number) {
        return withoutLeak([&] {
            const std::string target = folder.freshPath(targetName);
            Trial trial = runWithFault(allocator, number, persists, [&] { file->saveTo(target); });
            if (trial.complaint == nullptr && !isUnchanged())
                trial.complaint = "the object has changed";
            return trial;
        });
    });
}

TEST_P(AllocationFaults, LeaveTheOldFileWhereASaveIsWhole)
{
    const auto file = kind.makeExample(fewItems);
    const std::string content = kind.describe(*file);
    const std::string target = folder.path("whole/" + targetName);
    ASSERT_TRUE(QDir().mkdir(QString::fromStdString(folder.path("whole"))));
    folder.write("whole/" + targetName, "old");
    EXPECT_EQ(file->saveWholeTo(target).isReplaced(), kind.hasWriter);

    runTrials([&](int number) {
        if (readBytes(target) != "old")
            writeBytes(folder.freshPath("whole/" + targetName), "old");
        return withoutLeak([&] {
            Trial trial = runWithFault(allocator, number, persists, [&] { file->saveWholeTo(target); });
            const std::string& expected = trial.faultHappened || !kind.hasWriter ? "old" : content;
            if (trial.complaint == nullptr && readBytes(target) != expected)
                trial.complaint = "the old file is gone";
            if (trial.complaint == nullptr && namesIn(folder.path("whole")).size() != 1)
                trial.complaint = "another file is left";
            if (trial.complaint == nullptr && kind.describe(*file) != content)
                trial.complaint = "the object has changed";
            return trial;
        });
    });
}

std::string nameOfCase(const ::testing::TestParamInfo<std::tuple<FileKind, Allocator, bool>>& info)
{
    const auto& [kind, allocator, persists] = info.param;
    return std::string(kind.name) + nameOf(allocator) + (persists ? "FromThenOn" : "Once");
}

INSTANTIATE_TEST_SUITE_P(, AllocationFaults,
                         ::testing::Combine(::testing::ValuesIn(fileKinds),
                                            ::testing::Values(Allocator::OperatorNew, Allocator::Malloc),
                                            ::testing::Bool()),
                         nameOfCase);

} // namespace
} // namespace Faults
