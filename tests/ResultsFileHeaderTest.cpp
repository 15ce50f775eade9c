#include "support/FailingDevice.h"
#include "support/ResultsBytes.h"
#include "support/TemporaryFolder.h"

#include "FileIO/FieldMemory.h"
#include "FileIO/ResultsFileHeaderReader.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/ResultsFileHeader.h>

#include <gmock/gmock.h>

#include <fstream>
#include <limits>
#include <map>
#include <new>
#include <thread>

#include <sys/stat.h>
#include <unistd.h>

namespace Nereo::Io {

namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

using Order = QDataStream::ByteOrder;
constexpr Order bothOrders[] = {QDataStream::LittleEndian, QDataStream::BigEndian};

constexpr int mostNodes = std::numeric_limits<int>::max();

ResultsFileHeader headerOf(const QByteArray& bytes)
{
    ResultsFileHeader header;
    QDataStream in(bytes);
    ResultsFileHeaderReader(header).read(in);
    return header;
}

/// Two fields on three nodes, and a name between them that is unknown.
ResultsBytes smallFile(Order order = QDataStream::LittleEndian)
{
    ResultsBytes bytes(order);
    bytes.header(3).run().names({"kU", "kFoo", "kP"});
    for (const int node : {1, 2, 3})
        bytes.record(node, {node + 0.5, -1.0, node * 10.0});
    return bytes;
}

constexpr int recordsPlace = 354 + 3 * 21;
constexpr int smallRecord = 4 + 3 * 8;

/// Each problem and its offset, as in "BadRunMarker 342".
std::string problemsOf(const ResultsFileHeader& header)
{
    static const std::map<ResultsProblem::Kind, std::string> names {
        {ResultsProblem::TooShort,           "TooShort"          },
        {ResultsProblem::BadHeaderMarker,    "BadHeaderMarker"   },
        {ResultsProblem::BadRunMarker,       "BadRunMarker"      },
        {ResultsProblem::OtherByteOrder,     "OtherByteOrder"    },
        {ResultsProblem::NegativeNodeCount,  "NegativeNodeCount" },
        {ResultsProblem::NegativeFieldCount, "NegativeFieldCount"},
        {ResultsProblem::TooManyNodes,       "TooManyNodes"      },
        {ResultsProblem::RepeatedField,      "RepeatedField"     },
        {ResultsProblem::CountsPastTheFile,  "CountsPastTheFile" },
    };
    std::string text;
    for (const auto& [kind, offset] : header.problems())
        text += (text.empty() ? "" : ", ") + names.at(kind) + ' ' + std::to_string(offset);
    return text;
}

TEST(ResultsFileHeader, GivesEveryFactInEitherByteOrder)
{
    for (const Order order : bothOrders) {
        const ResultsFileHeader header = headerOf(smallFile(order));
        EXPECT_EQ(header.version(), Util::Version(2023, 1, 7, 0));
        EXPECT_EQ(header.dateTimeString(), "2024-05-18 14:22:47");
        EXPECT_EQ(header.title(), "Lid-driven cavity");
        EXPECT_EQ(header.byteOrder() == ResultsFileHeader::LittleEndian, order == QDataStream::LittleEndian);
        EXPECT_EQ(header.nodeCount(), 3);
        EXPECT_EQ(header.elementCount(), 77);
        EXPECT_EQ(header.currentIteration(), 500);
        EXPECT_EQ(header.startingIteration(), 100);
        EXPECT_EQ(header.currentTimeStep(), 8);
        EXPECT_EQ(header.startingTimeStep(), 3);
        EXPECT_EQ(header.currentTime(), 1.25);
        EXPECT_EQ(header.timeStepSize(), 0.125);
        EXPECT_EQ(header.fieldCount(), 3);
        EXPECT_EQ(header.recordSize(), smallRecord);
        EXPECT_EQ(header.recordsOffset(), recordsPlace);
        EXPECT_EQ(header.recordsAnnounced(), 3);
        EXPECT_EQ(header.wholeRecords(), 3);
        EXPECT_EQ(header.bytesAnnounced(), recordsPlace + 3 * smallRecord);
        EXPECT_EQ(header.bytesThere(), header.bytesAnnounced());
        EXPECT_TRUE(header.isResultsFile());
        EXPECT_TRUE(header.holdsKnownField());
        EXPECT_THAT(header.problems(), IsEmpty());
    }
}

TEST(ResultsFileHeader, UsesTheFirstFieldOfACode)
{
    const ResultsFileHeader header =
        headerOf(ResultsBytes().header(0).run().names({"kU", "kCond", "kU", "kKXX"}));
    ASSERT_THAT(header.fields(), SizeIs(4));
    const bool expected[] = {true, true, false, false};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(header.fields()[i].isRepeat, !expected[i]) << i;
        EXPECT_EQ(header.fields()[i].isUsed(), expected[i]) << i;
    }
}

