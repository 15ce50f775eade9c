#include "faults/FileKind.h"
#include "support/FileSizeLimit.h"
#include "support/Folder.h"
#include "support/OwnProcess.h"
#include "support/TemporaryFolder.h"

#include "FileIO/FileAccess.h"
#include "FileIO/FileReplacement.h"
#include "FileIO/GbiFileTextWriter.h"
#include "FileIO/Writer.h"

#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/GbiFile.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoFileIO/ResultsFile.h>
#include <NereoFileIO/WriteWhole.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <new>
#include <stdexcept>
#include <thread>
#include <vector>

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#ifdef __linux__
#include <sys/xattr.h>
#endif

namespace Nereo::Io {

void PrintTo(const SaveResult& result, std::ostream* out)
{
    *out << "status " << result.status << " (" << result.reason << ")";
}

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::ThrowsMessage;
using ::testing::UnorderedElementsAre;

constexpr uid_t nobody = 65534;

/// With Qt's or the system's words about the error, which depend on the locale; 0 where there are none.
MATCHER_P2(Fails, status, error, "")
{
    const std::string reason = error == 0 ? "" : qt_error_string(error).toStdString();
    return arg.status == status && arg.reason == reason && !arg;
}

SaveResult writeText(const std::string& path, const std::string& text)
{
    return writeWhole(path, [&](QIODevice& device) {
        return device.write(text.data(), qint64(text.size())) == qint64(text.size());
    });
}

/// Runs the body as a user who may not do everything.
template <class Body>
void asAnOrdinaryUser(Body body)
{
    inAProcessOfItsOwn([&] {
        if (geteuid() == 0) {
            ASSERT_EQ(setgroups(0, nullptr), 0);
            ASSERT_EQ(setgid(nobody), 0);
            ASSERT_EQ(setuid(nobody), 0);
        }
        body();
    });
}

class WholeSaves : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0); }

    void link(const std::string& name, const std::string& target) const
    {
        ASSERT_EQ(symlink(target.c_str(), folder.path(name).c_str()), 0) << name;
    }

    void makeFolder(const std::string& name) const
    {
        ASSERT_EQ(mkdir(folder.path(name).c_str(), 0777), 0) << name;
    }

    void setMode(const std::string& name, mode_t mode) const
    {
        ASSERT_EQ(chmod(folder.path(name).c_str(), mode), 0) << name;
    }

    const TemporaryFolder folder;
};

// The bytes

class WholeSavesOf : public ::testing::TestWithParam<Faults::FileKind> {
protected:
    const Faults::FileKind& kind = GetParam();
    const TemporaryFolder folder;
};

TEST_P(WholeSavesOf, AFileWriteTheBytesOfAPlainSave)
{
    for (const int itemCount : {0, Faults::fewItems, Faults::manyItems}) {
        const auto file = kind.makeExample(itemCount);
        const std::string plainPath = folder.freshPath(std::string("plain-") + kind.fileName);
        const std::string path = folder.path(kind.fileName); // of which the next save finds the last
        ASSERT_TRUE(file->saveTo(plainPath));
        EXPECT_THAT(namesIn(folder.path()), ::testing::Contains(std::string("plain-") + kind.fileName));
        EXPECT_EQ(file->saveWholeTo(path).status, SaveResult::Saved);
        EXPECT_TRUE(readBytes(path) == readBytes(plainPath)) << itemCount;
        EXPECT_EQ(file->filePath(), path);
    }
    EXPECT_THAT(namesIn(folder.path()), ::testing::SizeIs(2));
}

INSTANTIATE_TEST_SUITE_P(, WholeSavesOf, ::testing::ValuesIn(Faults::kindsThatAreWritten()),
                         [](const auto& info) { return info.param.name; });

template <class Kind>
void expectSameBytes(const TemporaryFolder& folder, const std::string& sample, const std::string& suffix)
{
    Kind file;
    ASSERT_TRUE(file.loadFrom(NEREO_SAMPLES_DIR "/" + sample));
    ASSERT_TRUE(file.saveTo(folder.path("plain" + suffix)));
    EXPECT_TRUE(file.saveWholeTo(folder.path("whole" + suffix)));
    EXPECT_EQ(readBytes(folder.path("whole" + suffix)), readBytes(folder.path("plain" + suffix)));
}

