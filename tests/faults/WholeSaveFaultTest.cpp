#include "faults/FileKind.h"
#include "faults/SystemCallFaults.h"
#include "support/Folder.h"
#include "support/TemporaryFolder.h"

#include "FileIO/FileReplacement.h"

#include <NereoFileIO/WriteWhole.h>

#include <gmock/gmock.h>

#include <cerrno>
#include <cstring>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

#ifdef __linux__
#include <sys/xattr.h>
#endif

/// Saves that are whole or not at all, while the system fails them.

namespace Faults {
namespace {

using Nereo::Io::SaveResult;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

constexpr unsigned longestTest = 120; // seconds
constexpr int bytesPerWrite = 20000;  // so that there are some

/// The second value: whether the file system knows files without a name.
class WholeSaveFaults : public ::testing::TestWithParam<std::tuple<FileKind, bool>> {
protected:
    void SetUp() override
    {
        alarm(longestTest); // which stops the process
        writeOld();
    }
    void TearDown() override { alarm(0); }

    void prepare(FaultyFiles& files) const
    {
        files.limitTransfers(bytesPerWrite);
        if (!knowsUnnamedFiles)
            files.refuseUnnamedFiles();
    }

    /// What comes of a save, and whether a file that it made couldn't be removed.
    struct Outcome {
        SaveResult result;
        int calls;
        bool failedToRemove;
    };

    template <class Prepare>
    Outcome save(Prepare prepareFault) const
    {
        FaultyFiles files(folder.path());
        files.limitTransfers(bytesPerWrite);
        if (!knowsUnnamedFiles)
            files.refuseUnnamedFiles();
        prepareFault(files);
        SaveResult result = file->saveWholeTo(path);
        return {std::move(result), files.count(SystemCall::Any), files.failed(SystemCall::Remove) > 0};
    }

    /// The file is the old one or the new one, as the result says, and alone. There is an old one again for
    /// the next save.
    void expectWhole(const Outcome& outcome, const std::string& what) const
    {
        const SaveResult& result = outcome.result;
        EXPECT_EQ(result.status == SaveResult::Saved, result.reason.empty()) << what;
        EXPECT_TRUE(readBytes(path) == (result.isReplaced() ? content : "old")) << what;
        EXPECT_EQ(modeOf(path), mode_t(0640)) << what;
        EXPECT_EQ(kind.describe(*file), content) << what;
        if (outcome.failedToRemove)
            removeOthers();
        EXPECT_THAT(namesIn(folder.path()), ElementsAre(kind.fileName)) << what;
        if (result.isReplaced())
            writeOld();
    }

    void writeOld() const
    {
        writeBytes(folder.freshPath(kind.fileName), "old");
        ASSERT_EQ(chmod(path.c_str(), 0640), 0);
#ifdef __linux__
        setxattr(path.c_str(), "user.note", "kept", 4, 0); // which not every file system knows
#endif
    }

    void removeOthers() const
    {
        for (const std::string& name : namesIn(folder.path())) {
            if (name != kind.fileName) {
                EXPECT_EQ(unlink(folder.path(name).c_str()), 0) << name;
            }
        }
    }

