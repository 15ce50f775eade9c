#include "faults/FileKind.h"
#include "faults/ForkedProcess.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QFile>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <iterator>
#include <vector>

#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Faults {
namespace {

/// While it lives, no file of this process can grow beyond a size.
class FileSizeLimit {
public:
    explicit FileSizeLimit(std::size_t bytes) : signalHandler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = bytes;
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signalHandler_);
    }

private:
    rlimit before_;
    void (*signalHandler_)(int);
};

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

TEST_P(FullDisk, IsAsSeenOnASmallFileSystem)
{
    const std::size_t room = 2 * std::size_t(sysconf(_SC_PAGESIZE));
    constexpr int cannotMount = 77;
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

std::vector<FileKind> kindsThatAreWritten()
{
    std::vector<FileKind> kinds;
    std::copy_if(std::begin(fileKinds), std::end(fileKinds), std::back_inserter(kinds),
                 [](const FileKind& kind) { return kind.hasWriter; });
    return kinds;
}

INSTANTIATE_TEST_SUITE_P(, FullDisk, ::testing::ValuesIn(kindsThatAreWritten()),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace Faults
