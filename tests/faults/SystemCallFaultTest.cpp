#include "faults/FileKind.h"
#include "faults/SystemCallFaults.h"
#include "support/TemporaryFolder.h"

#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>

#include <unistd.h>

namespace Faults {
namespace {

using Nereo::Io::File;
using ::testing::AnyOf;
using ::testing::HasSubstr;

/// What a caller sees of a load or save.
struct Outcome {
    std::string result; ///< "true", "false", or the message of an exception
    std::string content;
};

bool operator==(const Outcome& left, const Outcome& right)
{
    return left.result == right.result && left.content == right.content;
}

constexpr std::size_t shown = 100;

void PrintTo(const Outcome& outcome, std::ostream* out)
{
    *out << outcome.result << ", " << outcome.content.size() << " bytes, the last "
         << outcome.content.substr(outcome.content.size() - std::min(outcome.content.size(), shown));
}

template <class Operation>
std::string resultOf(Operation operation)
{
    try {
        return operation() ? "true" : "false";
    } catch (const std::out_of_range& error) {
        return error.what();
    }
}

constexpr unsigned longestTest = 120; // seconds

class SystemCallFaults : public ::testing::TestWithParam<FileKind> {
protected:
    void SetUp() override { alarm(longestTest); } // which stops the process
    void TearDown() override { alarm(0); }

    Outcome load(const std::string& path) const
    {
        const auto file = kind.makeEmpty();
        std::string result = resultOf([&] { return file->loadFrom(path); });
        EXPECT_EQ(file->filePath(), path);
        return {std::move(result), kind.describe(*file)};
    }

    /// What a load of the first so many bytes gives.
    Outcome loadCut(const std::string& bytes, std::size_t size) const
    {
        return load(soundFolder.write(kind.fileName, bytes.substr(0, size)));
    }