TEST_F(WholeSaves, OfTheSamplesWriteTheBytesOfPlainOnes)
{
    expectSameBytes<Nereo2ConfigFile>(folder, "NEREO2_default.xml", ".xml");
    expectSameBytes<Nereo2ConfigFile>(folder, "solver.cfg", ".cfg");
    expectSameBytes<ControlFile>(folder, "cavity.ctl", ".ctl");
    expectSameBytes<MaterialDatabaseFile>(folder, "materials.xml", ".xml");
}

TEST_F(WholeSaves, TakeTheFormFromThePathAndNotFromWhereALinkLeads)
{
    link("link.cfg", "target.xml");
    EXPECT_TRUE(Nereo2ConfigFile().saveWholeTo(folder.path("link.cfg")));
    EXPECT_TRUE(Nereo2ConfigFile().saveTo(folder.path("plain.cfg")));
    EXPECT_EQ(readBytes(folder.path("target.xml")), readBytes(folder.path("plain.cfg")));
}

TEST_F(WholeSaves, WriteAnyContent)
{
    for (const std::size_t size : {0U, 1U, 65535U, 65536U, 65537U, 1000000U}) {
        std::string text(size, 'x');
        std::generate(text.begin(), text.end(), [i = 0]() mutable { return char(i++ % 251); });
        for (const std::size_t part : {std::size_t(1), std::size_t(1000), std::size_t(70000), size}) {
            const SaveResult result = writeWhole(folder.path("file"), [&](QIODevice& device) {
                EXPECT_TRUE(device.isSequential() && device.isWritable() && !device.isTextModeEnabled());
                for (std::size_t i = 0; i < size; i += part)
                    device.write(text.data() + i, qint64(std::min(part, size - i)));
                return true;
            });
            EXPECT_EQ(result.status, SaveResult::Saved);
            EXPECT_TRUE(readBytes(folder.path("file")) == text) << size << ' ' << part;
        }
    }
}

// What can go wrong

TEST_F(WholeSaves, SayWhatFailed)
{
    makeFolder("folder");
    link("circle", "circle");
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0666), 0);
    folder.write("file", "kept");

    const std::string longName(256, 'x');
    const std::string nameWithNul("file\0.xml", 9);
    const struct {
        std::string name;
        SaveResult::Status status;
        int error;
    } cases[] = {
        {nameWithNul,    SaveResult::CannotCreate,  ENOENT      },
        {"missing/file", SaveResult::CannotCreate,  ENOENT      },
        {"missing/",     SaveResult::CannotCreate,  ENOENT      },
        {"file/in-it",   SaveResult::CannotCreate,  ENOTDIR     },
        {longName,       SaveResult::CannotCreate,  ENAMETOOLONG},
        {"circle",       SaveResult::CannotCreate,  ELOOP       },
        {"folder",       SaveResult::NoRegularFile, 0           },
        {"folder/.",     SaveResult::NoRegularFile, 0           },
        {"pipe",         SaveResult::NoRegularFile, 0           },
    };
    const auto before = namesIn(folder.path());
    for (const auto& [name, status, error] : cases) {
        const std::string path = folder.path(name);
        const ControlFile file;
        EXPECT_THAT(file.saveWholeTo(path), Fails(status, error)) << path;
        EXPECT_EQ(file.filePath(), path);
        EXPECT_THAT(writeText(path, "text"), Fails(status, error)) << path;
    }
    EXPECT_THAT(ControlFile().saveWholeTo(""), Fails(SaveResult::CannotCreate, ENOENT));
    EXPECT_THAT(ControlFile().saveWholeTo("/dev/null"), Fails(SaveResult::NoRegularFile, 0));
    EXPECT_EQ(namesIn(folder.path()), before);
    EXPECT_EQ(readBytes(folder.path("file")), "kept");
}

