#include "faults/FileKind.h"
#include "faults/ForkedProcess.h"
#include "support/FileSizeLimit.h"
#include "support/Folder.h"
#include "support/TemporaryFolder.h"

#include "FileIO/FileReplacement.h"

#include <gmock/gmock.h>

#include <QFile>

#include <cerrno>
#include <fstream>
#include <vector>

#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Faults {
namespace {

using Nereo::Io::SaveResult;
using ::testing::ElementsAre;

constexpr int cannotMount = 77; // an exit code

/// Lets this process alone see an empty file system of that size in the folder. Root may do so, and others
/// where the kernel gives them a name space of their own.
bool mountSmallFileSystem(const std::string& folder, const std::string& size)
{
    const uid_t user = getuid();
    const gid_t group = getgid();
    if (unshare(CLONE_NEWNS) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
            return false;
        std::ofstream("/proc/self/setgroups") << "deny";
        std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
        std::ofstream("/proc/self/gid_map") << "0 " << group << " 1";
    }
    return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && mount("tmpfs", folder.c_str(), "tmpfs", 0, ("size=" + size).c_str()) == 0;
}

class FullDisk : public ::testing::TestWithParam<FileKind> {
protected:
    /// A save that finds room for so many bytes.
    void expectPart(const std::unique_ptr<Nereo::Io::File>& file, std::size_t room) const
    {
        const std::string content = kind.describe(*file);
        const std::string path = folder.freshPath(kind.fileName);
        const bool isSaved = [&] {
            const FileSizeLimit limit(room);
            return file->saveTo(path);
        }();
        EXPECT_EQ(isSaved, room >= content.size() || !kind.isXml) << room;
        EXPECT_TRUE(readBytes(path) == content.substr(0, room)) << room;
    }