TEST(ResultsFileHeader, ListsTheNamesAsTheyStand)
{
    const ResultsFileHeader header =
        headerOf(ResultsBytes().header(0).run().names({"kU", "gr\xFCn", "kKXX", "kSlipNode", "kNone", ""}));
    const struct {
        const char* name;
        int code;
        bool isUsed;
    } expected[] = {
        {"kU",        kU,        true },
        {"grün",     kNone,     false}, // Latin-1 in the file
        {"kKXX",      kCond,     true },
        {"kSlipNode", kSlipNode, true },
        {"kNone",     kNone,     false},
        {"",          kNone,     false},
    };
    ASSERT_THAT(header.fields(), SizeIs(std::size(expected)));
    int column = 0;
    for (const auto& [name, code, isUsed] : expected) {
        const ResultsFileHeader::Field& field = header.fields()[std::size_t(column)];
        EXPECT_EQ(field.name, name);
        EXPECT_EQ(field.code, code) << name;
        EXPECT_EQ(field.isUsed(), isUsed) << name;
        EXPECT_EQ(field.column, column) << name;
        EXPECT_EQ(field.offset, 350 + 21 * column) << name;
        EXPECT_TRUE(field.isWhole) << name;
        ++column;
    }
    EXPECT_THAT(header.problems(), IsEmpty());
}

TEST(ResultsFileHeader, SaysWhatIsWrongAndWhere)
{
    const QByteArray whole = smallFile();
    const ResultsBytes upToNames = ResultsBytes().header(3).run();
    const struct {
        int size;
        const char* problems;
    } cutFiles[] = {
        {0,                "TooShort 0"           },
        {309,              "TooShort 309"         },
        {310,              "TooShort 310"         },
        {349,              "TooShort 349"         },
        {350,              "CountsPastTheFile 350"},
        {380,              "CountsPastTheFile 380"}, // within a name
        {413,              "CountsPastTheFile 413"},
        {whole.size() - 1, "CountsPastTheFile 500"},
        {whole.size(),     ""                     },
    };
    for (const auto& [size, problems] : cutFiles)
        EXPECT_EQ(problemsOf(headerOf(whole.left(size))), problems);
    EXPECT_EQ(problemsOf(headerOf(whole + "more")), "");

    const auto expectProblems = [](const QByteArray& bytes, const char* problems) {
        EXPECT_EQ(problemsOf(headerOf(bytes)), problems);
    };
    expectProblems(ResultsBytes().header(3, -2).run(), "BadHeaderMarker 306");
    expectProblems(ResultsBytes().header(3).run(0), "BadRunMarker 342");
    expectProblems(ResultsBytes().header(-1).run().names({"kU"}), "NegativeNodeCount 298");
    expectProblems(ResultsBytes().header(-1).run().names({"kFoo"}), "NegativeNodeCount 298");
    expectProblems(ResultsBytes().header(3).run().integer(-1), "NegativeFieldCount 346");
    expectProblems(ResultsBytes().header(-7).run().integer(-1),
                   "NegativeNodeCount 298, NegativeFieldCount 346");
    expectProblems(ResultsBytes().header(0).run().names({"kU", "kFoo", "kFoo", "kU", "kCond", "kKXX", "kU"}),
                   "RepeatedField 413, RepeatedField 455, RepeatedField 476");
    expectProblems(ResultsBytes().header(3).run().integer(2).text("kU", 21).bytes() + "kU",
                   "CountsPastTheFile 373"); // a name that is cut off is unknown rather than repeated
    expectProblems(ResultsBytes().header(mostValuesOfField).run().names({"kU"}), "CountsPastTheFile 375");
    expectProblems(ResultsBytes().header(mostValuesOfField + 1).run().names({"kU"}),
                   "TooManyNodes 298, CountsPastTheFile 375");
    expectProblems(ResultsBytes().header(mostNodes).run().names({"kFoo"}), "CountsPastTheFile 375");
}