TEST_F(WholeSaves, SayWhatMayNotBeDone)
{
    for (const char* name : {"read-only", "write-only", "closed"})
        makeFolder(name);
    const std::string files[] = {
        folder.write("read-only/file", "kept"),
        folder.write("write-only/file", "kept"),
        folder.write("closed/file", "kept"),
        folder.write("read-only.txt", "kept"),
    };
    for (const std::string& path : files)
        ASSERT_EQ(chmod(path.c_str(), 0666), 0);
    setMode("read-only.txt", 0444);
    setMode("read-only", 0555);
    setMode("write-only", 0333); // can't be forced to the disk
    setMode("closed", 0666);
    asAnOrdinaryUser([&] {
        for (const std::string& path : files)
            EXPECT_THAT(writeText(path, "new"), Fails(SaveResult::NoPermission, EACCES)) << path;
        EXPECT_THAT(writeText(folder.path("read-only/new"), "new"), Fails(SaveResult::NoPermission, EACCES));
    });
    for (const char* name : {"read-only", "write-only", "closed"})
        setMode(name, 0777);
    for (const std::string& path : files)
        EXPECT_EQ(readBytes(path), "kept") << path;
    for (const char* name : {"read-only", "write-only", "closed"})
        EXPECT_THAT(namesIn(folder.path(name)), ElementsAre("file"));
}

TEST_F(WholeSaves, LeaveAFileWhoseOwnerTheyCannotKeep)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root makes files of others";
    const std::string path = folder.write("file", "kept");
    setMode("file", 0666);
    asAnOrdinaryUser([&] { EXPECT_THAT(writeText(path, "new"), Fails(SaveResult::NoPermission, EPERM)); });
    EXPECT_EQ(readBytes(path), "kept");
    EXPECT_EQ(statusOf(path).st_uid, 0U);
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("file"));
}

TEST_F(WholeSaves, SayThatTheDiskIsFull)
{
    const std::string path = folder.write("file", "kept");
    inAProcessOfItsOwn([&] {
        const FileSizeLimit limit(1000);
        EXPECT_TRUE(writeText(folder.path("small"), std::string(1000, 'x')));
        EXPECT_THAT(writeText(path, std::string(1001, 'x')), Fails(SaveResult::DiskFull, EFBIG));
        EXPECT_THAT(writeText(path, std::string(1000000, 'x')), Fails(SaveResult::DiskFull, EFBIG));
        EXPECT_THAT(ControlFile().saveWholeTo(path), Fails(SaveResult::DiskFull, EFBIG));
        EXPECT_THAT(Nereo2ConfigFile().saveWholeTo(folder.path("new.xml")),
                    Fails(SaveResult::DiskFull, EFBIG));
    });
    EXPECT_EQ(readBytes(path), "kept");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("file", "small"));
}

TEST_F(WholeSaves, RefuseATextThatXmlCannotCarry)
{
    Nereo2ConfigFile config;
    config.setting(Nereo2ConfigFile::JobPrefix).setValueFromString("a\x01");
    const std::string path = folder.write("run.xml", "kept");
    EXPECT_THAT(config.saveWholeTo(path), Fails(SaveResult::ContentRefused, 0));
    EXPECT_EQ(readBytes(path), "kept");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("run.xml"));
}

TEST_F(WholeSaves, LeaveTheFileWhereTheFunctionGivesFalseOrThrows)
{
    const std::string path = folder.write("file", "kept");
    for (const std::size_t size : {0U, 10U, 1000000U}) {
        EXPECT_THAT(writeWhole(path,
                               [size](QIODevice& device) {
                                   device.write(QByteArray(int(size), 'x'));
                                   return false;
                               }),
                    Fails(SaveResult::ContentRefused, 0));
        EXPECT_THAT(
            [&] {
                writeWhole(path, [size](QIODevice& device) -> bool {
                    device.write(QByteArray(int(size), 'x'));
                    throw std::runtime_error("broken");
                });
            },
            ThrowsMessage<std::runtime_error>("broken"));
        EXPECT_EQ(readBytes(path), "kept");
        EXPECT_THAT(namesIn(folder.path()), ElementsAre("file"));
    }
}

TEST_F(WholeSaves, OfResultsTouchNoFile)
{
    EXPECT_THAT(ResultsFile().saveWholeTo(folder.path("new.res")), Fails(SaveResult::NoWriter, 0));
    const std::string path = folder.write("old.res", "kept");
    EXPECT_THAT(ResultsFile().saveWholeTo(path), Fails(SaveResult::NoWriter, 0));
    EXPECT_EQ(readBytes(path), "kept");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("old.res"));
}

TEST_F(WholeSaves, LeaveNothingBehindWhereTheProcessIsStopped)
{
    GbiFile file;
    file.setUnits(GbiFile::Units(99));
    EXPECT_DEATH(file.saveWholeTo(folder.path("run.gbi")), "FileIO/GbiFileTextWriter");
#ifdef O_TMPFILE // where the file system has files without a name
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
#endif
}