    const FileKind& kind = std::get<FileKind>(GetParam());
    const bool knowsUnnamedFiles = std::get<bool>(GetParam());
    const TemporaryFolder folder;
    const std::string path = folder.path(kind.fileName);
    const std::unique_ptr<Nereo::Io::File> file = kind.makeExample(manyItems);
    const std::string content = kind.describe(*file);
};

TEST_P(WholeSaveFaults, LeaveTheOldFileOrTheNewOneWhicheverCallFails)
{
    int failures = 0;
    for (const int error : {EIO, ENOSPC, EACCES, EINVAL}) {
        for (const int times : {1, 2, FaultyFiles::always}) {
            bool isDone = false;
            for (int number = 0; !isDone; ++number) {
                const Outcome outcome =
                    save([&](FaultyFiles& files) { files.fail(SystemCall::Any, error, number, times); });
                isDone = outcome.calls <= number;
                failures += !outcome.result;
                expectWhole(outcome,
                            std::string(std::strerror(error)) + " from call " + std::to_string(number)
                                + " on, times: " + std::to_string(times));
            }
        }
    }
    EXPECT_GE(failures, 100);
    RecordProperty("failures", failures);
}

TEST_P(WholeSaveFaults, SayWhatFailed)
{
    const struct {
        SystemCall call;
        int number;
        int error;
        SaveResult::Status status;
    } cases[] = {
        {SystemCall::Stat,       0, EIO,     SaveResult::CannotCreate }, // looks at the path
        {SystemCall::Stat,       0, EACCES,  SaveResult::NoPermission },
        {SystemCall::Open,       0, EMFILE,  SaveResult::CannotCreate }, // the folder
        {SystemCall::Open,       0, EACCES,  SaveResult::NoPermission },
        {SystemCall::ReadLink,   0, EIO,     SaveResult::CannotCreate },
        {SystemCall::Open,       1, ETXTBSY, SaveResult::CannotReplace}, // the old file
        {SystemCall::Open,       1, EPERM,   SaveResult::NoPermission },
        {SystemCall::Stat,       1, EIO,     SaveResult::CannotReplace},
        {SystemCall::Write,      0, ENOSPC,  SaveResult::DiskFull     },
        {SystemCall::Write,      1, EDQUOT,  SaveResult::DiskFull     },
        {SystemCall::Write,      0, EFBIG,   SaveResult::DiskFull     },
        {SystemCall::Write,      1, EIO,     SaveResult::WriteFailed  },
        {SystemCall::Stat,       2, EIO,     SaveResult::WriteFailed  }, // the new file
        {SystemCall::Attribute,  0, EIO,     SaveResult::WriteFailed  },
        {SystemCall::Attribute,  1, EIO,     SaveResult::WriteFailed  },
        {SystemCall::Attribute,  2, EIO,     SaveResult::WriteFailed  },
        {SystemCall::ChangeMode, 0, EPERM,   SaveResult::NoPermission },
        {SystemCall::ChangeMode, 0, EIO,     SaveResult::WriteFailed  },
        {SystemCall::Force,      0, EIO,     SaveResult::WriteFailed  },
        {SystemCall::Force,      0, ENOSPC,  SaveResult::DiskFull     },
        {SystemCall::Rename,     0, EBUSY,   SaveResult::CannotReplace},
        {SystemCall::Rename,     0, EPERM,   SaveResult::NoPermission },
    };
    for (const auto& [call, number, error, status] : cases) {
        const std::string what = std::to_string(int(call)) + ' ' + std::strerror(error);
        const Outcome outcome = save([&, call = call, number = number, error = error](FaultyFiles& files) {
            files.fail(call, error, number, 1);
        });
        EXPECT_EQ(outcome.result.status, status) << what;
        EXPECT_EQ(outcome.result.reason, qt_error_string(error).toStdString()) << what;
        expectWhole(outcome, what);
    }
}

TEST_P(WholeSaveFaults, EndWhereTheSystemTakesNothing)
{
    const Outcome outcome = save([](FaultyFiles& files) { files.limitTransfers(0); });
    EXPECT_EQ(outcome.result.status, SaveResult::WriteFailed);
    EXPECT_EQ(outcome.result.reason, qt_error_string(EIO).toStdString());
    expectWhole(outcome, "nothing taken");
}

TEST_P(WholeSaveFaults, FollowNoLinksForEver)
{
    const Outcome outcome = save([](FaultyFiles& files) { files.turnIntoLinks(); });
    EXPECT_EQ(outcome.result.status, SaveResult::CannotCreate);
    EXPECT_EQ(outcome.result.reason, qt_error_string(ELOOP).toStdString());
    expectWhole(outcome, "links");
}

TEST_P(WholeSaveFaults, SayThatTheNameOfTheNewFileCannotBeMade)
{
    const SystemCall call = knowsUnnamedFiles ? SystemCall::Link : SystemCall::Open;
    const int first = knowsUnnamedFiles ? 0 : 2; // behind the folder and the old file
    const struct {
        int error;
        SaveResult::Status status;
    } cases[] = {
        {EEXIST, SaveResult::CannotCreate}, // whatever the name
        {EMLINK, SaveResult::CannotCreate},
        {EROFS,  SaveResult::NoPermission},
        {EDQUOT, SaveResult::DiskFull    },
    };
    for (const auto& [error, status] : cases) {
        const Outcome outcome =
            save([&, error = error](FaultyFiles& files) { files.fail(call, error, first); });
        EXPECT_EQ(outcome.result.status, status) << std::strerror(error);
        EXPECT_EQ(outcome.result.reason, qt_error_string(error).toStdString());
        expectWhole(outcome, std::strerror(error));
    }

    const int tries = knowsUnnamedFiles ? 5 : 6; // the first in vain, as no file without a name is to be had
    const Outcome outcome = save([&](FaultyFiles& files) { files.fail(call, EEXIST, first, tries); });
    EXPECT_EQ(outcome.result.status, SaveResult::Saved);
    expectWhole(outcome, "names that were taken");
}

TEST_P(WholeSaveFaults, SayThatTheNewFileMayNotOutliveAPowerFailure)
{
    const int forcingTheFolder = knowsUnnamedFiles ? 2 : 1; // behind the file, which then has its name
    for (int number = 1; number <= forcingTheFolder; ++number) {
        const Outcome failed =
            save([&](FaultyFiles& files) { files.fail(SystemCall::Force, ENOSPC, number); });
        EXPECT_EQ(failed.result.status, SaveResult::NotForced);
        EXPECT_EQ(failed.result.reason, qt_error_string(ENOSPC).toStdString());
        expectWhole(failed, "new, but not forced");
    }

    // Some file systems know no such thing.
    const Outcome unknown =
        save([&](FaultyFiles& files) { files.fail(SystemCall::Force, EINVAL, forcingTheFolder); });
    EXPECT_EQ(unknown.result.status, SaveResult::Saved);
    expectWhole(unknown, "folders aren't forced");
}

TEST_P(WholeSaveFaults, SayThatTheNewFileCannotBeClosed)
{
    const Outcome outcome = save([](FaultyFiles& files) { files.fail(SystemCall::Close, EIO, 0, 1); });
    EXPECT_EQ(outcome.result.status, knowsUnnamedFiles ? SaveResult::Saved : SaveResult::WriteFailed);
    expectWhole(outcome, "closed"); // what has no name is closed when it has been forced once more
}

TEST_P(WholeSaveFaults, DoNotMatterWhereThereIsAnotherWay)
{
    const struct {
        SystemCall call;
        int error;
        int first;
        int times;
    } cases[] = {
        {SystemCall::Open,      EOPNOTSUPP, 2, 1                  }, // a file without a name
        {SystemCall::Access,    ENOENT,     0, 1                  }, // there is no /proc
        {SystemCall::Attribute, ENOTSUP,    0, FaultyFiles::always},
        {SystemCall::Attribute, ENODATA,    1, FaultyFiles::always}, // nor are they there to be removed
        {SystemCall::Close,     EINTR,      0, FaultyFiles::always}, // it is closed nevertheless
        {SystemCall::Close,     EIO,        1, FaultyFiles::always}, // of what was only read
    };
    for (const auto& [call, error, first, times] : cases) {
        const std::string what = std::to_string(int(call)) + ' ' + std::strerror(error);
        const Outcome outcome = save([&, call = call, error = error, first = first, times = times](
                                         FaultyFiles& files) { files.fail(call, error, first, times); });
        EXPECT_EQ(outcome.result.status, SaveResult::Saved) << what << ", " << outcome.result.reason;
        expectWhole(outcome, what);
    }
}

TEST_P(WholeSaveFaults, AreTriedAgainWhereASignalInterruptsThem)
{
    for (const SystemCall call : {SystemCall::Open, SystemCall::Write, SystemCall::Force}) {
        for (int first = 0; first < 10; ++first) {
            const Outcome outcome = save([&](FaultyFiles& files) { files.fail(call, EINTR, first, 3); });
            EXPECT_EQ(outcome.result.status, SaveResult::Saved) << int(call) << ' ' << first;
            expectWhole(outcome, "interrupted");
        }
    }
}

TEST_P(WholeSaveFaults, DoNotMatterWhereWritesAreShort)
{
    for (const int limit : {1, 7, 4095, 16383}) {
        const Outcome outcome = save([&](FaultyFiles& files) { files.limitTransfers(limit); });
        EXPECT_EQ(outcome.result.status, SaveResult::Saved) << limit;
        expectWhole(outcome, "short writes");
    }
}

TEST_P(WholeSaveFaults, OfAnOwnerThatCannotBeKeptLeaveTheOldFile)
{
    if (chown(path.c_str(), 1234, 5678) != 0)
        GTEST_SKIP() << "only root makes files of others";
    const struct {
        int error;
        SaveResult::Status status;
    } cases[] = {
        {EPERM, SaveResult::NoPermission},
        {EIO,   SaveResult::WriteFailed },
    };
    for (const auto& [error, status] : cases) {
        const Outcome outcome =
            save([error = error](FaultyFiles& files) { files.fail(SystemCall::ChangeOwner, error, 0); });
        EXPECT_EQ(outcome.result.status, status);
        EXPECT_EQ(outcome.result.reason, qt_error_string(error).toStdString());
        expectWhole(outcome, std::strerror(error));
    }
}

TEST_P(WholeSaveFaults, LeaveNoNewFile)
{
    ASSERT_EQ(unlink(path.c_str()), 0);
    bool isDone = false;
    for (int number = 0; !isDone; ++number) {
        const Outcome outcome =
            save([&](FaultyFiles& files) { files.fail(SystemCall::Any, ENOSPC, number, 1); });
        isDone = outcome.calls <= number;
        if (outcome.result.isReplaced()) {
            EXPECT_TRUE(readBytes(path) == content) << number;
            EXPECT_EQ(unlink(path.c_str()), 0) << number;
        }
        EXPECT_THAT(namesIn(folder.path()), IsEmpty()) << number;
    }
}

TEST(WholeSaveByQt, SaysThatTheDiskIsFull)
{
    const TemporaryFolder folder;
    const std::string path = folder.write("file", "old");
    {
        FaultyFiles files(folder.path());
        files.fail(SystemCall::Write, ENOSPC, 0);
        const auto replacement = Nereo::Io::makeQtFileReplacement();
        ASSERT_TRUE(replacement->open(QString::fromStdString(path), QIODevice::NotOpen));
        replacement->device().write("new");
        const SaveResult result = replacement->flush();
        EXPECT_EQ(result.status, SaveResult::DiskFull);
        EXPECT_EQ(result.reason, qt_error_string(ENOSPC).toStdString());
    }
    EXPECT_EQ(readBytes(path), "old");
}

TEST(WholeSaveToANamedFile, ShowsNothingOfAFileThatOthersMayNotRead)
{
    const TemporaryFolder folder;
    const std::string path = folder.write("file", "old");
    for (const mode_t mode : {0600U, 0640U, 0666U}) {
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        FaultyFiles files(folder.path());
        files.refuseUnnamedFiles();
        EXPECT_TRUE(Nereo::Io::writeWhole(path, [&](QIODevice& device) {
            const std::vector<std::string> names = namesIn(folder.path());
            EXPECT_THAT(names, ElementsAre(MatchesRegex("\\.nereo-[0-9a-f]{16}"), "file"));
            EXPECT_EQ(modeOf(folder.path(names.front())), mode_t(0600));
            return device.write("new") == 3;
        }));
        EXPECT_EQ(modeOf(path), mode);
    }
}

INSTANTIATE_TEST_SUITE_P(, WholeSaveFaults,
                         ::testing::Combine(::testing::ValuesIn(kindsThatAreWritten()), ::testing::Bool()),
                         [](const auto& info) {
                             return std::string(std::get<FileKind>(info.param).name)
                                 + (std::get<bool>(info.param) ? "" : "WithNamedFiles");
                         });

} // namespace
} // namespace Faults