TEST(ResultsFileHeader, TellsTheByteOrderThatTheFirstWordDoesNotSelect)
{
    const auto withFirstWord = [](QByteArray bytes, char last) {
        bytes[3] = last;
        return bytes;
    };
    const QByteArray big = smallFile(QDataStream::BigEndian);
    const QByteArray little = smallFile(QDataStream::LittleEndian);
    const QByteArray bare = ResultsBytes().header(3).run().names({}).integer(1).integer(2).integer(3);
    const QByteArray littleBehindOne = withFirstWord(little, 1);
    const QByteArray bareBehindOne = withFirstWord(bare, 1);
    const struct {
        const char* what;
        QByteArray bytes;
        bool isOther;
    } cases[] = {
        {"right",                    little,                false                                             },
        {"big-endian behind a zero", withFirstWord(big,     0),                                                 true},
        {"little-endian behind a one",                          littleBehindOne,                    true                             },
        {"the same with bytes behind",                          littleBehindOne + "more",                    true},
        {"the same, cut",                          littleBehindOne.chopped(30),                                 true                                       },
        {"the same, cut in a name: no order makes sense",                          littleBehindOne.left(380), false},
        {"right and cut",                          little.left(recordsPlace + 5),                                 false                                                                   },
        {"right and cut in a name",                          little.left(380),                       false},
        {"nodes without fields",                          bare,                          false                                                                                  },
        {"the same behind a one",                          bareBehindOne,                         true},
        {"the same, cut: either makes sense",                          bareBehindOne.chopped(1),             false                                                           },
    };
    for (const auto& [what, bytes, isOther] : cases) {
        const ResultsFileHeader header = headerOf(bytes);
        EXPECT_EQ(header.hasProblem(ResultsProblem::OtherByteOrder), isOther) << what;
        if (isOther) {
            EXPECT_THAT(problemsOf(header), ::testing::StartsWith("OtherByteOrder 0")) << what;
        }
    }
}

TEST(ResultsFileHeader, CountsTheWholeRecordsThatAreThere)
{
    const QByteArray whole = smallFile();
    for (int size = 350; size <= whole.size(); ++size) {
        const int expected = size < recordsPlace ? 0 : (size - recordsPlace) / smallRecord;
        EXPECT_EQ(headerOf(whole.left(size)).wholeRecords(), expected) << size;
    }
    EXPECT_EQ(headerOf(whole + whole).wholeRecords(), 3);
    EXPECT_EQ(headerOf(whole + whole).bytesAnnounced(), whole.size());
}