// What is kept

TEST_F(WholeSaves, KeepTheModeOfTheFile)
{
    const std::string path = folder.write("file", "old");
    for (const mode_t mode : {0600U, 0640U, 0664U, 0755U, 0777U, 02755U, 06755U, 01600U}) {
        setMode("file", mode);
        EXPECT_TRUE(writeText(path, std::to_string(mode)));
        EXPECT_EQ(modeOf(path), mode);
        EXPECT_EQ(readBytes(path), std::to_string(mode));
    }
}

TEST_F(WholeSaves, GiveANewFileTheModeThatAPlainSaveGives)
{
    inAProcessOfItsOwn([&] {
        for (const mode_t mask : {0000U, 0002U, 0022U, 0027U, 0077U}) {
            umask(mask);
            EXPECT_TRUE(writeText(folder.freshPath("whole"), "new"));
            EXPECT_TRUE(ControlFile().saveTo(folder.freshPath("plain")));
            EXPECT_EQ(modeOf(folder.path("whole")), modeOf(folder.path("plain")));
            EXPECT_EQ(modeOf(folder.path("whole")), mode_t(0666) & ~mask);
            EXPECT_EQ(umask(mask), mask);
        }
    });
}

TEST_F(WholeSaves, KeepTheOwnerAndTheGroup)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root makes files of others";
    const std::string path = folder.write("file", "old");
    ASSERT_EQ(chown(path.c_str(), 1234, 5678), 0);
    setMode("file", 06750);
    EXPECT_TRUE(writeText(path, "new"));
    EXPECT_EQ(statusOf(path).st_uid, 1234U);
    EXPECT_EQ(statusOf(path).st_gid, 5678U);
    EXPECT_EQ(modeOf(path), mode_t(06750));

    // A folder that gives its own group to new files
    makeFolder("of-a-group");
    ASSERT_EQ(chown(folder.path("of-a-group").c_str(), 0, 4321), 0);
    setMode("of-a-group", 02777);
    const std::string inFolder = folder.write("of-a-group/file", "old");
    ASSERT_EQ(chown(inFolder.c_str(), 0, 0), 0);
    EXPECT_TRUE(writeText(inFolder, "new"));
    EXPECT_EQ(statusOf(inFolder).st_gid, 0U);
    EXPECT_TRUE(writeText(folder.path("of-a-group/new"), "new"));
    EXPECT_EQ(statusOf(folder.path("of-a-group/new")).st_gid, 4321U);
}

#ifdef __linux__

std::string attribute(const std::string& path, const char* name)
{
    char value[1000];
    const ssize_t size = getxattr(path.c_str(), name, value, sizeof value);
    return size < 0 ? "none" : std::string(value, std::size_t(size));
}

TEST_F(WholeSaves, KeepTheAttributesOfTheUser)
{
    const std::string path = folder.write("file", "old");
    if (setxattr(path.c_str(), "user.note", "checked", 7, 0) != 0)
        GTEST_SKIP() << "the file system has no attributes";
    ASSERT_EQ(setxattr(path.c_str(), "user.empty", "", 0, 0), 0);
    EXPECT_TRUE(writeText(path, "new"));
    EXPECT_EQ(attribute(path, "user.note"), "checked");
    EXPECT_EQ(attribute(path, "user.empty"), "");
    EXPECT_EQ(attribute(path, "user.other"), "none");
}

/// An access control list as the kernel has it: the owner and user 1234 may read and write, and the group
/// read.
std::string accessControlList()
{
    const struct {
        std::uint16_t tag;
        std::uint16_t permissions;
        std::uint32_t id;
    } entries[] = {
        {0x01, 6, 0xFFFFFFFF}, // owner
        {0x02, 6, 1234      }, // user
        {0x04, 4, 0xFFFFFFFF}, // group
        {0x10, 6, 0xFFFFFFFF}, // the most of the two before
        {0x20, 0, 0xFFFFFFFF}, // others
    };
    constexpr std::uint32_t version = 2; // in the order of bytes of x86, as the entries
    std::string list(reinterpret_cast<const char*>(&version), sizeof version);
    return list.append(reinterpret_cast<const char*>(entries), sizeof entries);
}

constexpr const char* accessName = "system.posix_acl_access";
constexpr const char* defaultName = "system.posix_acl_default";