    const FileKind& kind = GetParam();
    const TemporaryFolder folder;
    const std::string path = folder.path(kind.fileName);
};

TEST_P(FullDisk, KeepsWhatThereIsRoomFor)
{
    const auto few = kind.makeExample(fewItems);
    const std::size_t size = kind.describe(*few).size();
    for (std::size_t room = 0; room <= size + 1; ++room)
        expectPart(few, room);

    const auto many = kind.makeExample(manyItems); // does not fit into the buffers
    for (std::size_t room = 0; room <= kind.describe(*many).size() + 1000; room += 1000)
        expectPart(many, room);
}

TEST_P(FullDisk, LeavesTheOldFileWhereASaveIsWhole)
{
    const auto expectWhole = [this](const Nereo::Io::File& file, std::size_t room) {
        const std::string content = kind.describe(file);
        const SaveResult result = [&] {
            const FileSizeLimit limit(room);
            return file.saveWholeTo(path);
        }();
        const bool isRoom = room >= content.size();
        EXPECT_EQ(result.status, isRoom ? SaveResult::Saved : SaveResult::DiskFull) << room;
        EXPECT_TRUE(readBytes(path) == (isRoom ? content : "old")) << room;
        if (result)
            writeBytes(folder.freshPath(kind.fileName), "old");
    };
    folder.write(kind.fileName, "old");
    const auto few = kind.makeExample(fewItems);
    const std::size_t size = kind.describe(*few).size();
    for (std::size_t room = 0; room <= size + 1; ++room)
        expectWhole(*few, room);

    const auto many = kind.makeExample(manyItems);
    for (std::size_t room = 0; room <= kind.describe(*many).size() + 1000; room += 1000)
        expectWhole(*many, room);
    EXPECT_THAT(namesIn(folder.path()), ElementsAre(kind.fileName));
}

TEST_P(FullDisk, ShowsInTheResultOfXmlAlone)
{
    if (struct stat device {}; ::stat("/dev/full", &device) != 0 || !S_ISCHR(device.st_mode))
        GTEST_SKIP() << "there is no full device";
    ASSERT_TRUE(QFile::link("/dev/full", QString::fromStdString(path)));
    for (const int itemCount : {0, fewItems, manyItems}) {
        const auto file = kind.makeExample(itemCount);
        const std::string content = kind.describe(*file);
        EXPECT_EQ(file->saveTo(path), !kind.isXml) << itemCount;
        EXPECT_EQ(kind.describe(*file), content);
        EXPECT_EQ(file->filePath(), path);
    }
}

TEST_P(FullDisk, LeavesTheOldFileOnASmallFileSystemToo)
{
    const int exitCode = exitCodeOf([this] {
        if (!mountSmallFileSystem(folder.path(), std::to_string(4 * sysconf(_SC_PAGESIZE))))
            return cannotMount;
        folder.write(kind.fileName, "old");
        for (int i = 0; i < 10; ++i) {
            const SaveResult result = kind.makeExample(manyItems)->saveWholeTo(path);
            EXPECT_EQ(result.status, SaveResult::DiskFull);
            EXPECT_EQ(result.reason, qt_error_string(ENOSPC).toStdString());
            EXPECT_EQ(readBytes(path), "old");
            EXPECT_THAT(namesIn(folder.path()), ElementsAre(kind.fileName));
        }
        const auto few = kind.makeExample(0);
        EXPECT_TRUE(few->saveWholeTo(path));
        EXPECT_EQ(readBytes(path), kind.describe(*few));
        return int(HasFailure());
    });
    if (exitCode == cannotMount)
        GTEST_SKIP() << "this user may not mount a file system";
    EXPECT_EQ(exitCode, 0);
}

TEST_P(FullDisk, IsAsSeenOnASmallFileSystem)
{
    const std::size_t room = 2 * std::size_t(sysconf(_SC_PAGESIZE));
    const int exitCode = exitCodeOf([this, room] {
        if (!mountSmallFileSystem(folder.path(), std::to_string(room)))
            return cannotMount;
        const auto file = kind.makeExample(manyItems);
        const std::string content = kind.describe(*file);
        EXPECT_EQ(file->saveTo(path), !kind.isXml);
        EXPECT_TRUE(readBytes(path) == content.substr(0, room));

        const std::string otherPath = folder.path(std::string("other-") + kind.fileName);
        EXPECT_EQ(file->saveTo(otherPath), !kind.isXml); // not one byte is left
        EXPECT_EQ(readBytes(otherPath), "");
        EXPECT_EQ(kind.describe(*file), content);

        QFile::remove(QString::fromStdString(path));
        EXPECT_TRUE(kind.makeExample(fewItems)->saveTo(otherPath));
        EXPECT_EQ(readBytes(otherPath), kind.describe(*kind.makeExample(fewItems)));
        return int(HasFailure());
    });
    if (exitCode == cannotMount)
        GTEST_SKIP() << "this user may not mount a file system";
    EXPECT_EQ(exitCode, 0);
}

TEST(FullDiskOfAnySystem, LeavesTheOldFile)
{
    const TemporaryFolder folder;
    const int exitCode = exitCodeOf([&folder] {
        if (!mountSmallFileSystem(folder.path(), std::to_string(4 * sysconf(_SC_PAGESIZE))))
            return cannotMount;
        const std::string path = folder.write("file", "old");
        {
            const auto file = Nereo::Io::makeQtFileReplacement();
            EXPECT_TRUE(file->open(QString::fromStdString(path), QIODevice::NotOpen));
            file->device().write(QByteArray(1000000, 'x'));
            EXPECT_EQ(file->flush().status, SaveResult::DiskFull);
        }
        EXPECT_EQ(readBytes(path), "old");
        EXPECT_THAT(namesIn(folder.path()), ElementsAre("file"));
        return int(::testing::Test::HasFailure());
    });
    if (exitCode == cannotMount)
        GTEST_SKIP() << "this user may not mount a file system";
    EXPECT_EQ(exitCode, 0);
}

INSTANTIATE_TEST_SUITE_P(, FullDisk, ::testing::ValuesIn(kindsThatAreWritten()),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace Faults