TEST(ResultsFileHeader, AnnouncesNothingWhereTheCountsAreNotThere)
{
    for (const QByteArray& bytes : {smallFile().bytes().left(349), ResultsBytes().header(3, 0).bytes(),
                                    ResultsBytes().header(3).run().integer(-1).bytes()}) {
        const ResultsFileHeader header = headerOf(bytes);
        EXPECT_EQ(header.bytesAnnounced(), -1);
        EXPECT_EQ(header.recordSize(), 0);
        EXPECT_EQ(header.wholeRecords(), 0);
        EXPECT_EQ(header.nodeCount(), 3);
        EXPECT_THAT(header.fields(), IsEmpty());
    }
}

TEST(ResultsFileHeader, AnnouncesNoRecordsOfANegativeNumberOfNodes)
{
    const ResultsFileHeader header = headerOf(ResultsBytes().header(-1).run().names({"kFoo"}).record(1, {1}));
    EXPECT_EQ(header.nodeCount(), -1);
    EXPECT_EQ(header.recordsAnnounced(), 0);
    EXPECT_EQ(header.wholeRecords(), 0);
    EXPECT_EQ(header.bytesAnnounced(), 375);
    EXPECT_FALSE(header.holdsKnownField());
}

TEST(ResultsFileHeader, ReckonsWithHostileCounts)
{
    constexpr qint64 many = 204'522'253; // times 21 it is 17 in 32 bits
    constexpr qint64 most = mostNodes;
    const struct {
        int nodeCount;
        int fieldCount;
        qint64 bytesAnnounced;
    } cases[] = {
        {mostNodes,      1,         354 + 21 + most * 12                   },
        {1,              mostNodes, 354 + most * 21 + 4 + most * 8         },
        {int(many),      int(many), 354 + many * 21 + many * (4 + 8 * many)},
        {mostNodes,      mostNodes, std::numeric_limits<qint64>::max()     },
        {-mostNodes - 1, 1,         354 + 21                               },
    };
    for (const auto& [nodeCount, fieldCount, bytesAnnounced] : cases) {
        const ResultsFileHeader header =
            headerOf(ResultsBytes().header(nodeCount).run().integer(fieldCount).text("kU", 21));
        EXPECT_EQ(header.bytesAnnounced(), bytesAnnounced) << nodeCount << ' ' << fieldCount;
        EXPECT_EQ(header.wholeRecords(), 0);
        EXPECT_THAT(header.fields(), SizeIs(1)); // one byte of no other is there
    }
}

TEST(ResultsFileHeader, ListsKnownNamesBehindTheMostThatItLists)
{
    constexpr int most = ResultsFileHeader::mostFieldsListed;
    ResultsBytes bytes;
    bytes.header(0).run().integer(most + 4);
    for (int i = 0; i < most; ++i)
        bytes.text("kFoo", 21);
    bytes.text("kBar", 21).text("kU", 21).text("kU", 21).text("kU", 21).integer(0);
    const ResultsFileHeader header = headerOf(bytes);
    EXPECT_EQ(header.fieldCount(), most + 4);
    ASSERT_THAT(header.fields(), SizeIs(most + 1));
    EXPECT_EQ(header.fields().back().code, kU);
    EXPECT_EQ(header.fields().back().column, most + 1);
    EXPECT_EQ(problemsOf(header), "RepeatedField " + std::to_string(350 + 21 * (most + 2)));
}

TEST(ResultsFileHeader, IsReadFromAPath)
{
    TemporaryFolder folder;
    ResultsFileHeader header;
    EXPECT_TRUE(header.readFrom(folder.write("run.res", smallFile().bytes().toStdString())));
    EXPECT_EQ(header.nodeCount(), 3);
    EXPECT_THAT(header.fields(), SizeIs(3));

    for (const std::string& path : {folder.path("missing.res"), folder.path(), std::string()}) {
        EXPECT_FALSE(header.readFrom(path)) << path;
        EXPECT_EQ(header.nodeCount(), 3) << path;
    }

    EXPECT_TRUE(header.readFrom(folder.write("text.res", "This is no results file.\r\n")));
    EXPECT_FALSE(header.isResultsFile());
    EXPECT_EQ(header.nodeCount(), 0);
    EXPECT_THAT(header.fields(), IsEmpty()); // nothing of the first file is left
    EXPECT_EQ(problemsOf(header), "TooShort 26");

    header = ResultsFileHeader();
    EXPECT_EQ(header.bytesThere(), 0);
    EXPECT_EQ(header.bytesAnnounced(), -1);
    EXPECT_EQ(header.version(), Util::Version(0, 0, 0, 0));
    EXPECT_THAT(header.problems(), IsEmpty());
}