TEST_F(WholeSaves, KeepTheAccessControlList)
{
    const std::string list = accessControlList();
    const std::string path = folder.write("file", "old");
    if (setxattr(path.c_str(), accessName, list.data(), list.size(), 0) != 0)
        GTEST_SKIP() << "the file system has no access control lists";
    EXPECT_TRUE(writeText(path, "new"));
    EXPECT_EQ(attribute(path, accessName), list);
    EXPECT_EQ(modeOf(path), mode_t(0660));

    // The folder's list is for new files, and the old one had none.
    makeFolder("with-list");
    const std::string plain = folder.write("with-list/file", "old");
    ASSERT_EQ(setxattr(folder.path("with-list").c_str(), defaultName, list.data(), list.size(), 0), 0);
    ASSERT_EQ(chmod(plain.c_str(), 0640), 0);
    EXPECT_TRUE(writeText(plain, "new"));
    EXPECT_EQ(attribute(plain, accessName), "none");
    EXPECT_EQ(modeOf(plain), mode_t(0640));

    EXPECT_TRUE(writeText(folder.path("with-list/whole"), "new"));
    folder.write("with-list/plain", "new");
    EXPECT_EQ(attribute(folder.path("with-list/whole"), accessName),
              attribute(folder.path("with-list/plain"), accessName));
}

#endif

TEST_F(WholeSaves, ReplaceTheFileThatALinkLeadsTo)
{
    makeFolder("near");
    makeFolder("far");
    const struct {
        const char* link;
        std::string leadsTo;
        const char* file;
    } cases[] = {
        {"near/relative", "file",                           "near/file"        },
        {"near/up",       "../far/file",                    "far/file"         },
        {"near/absolute", folder.path("far/absolute-file"), "far/absolute-file"},
        {"chain",         "near/up",                        "far/file"         },
        {"near/dangling", "../far/not-there-yet",           "far/not-there-yet"},
    };
    for (const char* name : {"near/file", "far/file", "far/absolute-file"})
        folder.write(name, "old");
    for (const auto& [name, leadsTo, file] : cases) {
        link(name, leadsTo);
        EXPECT_TRUE(writeText(folder.path(name), name)) << name;
        EXPECT_TRUE(S_ISLNK(statusOf(folder.path(name)).st_mode)) << name;
        EXPECT_TRUE(S_ISREG(statusOf(folder.path(file)).st_mode)) << name;
        EXPECT_EQ(readBytes(folder.path(file)), name);
    }
    EXPECT_THAT(namesIn(folder.path("near")),
                UnorderedElementsAre("absolute", "dangling", "file", "relative", "up"));
    EXPECT_THAT(namesIn(folder.path("far")), UnorderedElementsAre("absolute-file", "file", "not-there-yet"));
}

TEST_F(WholeSaves, FollowAsManyLinksAsTheSystem)
{
    folder.write("0", "old");
    for (int i = 1; i <= 40; ++i)
        link(std::to_string(i), std::to_string(i - 1));
    EXPECT_TRUE(writeText(folder.path("40"), "new"));
    EXPECT_EQ(readBytes(folder.path("0")), "new");
    link("41", "40");
    EXPECT_THAT(writeText(folder.path("41"), "newer"), Fails(SaveResult::CannotCreate, ELOOP));
    EXPECT_EQ(readBytes(folder.path("0")), "new");
}

TEST_F(WholeSaves, LeaveTheOtherNamesOfTheFileToTheOldContent)
{
    const std::string path = folder.write("file", "old");
    ASSERT_EQ(::link(path.c_str(), folder.path("other").c_str()), 0);
    EXPECT_TRUE(writeText(path, "new"));
    EXPECT_EQ(readBytes(path), "new");
    EXPECT_EQ(readBytes(folder.path("other")), "old");
}

TEST_F(WholeSaves, TakeARelativePath)
{
    makeFolder("below");
    inAProcessOfItsOwn([&] {
        ASSERT_EQ(chdir(folder.path().c_str()), 0);
        EXPECT_TRUE(writeText("file", "here"));
        EXPECT_TRUE(writeText("below/file", "below"));
        EXPECT_TRUE(writeText("../" + folder.path().substr(folder.path().rfind('/') + 1) + "/up", "up"));
    });
    EXPECT_EQ(readBytes(folder.path("file")), "here");
    EXPECT_EQ(readBytes(folder.path("below/file")), "below");
    EXPECT_EQ(readBytes(folder.path("up")), "up");
}