    const FileKind& kind = GetParam();
    const TemporaryFolder folder;
    const TemporaryFolder soundFolder; // in which nothing fails
};

TEST_P(SystemCallFaults, DoNotMatterToALoadWhereReadsAreShort)
{
    const std::string path = folder.write(kind.fileName, bytesOf(kind, manyItems));
    const Outcome whole = load(path);
    ASSERT_EQ(whole.result, "true");
    for (const int limit : {1, 7, 4095, 16383}) {
        FaultyFiles files(folder.path());
        files.limitTransfers(limit);
        EXPECT_EQ(load(path), whole) << limit;
    }
}

TEST_P(SystemCallFaults, DoNotMatterToASaveWhereWritesAreShort)
{
    const auto file = kind.makeExample(manyItems);
    for (const int limit : {1, 7, 4095, 16383}) {
        const std::string path = folder.write(kind.fileName, "");
        FaultyFiles files(folder.path());
        files.limitTransfers(limit);
        EXPECT_TRUE(file->saveTo(path)) << limit;
        if (kind.hasWriter) {
            EXPECT_EQ(readBytes(path), kind.describe(*file)) << limit;
        }
    }
}

TEST_P(SystemCallFaults, EndALoadThatCannotOpenTheFile)
{
    const std::string path = folder.write(kind.fileName, bytesOf(kind, fewItems));
    for (const int error : {EACCES, EIO, EMFILE, ENOENT, ENOMEM}) {
        const auto file = kind.makeExample(fewItems);
        const std::string content = kind.describe(*file);
        FaultyFiles files(folder.path());
        files.fail(SystemCall::Open, error, 0);
        EXPECT_FALSE(file->loadFrom(path)) << std::strerror(error);
        EXPECT_EQ(kind.describe(*file), content);
        EXPECT_EQ(file->filePath(), path);
    }
}

TEST_P(SystemCallFaults, EndASaveThatCannotOpenTheFile)
{
    const std::string path = folder.write(kind.fileName, "kept");
    const auto file = kind.makeExample(fewItems);
    const std::string content = kind.describe(*file);
    for (const int error : {EACCES, EIO, EMFILE, ENOSPC, EROFS}) {
        {
            FaultyFiles files(folder.path());
            files.fail(SystemCall::Open, error, 0);
            EXPECT_EQ(file->saveTo(path), !kind.hasWriter) << std::strerror(error);
        }
        EXPECT_EQ(kind.describe(*file), content);
        EXPECT_EQ(readBytes(path), "kept");
    }
}

TEST_P(SystemCallFaults, AreTriedAgainWhereASignalInterruptsThem)
{
    const std::string path = folder.write(kind.fileName, bytesOf(kind, manyItems));
    const Outcome whole = load(path);
    const auto file = kind.makeExample(manyItems);
    for (const SystemCall call : {SystemCall::Open, SystemCall::Read, SystemCall::Write, SystemCall::Close}) {
        for (int first = 0; first < 10; ++first) {
            FaultyFiles files(folder.path());
            files.fail(call, EINTR, first, 3);
            EXPECT_EQ(load(path), whole) << int(call) << ' ' << first;
            files.fail(call, EINTR, first, 3);
            EXPECT_TRUE(file->saveTo(path)) << int(call) << ' ' << first;
        }
    }
    if (kind.hasWriter) {
        EXPECT_EQ(readBytes(path), kind.describe(*file));
    }
}

TEST_P(SystemCallFaults, DoNotMatterToClosing)
{
    const std::string path = folder.write(kind.fileName, bytesOf(kind, manyItems));
    const Outcome whole = load(path);
    const auto file = kind.makeExample(manyItems);
    FaultyFiles files(folder.path());
    files.fail(SystemCall::Close, EIO, 0);
    EXPECT_EQ(load(path), whole);
    EXPECT_TRUE(file->saveTo(path));
    EXPECT_EQ(files.count(SystemCall::Close), kind.hasWriter ? 2 : 1);
    if (kind.hasWriter) {
        EXPECT_EQ(readBytes(path), kind.describe(*file));
    }
}

TEST_P(SystemCallFaults, MatterToTheSizeWhereAReaderAsksForTheEndFirst)
{
    const std::string path = folder.write(kind.fileName, bytesOf(kind, manyItems));
    const bool asksFirst = std::string(kind.name) == "ConfigurationText";
    const Outcome expected = asksFirst ? loadCut({}, 0) : load(path);
    const auto file = kind.makeExample(manyItems);
    FaultyFiles files(folder.path());
    files.fail(SystemCall::Stat, EIO, 0);
    EXPECT_EQ(load(path), expected);
    EXPECT_TRUE(file->saveTo(path));
    if (kind.hasWriter) {
        EXPECT_EQ(readBytes(path), kind.describe(*file));
    }
}

TEST_P(SystemCallFaults, EndTheFileWhereAReadFails)
{
    const struct {
        int itemCount;
        int bytesPerRead;
    } cases[] = {
        {fewItems,  61  },
        {manyItems, 3000}, // several buffers full
    };
    int failed = 0;
    for (const auto& [itemCount, bytesPerRead] : cases) {
        // A control file that ends in its flag section stops the process.
        std::string bytes = bytesOf(kind, itemCount);
        bytes.resize(std::min(bytes.size(), bytes.find(" *** Flag section")));
        const std::string path = folder.write(kind.fileName, bytes);

        bool isDone = false;
        for (int read = 0; !isDone; ++read) {
            FaultyFiles files(folder.path());
            files.limitTransfers(bytesPerRead);
            files.fail(SystemCall::Read, EIO, read);
            const Outcome outcome = load(path);
            isDone = files.count(SystemCall::Read) <= read;
            failed += !isDone;
            EXPECT_EQ(outcome, loadCut(bytes, std::size_t(files.transferred()))) << "read " << read;

            files.fail(SystemCall::Read, EIO, read, 1);
            EXPECT_EQ(load(path), outcome) << "read " << read << ", and no other";
        }
    }
    EXPECT_EQ(failed > 0, kind.hasReader);
    RecordProperty("reads", failed);
}

TEST_P(SystemCallFaults, LeaveThePartBeforeAWriteThatFails)
{
    const auto file = kind.makeExample(manyItems);
    const std::string content = kind.describe(*file);
    const std::string path = folder.path(kind.fileName);
    int write = 0;
    for (bool isDone = false; !isDone; ++write) {
        for (const int times : {1, FaultyFiles::always}) {
            FaultyFiles files(folder.path());
            files.limitTransfers(1000);
            files.fail(SystemCall::Write, ENOSPC, write, times);
            const bool isSaved = file->saveTo(folder.freshPath(kind.fileName));
            isDone = files.count(SystemCall::Write) <= write;
            EXPECT_EQ(isSaved, isDone || !kind.isXml) << "write " << write << " failed " << times << " times";
            EXPECT_EQ(kind.describe(*file), content);
            if (kind.hasWriter) {
                const std::string written = readBytes(path);
                EXPECT_TRUE(content.compare(0, written.size(), written) == 0) << written.size();
            }
        }
    }
    EXPECT_EQ(write > 1, kind.hasWriter);
    RecordProperty("writes", write - 1);
}

INSTANTIATE_TEST_SUITE_P(, SystemCallFaults, ::testing::ValuesIn(fileKinds),
                         [](const auto& info) { return info.param.name; });

/// A file with entities is read twice, first to count their references.
TEST(SystemCallFaultsOfEntities, NeverGiveAPartOfTheText)
{
    constexpr int callsOfBothReadings = 14;

    const TemporaryFolder folder;
    const std::string path =
        folder.write("run.xml",
                     "<!DOCTYPE a [<!ENTITY e 'job'>]><Nereo2Config><JobPrefix>&e;</JobPrefix></Nereo2Config>"
                         + std::string(20000, ' '));
    FaultyFiles files(folder.path());
    files.limitTransfers(3000);
    Nereo::Io::Nereo2ConfigFile config;
    ASSERT_TRUE(config.loadFrom(path));
    const int calls = files.count(SystemCall::Read);
    EXPECT_GE(calls, callsOfBothReadings);
    for (int number = 0; number < calls; ++number) {
        config = {};
        files.fail(SystemCall::Read, EIO, number, 1);
        const bool isLoaded = config.loadFrom(path);
        const std::string text = config.setting("JobPrefix").valueAsString();
        EXPECT_THAT(text, AnyOf("job", "")) << number;
        EXPECT_TRUE(!isLoaded || text == "job") << number;
    }
}

TEST(SystemCallFaultsDeathTest, StopTheProcessAmongTheFlagsOfAControlFile)
{
    const TemporaryFolder folder;
    Nereo::Io::ControlFile file;
    file.addFlag(Nereo::Io::Flag());
    file.flag(0).setName("name");
    const std::string path = folder.path("run.ctl");
    ASSERT_TRUE(file.saveTo(path));
    const auto readable = int(readBytes(path).find("name"));

    FaultyFiles files(folder.path());
    files.limitTransfers(readable);
    files.fail(SystemCall::Read, EIO, 1);
    EXPECT_DEATH(file.loadFrom(path),
                 HasSubstr("ASSERT: \"controlFile_.flagCount() == count\" in file "
                           "FileIO/ControlFileTextReader, line "));
}

} // namespace
} // namespace Faults