/// The bytes that this process has read so far, from wherever; -1 where the system doesn't count them.
qint64 bytesRead()
{
    std::ifstream io("/proc/self/io");
    std::string name;
    qint64 count = -1;
    io >> name >> count;
    return name == "rchar:" ? count : -1;
}

TEST(ResultsFileHeader, IsReadFromAFewBytesOfAnyFile)
{
    constexpr qint64 most = 64 * 1024; // beside the names
    const qint64 first = bytesRead();
    if (first < 0)
        GTEST_SKIP() << "this system doesn't count what is read";
    const qint64 bytesForTheCounter = bytesRead() - first;
    for (const int fieldCount : {2, 100'000}) {
        TemporaryFolder folder;
        ResultsBytes bytes;
        bytes.header(10'000).run().integer(fieldCount);
        for (int i = 0; i < fieldCount; ++i)
            bytes.text(i == 0 ? "kU" : "kFoo", 21);
        const std::string path = folder.write("run.res", bytes.integer(0).bytes().toStdString());
        const qint64 size = 354 + 21 * qint64(fieldCount) + 10'000 * (4 + 8 * qint64(fieldCount));
        ASSERT_EQ(truncate(path.c_str(), size), 0);

        const qint64 before = bytesRead();
        ResultsFileHeader header;
        ASSERT_TRUE(header.readFrom(path));
        const qint64 readForIt = bytesRead() - before - bytesForTheCounter;
        EXPECT_EQ(header.wholeRecords(), 10'000);
        EXPECT_GT(readForIt, 354 + 21 * fieldCount - 1);
        EXPECT_LE(readForIt, most + 21 * fieldCount);
    }
}

TEST(ResultsFileHeader, KnowsNoSizeOfAPipe)
{
    TemporaryFolder folder;
    const std::string path = folder.path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const QByteArray whole = smallFile();
    const struct {
        int size;
        const char* problems;
    } cases[] = {
        {whole.size(), ""                     },
        {380,          "CountsPastTheFile 380"},
        {20,           "TooShort 20"          },
    };
    for (const auto& [size, problems] : cases) {
        std::thread writer([&path, bytes = whole.left(size).toStdString()] { writeBytes(path, bytes); });
        ResultsFileHeader header;
        EXPECT_TRUE(header.readFrom(path));
        writer.join();
        EXPECT_EQ(header.bytesThere(), -1);
        EXPECT_EQ(header.bytesAnnounced(), size == 20 ? -1 : whole.size());
        EXPECT_EQ(header.wholeRecords(), size == 20 ? 0 : -1);
        EXPECT_EQ(problemsOf(header), problems);
    }
}

TEST(ResultsFileHeader, EndsWhereADeviceFails)
{
    const QByteArray whole = smallFile();
    for (int size = 0; size < recordsPlace; ++size) {
        FailingDevice device(whole.left(size));
        QDataStream in(&device);
        ResultsFileHeader header;
        EXPECT_EQ(ResultsFileHeaderReader(header).read(in), size >= 346);
        EXPECT_EQ(header.nodeCount(), size >= 302 ? 3 : 0);
    }
}

TEST(FieldMemory, KnowsTheMostValuesOfAVector)
{
    QVector<double> values;
    values.reserve(mostValuesOfField);
    EXPECT_THROW(values.reserve(mostValuesOfField + 1), std::bad_alloc);
}

} // namespace
} // namespace Nereo::Io