TEST_F(WholeSaves, GoToTheFolderInWhichTheyBeganWhateverTheProgramDoes)
{
    makeFolder("first");
    makeFolder("second");
    inAProcessOfItsOwn([&] {
        ASSERT_EQ(chdir(folder.path("first").c_str()), 0);
        EXPECT_TRUE(writeWhole("file", [&](QIODevice& device) {
            EXPECT_EQ(chdir(folder.path("second").c_str()), 0);
            return device.write("new") == 3;
        }));
    });
    EXPECT_EQ(readBytes(folder.path("first/file")), "new");
    EXPECT_THAT(namesIn(folder.path("second")), IsEmpty());
}

TEST_F(WholeSaves, TakePathsInUtf8)
{
    const std::string path = folder.path("Strömung \xE6\xB5\x81 x.txt");
    EXPECT_TRUE(writeText(path, "text"));
    EXPECT_EQ(readBytes(path), "text");
}

TEST_F(WholeSaves, LeaveNoFileOpen)
{
    const auto openFiles = [] { return namesIn("/proc/self/fd").size(); };
    const std::string path = folder.write("file", "old");
    const std::size_t before = openFiles();
    EXPECT_TRUE(writeText(path, "new"));
    EXPECT_FALSE(writeText(folder.path(), "new"));
    EXPECT_FALSE(writeWhole(path, [](QIODevice&) { return false; }));
    EXPECT_THROW(writeWhole(path, [](QIODevice&) -> bool { throw std::bad_alloc(); }), std::bad_alloc);
    EXPECT_EQ(openFiles(), before);
}

// The way through a class

class TextWriter : public Writer<QTextStream> {
public:
    explicit TextWriter(const std::string& text) : text_(&text) {}

    void write(QTextStream& out) override
    {
        if (text_->empty())
            throw std::bad_alloc();
        out << QString::fromStdString(*text_);
    }

private:
    const std::string* text_;
};

/// A class of a caller, which saves as it likes.
class CallersFile : public File {
public:
    explicit CallersFile(std::function<bool(const std::string&)> save) : save_(std::move(save)) {}

protected:
    bool doLoadFrom(const std::string&) override { return true; }
    bool doSaveTo(const std::string& path) const override { return save_(path); }

private:
    std::function<bool(const std::string&)> save_;
};

TEST_F(WholeSaves, CallTheHookThatAPlainSaveCalls)
{
    const std::string text = "text";
    const std::string path = folder.write("file", "old");
    const CallersFile file([&](const std::string& hookPath) {
        EXPECT_EQ(hookPath, path);
        EXPECT_EQ(file.filePath(), path);
        const bool isSaved = save<TextWriter>(hookPath, text);
        EXPECT_EQ(readBytes(path), "old");
        return isSaved;
    });
    EXPECT_TRUE(file.saveWholeTo(path));
    EXPECT_EQ(readBytes(path), "text");

    writeBytes(path, "old");
    EXPECT_TRUE(file.saveWholeTo(file.filePath()));
    EXPECT_EQ(readBytes(path), "text");
}

TEST_F(WholeSaves, GoByTheResultOfTheHook)
{
    const std::string text = "text";
    const std::string path = folder.write("file", "old");
    const CallersFile file(
        [&](const std::string& hookPath) { return save<TextWriter>(hookPath, text) && false; });
    EXPECT_THAT(file.saveWholeTo(path), Fails(SaveResult::ContentRefused, 0));
    EXPECT_EQ(readBytes(path), "old");
}

TEST_F(WholeSaves, LetTheExceptionOfAWriterThrough)
{
    const std::string nothing;
    const std::string path = folder.write("file", "old");
    const CallersFile file([&](const std::string& hookPath) { return save<TextWriter>(hookPath, nothing); });
    EXPECT_THROW(file.saveWholeTo(path), std::bad_alloc);
    EXPECT_EQ(readBytes(path), "old");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("file"));

    EXPECT_THROW(file.saveTo(path), std::bad_alloc); // the way of plain saves is free again
    EXPECT_EQ(readBytes(path), "");
}

