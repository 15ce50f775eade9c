#include "faults/FileKind.h"
#include "faults/ForkedProcess.h"
#include "support/Folder.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>
#include <vector>

/// Saves that are whole or not at all, in processes that are killed and in several at once.

namespace Faults {
namespace {

using Nereo::Io::File;
using Nereo::Io::SaveResult;
using std::chrono::nanoseconds;
using std::chrono::steady_clock;
using ::testing::Contains;
using ::testing::ElementsAre;

constexpr int largeItemCount = 10000; // half a megabyte and more

/// How often a save is killed: as the environment says, or so often that it takes no more than some seconds.
int killCount()
{
    const char* const count = std::getenv("NEREO_KILLS");
    return count != nullptr ? std::atoi(count) : 20;
}

class KilledSaves : public ::testing::TestWithParam<FileKind> {
protected:
    /// Two contents that take turns.
    struct Example {
        std::unique_ptr<File> file;
        std::string content;
    };

    Example makeExample(int itemCount) const
    {
        auto file = kind.makeExample(itemCount);
        std::string content = kind.describe(*file);
        return {std::move(file), std::move(content)};
    }

    /// Saves in a process of its own, which isn't waited for.
    pid_t startSaving(const File& file) const
    {
        const pid_t process = fork();
        if (process == 0)
            endCopy(file.saveWholeTo(path) ? EXIT_SUCCESS : EXIT_FAILURE);
        return process;
    }

    const FileKind& kind = GetParam();
    const TemporaryFolder folder;
    const std::string path = folder.path(kind.fileName);
};

TEST_P(KilledSaves, LeaveTheOldFileOrTheNewOne)
{
    const Example examples[] = {makeExample(largeItemCount), makeExample(largeItemCount - 100)};
    ASSERT_NE(examples[0].content.size(), examples[1].content.size());
    ASSERT_TRUE(examples[0].file->saveWholeTo(path));

    const auto start = steady_clock::now();
    ASSERT_EQ(exitCodeOf([&] { return int(!examples[0].file->saveWholeTo(path)); }), 0);
    const auto twiceAsLong = 2 * (steady_clock::now() - start); // since other times it may take longer

    const int kills = killCount();
    int old = 0;
    int left = 0;
    int present = 0;
    for (int i = 0; i < kills; ++i) {
        const int next = 1 - present;
        const pid_t process = startSaving(*examples[next].file);
        std::this_thread::sleep_for(twiceAsLong * i / kills); // the first has no time at all
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);

        const std::string content = readBytes(path);
        const bool isOld = content == examples[present].content;
        ASSERT_TRUE(isOld || content == examples[next].content) << "kill " << i << ", " << content.size();
        old += isOld;
        present = isOld ? present : next;
        for (const std::string& name : namesIn(folder.path())) {
            if (name == kind.fileName)
                continue;
            EXPECT_EQ(name.rfind(".nereo-", 0), 0U) << name;
            ++left;
            EXPECT_EQ(unlink(folder.path(name).c_str()), 0);
        }
    }
    EXPECT_GT(old, 0);
    RecordProperty("kills", kills);
    RecordProperty("old", old);
    RecordProperty("left", left);
}

TEST_P(KilledSaves, OfTwoProcessesAtOnceGiveOneOfBothFiles)
{
    constexpr int saves = 10;
    const Example examples[] = {makeExample(largeItemCount), makeExample(manyItems)};
    ASSERT_TRUE(examples[0].file->saveWholeTo(path));

    std::vector<pid_t> processes;
    for (const Example& example : examples) {
        processes.push_back(fork());
        if (processes.back() == 0) {
            bool areSaved = true;
            for (int i = 0; i < saves; ++i)
                areSaved = example.file->saveWholeTo(path) && areSaved;
            endCopy(areSaved ? EXIT_SUCCESS : EXIT_FAILURE);
        }
    }
    const std::vector<std::string> contents {examples[0].content, examples[1].content};
    for (const pid_t process : processes) {
        int status = 0;
        while (waitpid(process, &status, WNOHANG) == 0) {
            const std::string content = readBytes(path);
            ASSERT_TRUE(content == contents[0] || content == contents[1]) << content.size();
        }
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS);
    }
    EXPECT_THAT(namesIn(folder.path()), ElementsAre(kind.fileName));
}

INSTANTIATE_TEST_SUITE_P(, KilledSaves, ::testing::ValuesIn(kindsThatAreWritten()),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace Faults