TEST_F(WholeSaves, SayThatAClassOpensItsFilesByItself)
{
    const std::string path = folder.write("file", "old");
    for (const bool result : {true, false}) {
        const CallersFile file([result](const std::string& hookPath) {
            writeBytes(hookPath, "by itself");
            return result;
        });
        EXPECT_THAT(file.saveWholeTo(path), Fails(SaveResult::NoWriter, 0));
        EXPECT_EQ(readBytes(path), "by itself");
    }
}

TEST_F(WholeSaves, ConcernTheFileAtTheirPathAndNoOther)
{
    const std::string text = "text";
    const std::string path = folder.write("file", "old");
    const std::string otherPath = folder.path("other");
    const CallersFile inner([&](const std::string& hookPath) { return save<TextWriter>(hookPath, text); });
    const CallersFile outer([&](const std::string& hookPath) {
        EXPECT_TRUE(save<TextWriter>(otherPath, text));
        EXPECT_EQ(readBytes(otherPath), "text");

        EXPECT_TRUE(inner.saveWholeTo(otherPath + "-whole"));
        EXPECT_EQ(readBytes(otherPath + "-whole"), "text");

        std::thread([&] { EXPECT_TRUE(save<TextWriter>(path, text)); }).join();
        EXPECT_EQ(readBytes(path), "text"); // by that thread
        writeBytes(path, "old");

        EXPECT_TRUE(save<TextWriter>(hookPath, text));
        EXPECT_FALSE(save<TextWriter>(hookPath, text)) << "what was written once can't be taken back";
        EXPECT_EQ(readBytes(path), "old");
        return true;
    });
    EXPECT_TRUE(outer.saveWholeTo(path));
    EXPECT_EQ(readBytes(path), "text");
}

// Where the system isn't known: by Qt's own means

class QtReplacement : public WholeSaves {
protected:
    SaveResult write(const std::string& path, const QByteArray& bytes, bool replaces = true) const
    {
        const auto file = makeQtFileReplacement();
        if (const SaveResult result = file->open(QString::fromStdString(path), QIODevice::NotOpen); !result)
            return result;
        file->device().write(bytes);
        const SaveResult result = file->flush();
        return result && replaces ? file->replace() : result;
    }
};

TEST_F(QtReplacement, ReplacesAFile)
{
    const std::string path = folder.write("file", "old");
    setMode("file", 0640);
    EXPECT_TRUE(write(path, "not yet", false));
    EXPECT_EQ(readBytes(path), "old");
    EXPECT_TRUE(write(path, "new"));
    EXPECT_EQ(readBytes(path), "new");
    EXPECT_EQ(modeOf(path), mode_t(0640));
    EXPECT_TRUE(write(folder.path("another"), "new"));
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("another", "file"));
}

TEST_F(QtReplacement, SaysThatItCannotReplaceAFolder)
{
    const auto file = makeQtFileReplacement();
    ASSERT_TRUE(file->open(QString::fromStdString(folder.path("late")), QIODevice::NotOpen));
    makeFolder("late");
    EXPECT_TRUE(file->flush());
    EXPECT_EQ(file->replace().status, SaveResult::CannotReplace);
}

TEST_F(QtReplacement, SaysWhatFailed)
{
    const std::string path = folder.write("file", "kept");
    EXPECT_THAT(write(folder.path(), "new"), Fails(SaveResult::NoRegularFile, 0));
    EXPECT_THAT(write(folder.path("missing/file"), "new"), Fails(SaveResult::CannotCreate, ENOENT));
    inAProcessOfItsOwn([&] {
        const FileSizeLimit limit(1000);
        EXPECT_TRUE(write(folder.path("small"), QByteArray(1000, 'x')));
        for (const int size : {1001, 100000}) // of which QSaveFile takes a thousand
            EXPECT_THAT(write(path, QByteArray(size, 'x')), Fails(SaveResult::WriteFailed, EFBIG));
    });
    makeFolder("read-only");
    setMode("read-only", 0555);
    setMode("file", 0444);
    asAnOrdinaryUser([&] {
        EXPECT_THAT(write(folder.path("read-only/file"), "new"), Fails(SaveResult::CannotCreate, EACCES));
        EXPECT_EQ(write(path, "new").status, SaveResult::NoPermission);
    });
    EXPECT_EQ(readBytes(path), "kept");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("file", "read-only", "small"));
}

} // namespace
} // namespace Nereo::Io
