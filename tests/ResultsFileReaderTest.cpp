#include "support/Assertions.h"
#include "support/Bits.h"
#include "support/FailingDevice.h"
#include "support/ResultsBytes.h"
#include "support/TemporaryFolder.h"

#include "FileIO/ResultsFileReader.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/ResultsFile.h>

#include <gmock/gmock.h>

#include <QBuffer>

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <numeric>
#include <random>
#include <utility>

namespace Nereo::Io {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Order = QDataStream::ByteOrder;
constexpr Order bothOrders[] = {QDataStream::LittleEndian, QDataStream::BigEndian};

bool read(const QByteArray& bytes, ResultsFile& results)
{
    QDataStream in(bytes);
    return ResultsFileReader(results).read(in);
}

ResultsFile resultsOf(const QByteArray& bytes)
{
    ResultsFile results;
    EXPECT_TRUE(read(bytes, results));
    return results;
}

/// Two fields on three nodes.
ResultsBytes smallFile(Order order = QDataStream::LittleEndian)
{
    ResultsBytes bytes(order);
    bytes.header(3).run().names({"kU", "kP"});
    bytes.record(1, {1.5, 10.0}).record(2, {2.5, 20.0}).record(3, {3.5, 30.0});
    return bytes;
}

TEST(ResultsFileReader, ReadsEveryItemInEitherByteOrder)
{
    for (const Order order : bothOrders) {
        const ResultsFile results = resultsOf(smallFile(order));
        EXPECT_EQ(results.version(), Util::Version(2023, 1, 7, 0));
        EXPECT_EQ(results.dateTimeString(), "2024-05-18 14:22:47");
        EXPECT_EQ(results.title(), "Lid-driven cavity");
        EXPECT_EQ(results.nodeCount(), 3);
        EXPECT_EQ(results.elementCount(), 77);
        EXPECT_EQ(results.currentIteration(), 500);
        EXPECT_EQ(results.startingIteration(), 100);
        EXPECT_EQ(results.currentTimeStep(), 8);
        EXPECT_EQ(results.startingTimeStep(), 3);
        EXPECT_EQ(results.currentTime(), 1.25);
        EXPECT_EQ(results.timeStepSize(), 0.125);
        EXPECT_THAT(results.fieldDataCodes(), ElementsAre(kU, kP));
        EXPECT_THAT(results.fieldData(kU), ElementsAre(1.5, 2.5, 3.5));
        EXPECT_THAT(results.fieldData(kP), ElementsAre(10.0, 20.0, 30.0));
    }
}

TEST(ResultsFileReader, TakesEveryWordButZeroForBigEndian)
{
    for (const char* word : {"\0\0\0\1", "\1\0\0\0", "\377\377\377\377", "II*\0"}) {
        const QByteArray bytes = QByteArray(word, 4) + QByteArray(smallFile(QDataStream::BigEndian)).mid(4);
        EXPECT_EQ(resultsOf(bytes).nodeCount(), 3);
    }
    // A little-endian file that starts with a one in its own order is taken for big-endian.
    const QByteArray little = ResultsBytes().header(0x100).run().names({});
    EXPECT_EQ(resultsOf(QByteArray("\1\0\0\0", 4) + little.mid(4)).nodeCount(), 0x10000);
}

TEST(ResultsFileReader, HasItsItemsAtFixedPlaces)
{
    QByteArray bytes = smallFile(QDataStream::BigEndian);
    EXPECT_EQ(bytes.size(), 354 + 21 * 2 + 3 * (4 + 8 * 2));
    EXPECT_EQ(bytes.mid(306, 4), "\377\377\377\377");
    EXPECT_EQ(bytes.mid(342, 4), "\377\377\377\377");
    EXPECT_EQ(bytes.mid(346, 4), QByteArray("\0\0\0\2", 4));
    EXPECT_EQ(bytes.mid(371, 3), QByteArray("kP\0", 3));
}

TEST(ResultsFileReader, StopsAtAHeaderThatIsNotEndedByMinusOne)
{
    for (const qint32 marker : {0, 1, -2, 0x7fffffff}) {
        ResultsFile results;
        EXPECT_FALSE(read(ResultsBytes().header(3, marker).run().names({"kU"}), results));
        EXPECT_EQ(results.title(), "Lid-driven cavity");
        EXPECT_EQ(results.nodeCount(), 3);
        EXPECT_EQ(results.elementCount(), 77);
        EXPECT_EQ(results.currentIteration(), 0);
        EXPECT_THAT(results.fieldDataCodes(), IsEmpty());
    }
}

TEST(ResultsFileReader, StopsAtRunDataThatAreNotEndedByMinusOne)
{
    ResultsFile results;
    EXPECT_FALSE(read(ResultsBytes().header(3).run(-2).names({"kU"}), results));
    EXPECT_EQ(results.currentIteration(), 500);
    EXPECT_EQ(results.timeStepSize(), 0.125);
    EXPECT_THAT(results.fieldDataCodes(), IsEmpty());
}

TEST(ResultsFileReader, ReadsNegativeNumbers)
{
    ResultsBytes bytes;
    bytes.integer(-1).integer(-2).integer(-3).text("", 26).text("", 256).integer(0).integer(-4).integer(-1);
    bytes.integer(-5).integer(-6).integer(-7).integer(-8).number(-0.5).number(-1e-300).integer(-1).names({});
    const ResultsFile results = resultsOf(bytes);
    EXPECT_EQ(results.version(), Util::Version(-1, -2, -3, 0));
    EXPECT_EQ(results.elementCount(), -4);
    EXPECT_EQ(results.currentIteration(), -5);
    EXPECT_EQ(results.startingIteration(), -6);
    EXPECT_EQ(results.currentTimeStep(), -7);
    EXPECT_EQ(results.startingTimeStep(), -8);
    EXPECT_EQ(results.currentTime(), -0.5);
    EXPECT_EQ(results.timeStepSize(), -1e-300);
}

TEST(ResultsFileReader, EndsTextsAtTheFirstNulOrWithTheirField)
{
    const struct {
        std::string inFile;
        std::string date;
        std::string title;
    } cases[] = {
        {"",                           "",        ""       },
        {"Lüfter",                    "Lüfter", "Lüfter"},
        {std::string("seen\0not seen", 13),       "seen",    "seen"},
        {std::string(300,                            'x'),                       std::string(26, 'x'), std::string(256, 'x')}, // no NUL at all
        {"not UTF-8: \xFF",                        "not UTF-8: \xEF\xBF\xBD",                  "not UTF-8: \xEF\xBF\xBD"                      },
    };
    for (const auto& [inFile, date, title] : cases) {
        ResultsBytes bytes;
        bytes.integer(1).integer(2).integer(3).text(inFile, 26).text(inFile, 256);
        bytes.integer(0).integer(0).integer(-1).run().names({});
        const ResultsFile results = resultsOf(bytes);
        EXPECT_EQ(results.dateTimeString(), date);
        EXPECT_EQ(results.title(), title);
    }
}

TEST(ResultsFileReader, KnowsFieldsByNameAliasAndFlag)
{
    const struct {
        const char* name;
        int code;
    } cases[] = {
        {"kU",                 1  },
        {"kOutHeatEx",         360},
        {"kHydrostatPresFlow", 328},
        {"kCond",              27 },
        {"kKXX",               27 },
        {"kKYY",               47 },
        {"kKZZ",               48 },
        {"kSlipNode",          20 },
        {"kVolumeRate",        27 },
    };
    for (const auto& [name, code] : cases) {
        const ResultsFile results = resultsOf(ResultsBytes().header(1).run().names({name}).record(1, {7.0}));
        EXPECT_THAT(results.fieldDataCodes(), ElementsAre(code)) << name;
        EXPECT_THAT(results.fieldData(code), ElementsAre(7.0)) << name;
    }
}

TEST(ResultsFileReader, DropsTheColumnsOfUnknownNames)
{
    for (const char* name : {"kFoo", "ku", " kU", "kU ", "", "kNone", "kScr30", "aNameThatFillsTheField"}) {
        ResultsBytes bytes;
        bytes.header(2).run().names({"kV", name, "kP"});
        bytes.record(1, {1.0, -1.0, 10.0}).record(2, {2.0, -2.0, 20.0});
        const ResultsFile results = resultsOf(bytes);
        EXPECT_THAT(results.fieldDataCodes(), ElementsAre(kV, kP)) << name;
        EXPECT_THAT(results.fieldData(kV), ElementsAre(1.0, 2.0)) << name;
        EXPECT_THAT(results.fieldData(kP), ElementsAre(10.0, 20.0)) << name;
    }
}

TEST(ResultsFileReader, TakesUnknownNamesAsOftenAsTheyCome)
{
    const ResultsFile results = resultsOf(ResultsBytes()
                                              .header(1)
                                              .run()
                                              .names({"kFoo", "kFoo", "kNone", "kNone", "kT"})
                                              .record(1, {1, 2, 3, 4, 5}));
    EXPECT_THAT(results.fieldDataCodes(), ElementsAre(kT));
    EXPECT_THAT(results.fieldData(kT), ElementsAre(5.0));
}

TEST(ResultsFileReader, StoresRecordsByNodeNumberInAnyOrder)
{
    for (const Order order : bothOrders) {
        ResultsBytes bytes(order);
        bytes.header(4).run().names({"kU", "kP"});
        bytes.record(3, {3.5, 30.0}).record(1, {1.5, 10.0}).record(4, {4.5, 40.0}).record(1, {1.75, 11.0});
        const ResultsFile results = resultsOf(bytes);
        EXPECT_THAT(results.fieldData(kU),
                    ElementsAre(1.75, 0.0, 3.5, 4.5)); // the last record of a node stays
        EXPECT_THAT(results.fieldData(kP), ElementsAre(11.0, 0.0, 30.0, 40.0));
    }
}

TEST(ResultsFileReader, CarriesEveryBitOfAValue)
{
    const double values[] = {-0.0,
                             5e-324,
                             1.7976931348623157e308,
                             std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN(),
                             0.1};
    for (const Order order : bothOrders) {
        ResultsBytes bytes(order);
        bytes.header(6).run().names({"kU"});
        for (int i = 0; i < 6; ++i)
            bytes.record(i + 1, {values[i]});
        const QVector<double> read = resultsOf(bytes).fieldData(kU);
        ASSERT_EQ(read.size(), 6);
        EXPECT_EQ(std::memcmp(read.constData(), values, sizeof values), 0);
    }
}

TEST(ResultsFileReader, ReadsRecordsWithoutFields)
{
    QByteArray bytes = ResultsBytes().header(3).run().names({}).integer(1).integer(99).integer(-7);
    bytes += "what follows is never read";
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    QDataStream in(&device);
    ResultsFile results;
    EXPECT_TRUE(ResultsFileReader(results).read(in));
    EXPECT_THAT(results.fieldDataCodes(), IsEmpty());
    EXPECT_EQ(device.readAll(), "what follows is never read");
}

TEST(ResultsFileReader, ReadsNothingAfterTheLastRecord)
{
    QByteArray bytes = smallFile();
    bytes += "what follows is never read";
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    QDataStream in(&device);
    ResultsFile results;
    EXPECT_TRUE(ResultsFileReader(results).read(in));
    EXPECT_EQ(device.readAll(), "what follows is never read");
}

TEST(ResultsFileReader, ReadsFieldsWithoutNodes)
{
    const ResultsFile results = resultsOf(ResultsBytes().header(0).run().names({"kU"}));
    EXPECT_THAT(results.fieldDataCodes(), ElementsAre(kU));
    EXPECT_THAT(results.fieldData(kU), IsEmpty());
}

TEST(ResultsFileReader, ReadsNoRecordsOfANegativeNumberOfNodes)
{
    const ResultsFile results = resultsOf(ResultsBytes().header(-5).run().names({"kFoo"}).record(1, {1.0}));
    EXPECT_EQ(results.nodeCount(), -5);
    EXPECT_THAT(results.fieldDataCodes(), IsEmpty());
}

TEST(ResultsFileReader, AddsToWhatTheObjectHolds)
{
    ResultsFile results = resultsOf(smallFile());
    EXPECT_TRUE(
        read(ResultsBytes().header(2).run().names({"kT"}).record(1, {5.0}).record(2, {6.0}), results));
    EXPECT_EQ(results.nodeCount(), 2);
    EXPECT_THAT(results.fieldDataCodes(), ElementsAre(kU, kP, kT));
    EXPECT_THAT(results.fieldData(kU), ElementsAre(1.5, 2.5, 3.5)); // still of the first file
    EXPECT_THAT(results.fieldData(kT), ElementsAre(5.0, 6.0));
}

TEST(ResultsFileReader, LeavesValuesThatWereHandedOutAlone)
{
    ResultsFile results = resultsOf(smallFile());
    const QVector<double> before = results.fieldData(kU);
    EXPECT_TRUE(read(ResultsBytes().header(1).run().names({"kT"}).record(1, {5.0}), results));
    EXPECT_THAT(before, ElementsAre(1.5, 2.5, 3.5));
}

TEST(ResultsFileReader, TakesWhatAShortFileLacksForZero)
{
    // The file ends behind the node number of record 2, in the middle of its second value.
    const QByteArray whole = smallFile();
    const ResultsFile results = resultsOf(whole.left(whole.size() - 20 - 3));
    EXPECT_THAT(results.fieldData(kU), ElementsAre(1.5, 2.5, 0.0));
    EXPECT_THAT(results.fieldData(kP), ElementsAre(10.0, 0.0, 0.0));
}

TEST(ResultsFileReader, OverwritesWithTheZerosOfARecordThatIsCutOff)
{
    QByteArray bytes =
        ResultsBytes().header(2).run().names({"kU", "kP"}).record(1, {1.5, 10.0}).record(1, {2.5, 20.0});
    const ResultsFile results = resultsOf(bytes.left(bytes.size() - 8));
    EXPECT_THAT(results.fieldData(kU), ElementsAre(2.5, 0.0));
    EXPECT_THAT(results.fieldData(kP), ElementsAre(0.0, 0.0));
}

/// What every prefix of smallFile() holds of the header, said by the places of its items.
void expectPrefixOfHeader(const ResultsFile& results, int length)
{
    const auto has = [length](int end) { return length >= end; };
    const std::string date = "2024-05-18 14:22:47";
    const std::string title = "Lid-driven cavity";
    EXPECT_EQ(results.version(), Util::Version(has(8) ? 2023 : 0, has(12) ? 1 : 0, has(16) ? 7 : 0, 0));
    EXPECT_EQ(results.dateTimeString(), date.substr(0, std::size_t(std::max(length - 16, 0))));
    EXPECT_EQ(results.title(), title.substr(0, std::size_t(std::max(length - 42, 0))));
    EXPECT_EQ(results.nodeCount(), has(302) ? 3 : 0);
    EXPECT_EQ(results.elementCount(), has(306) ? 77 : 0);
}

void expectPrefixOfRunData(const ResultsFile& results, int length)
{
    const auto has = [length](int end) { return length >= end; };
    EXPECT_EQ(results.currentIteration(), has(314) ? 500 : 0);
    EXPECT_EQ(results.startingIteration(), has(318) ? 100 : 0);
    EXPECT_EQ(results.currentTimeStep(), has(322) ? 8 : 0);
    EXPECT_EQ(results.startingTimeStep(), has(326) ? 3 : 0);
    EXPECT_EQ(results.currentTime(), has(334) ? 1.25 : 0.0);
    EXPECT_EQ(results.timeStepSize(), has(342) ? 0.125 : 0.0);
}

void expectPrefix(const ResultsFile& results, int length)
{
    expectPrefixOfHeader(results, length);
    expectPrefixOfRunData(results, length);

    const auto has = [length](int end) { return length >= end; };
    EXPECT_EQ(results.containsFieldData(kU), has(352)); // the two letters of its name
    EXPECT_EQ(results.containsFieldData(kP), has(373));

    constexpr int records = 396;
    for (int node = 1; node <= 3; ++node) {
        const int value = records + (node - 1) * 20 + 4;
        if (results.containsFieldData(kU)) {
            EXPECT_EQ(results.fieldData(kU).value(node - 1, -1), has(value + 8) ? node + 0.5 : 0.0);
        }
        if (results.containsFieldData(kP)) {
            EXPECT_EQ(results.fieldData(kP).value(node - 1, -1), has(value + 16) ? node * 10.0 : 0.0);
        }
    }
}

TEST(ResultsFileReader, ReadsEveryPrefix)
{
    TemporaryFolder folder;
    for (const Order order : bothOrders) {
        const QByteArray whole = smallFile(order);
        for (int length = 0; length <= whole.size(); ++length) {
            SCOPED_TRACE(length);
            const QByteArray bytes = whole.left(length);

            ResultsFile fromBuffer;
            EXPECT_EQ(read(bytes, fromBuffer), length >= 346);
            expectPrefix(fromBuffer, length);

            ResultsFile fromFile;
            EXPECT_TRUE(fromFile.loadFrom(folder.write("prefix.res", bytes.toStdString())));
            expectPrefix(fromFile, length);

            FailingDevice device(bytes);
            QDataStream failing(&device);
            ResultsFile fromFailing;
            EXPECT_EQ(ResultsFileReader(fromFailing).read(failing), length >= 346);
            expectPrefix(fromFailing, length);
        }
    }
}

TEST(ResultsFileReader, KeepsNoNumberThatAShortFileLacks)
{
    constexpr int runData = 310;
    constexpr int fields = 346;
    for (const Order order : bothOrders) {
        const QByteArray whole = smallFile(order);
        for (int length = 0; length < fields; ++length) {
            SCOPED_TRACE(length);
            ResultsFile results;
            results.setVersion(Util::Version(9, 9, 9, 9));
            results.setDateTimeString("earlier");
            results.setTitle("held before");
            results.setNodeCount(51);
            results.setElementCount(52);
            results.setIterations(53, 54);
            results.setTimeSteps(55, 56);
            results.setCurrentTime(5.7);
            results.setTimeStepSize(5.8);

            EXPECT_FALSE(read(whole.left(length), results));
            expectPrefixOfHeader(results, length);
            if (length >= runData) {
                expectPrefixOfRunData(results, length);
            } else { // of which nothing is read behind a header that is cut
                EXPECT_EQ(results.startingIteration(), 53);
                EXPECT_EQ(results.timeStepSize(), 5.8);
            }
        }
    }
}

/// A device that has nothing once, after some bytes, and then goes on: a file that is still being written.
class PausingDevice : public QIODevice {
public:
    PausingDevice(QByteArray bytes, int pauseAt) : bytes_(std::move(bytes)), pauseAt_(pauseAt)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        if (position_ == pauseAt_ && !std::exchange(hasPaused_, true))
            return 0;
        const int end = hasPaused_ ? bytes_.size() : pauseAt_;
        const qint64 count = std::min(maxSize, qint64(end - position_));
        std::memcpy(data, bytes_.constData() + position_, std::size_t(count));
        position_ += int(count);
        return count;
    }

    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray bytes_;
    int pauseAt_;
    int position_ = 0;
    bool hasPaused_ = false;
};

TEST(ResultsFileReader, EndsWhereAFileThatGrowsPauses)
{
    const QByteArray whole = smallFile();
    for (int length = 0; length < whole.size(); ++length) {
        SCOPED_TRACE(length);
        PausingDevice device(whole, length);
        QDataStream in(&device);
        ResultsFile results;
        EXPECT_EQ(ResultsFileReader(results).read(in), length >= 346);
        expectPrefix(results, length);
    }
}

TEST(ResultsFileReader, ReadsRecordsWiderThanABlock)
{
    for (const int unknownColumns : {2047, 16384, 20000}) {
        ResultsBytes bytes;
        bytes.header(3).run().integer(unknownColumns + 1);
        for (int i = 0; i < unknownColumns; ++i)
            bytes.text("kFoo", 21);
        bytes.text("kU", 21).integer(0);
        for (int node = 1; node <= 3; ++node) {
            bytes.integer(node).text("", 8 * unknownColumns).number(node + 0.5);
        }
        EXPECT_THAT(resultsOf(bytes).fieldData(kU), ElementsAre(1.5, 2.5, 3.5)) << unknownColumns;
        const QByteArray cut = bytes.bytes().chopped(1);
        EXPECT_THAT(resultsOf(cut).fieldData(kU), ElementsAre(1.5, 2.5, 0.0)) << unknownColumns;
    }
}

TEST(ResultsFileReader, TakesACutNameForWhatItsBytesSay)
{
    const QByteArray upToName = ResultsBytes().header(1).run().integer(3).text("kUResid", 21);
    const struct {
        const char* rest;
        std::vector<int> codes;
    } cases[] = {
        {"kU",       {kU, kUResid}}, // with no NUL behind it
        {"kUR",      {kUResid}    }, // no name
        {"kUResid",  {kUResid}    }, // held already, and cut: unknown, not repeated
        {"kP\0\0\0", {kP, kUResid}},
        {"k",        {kUResid}    },
        {"",         {kUResid}    },
    };
    for (const auto& [rest, codes] : cases) {
        const ResultsFile results = resultsOf(upToName + rest);
        EXPECT_THAT(results.fieldDataCodes(), ::testing::ElementsAreArray(codes)) << rest;
        for (const int code : codes)
            EXPECT_THAT(results.fieldData(code), ElementsAre(0.0));
    }
}

TEST(ResultsFileReader, TakesACutNameThatAnEarlierLoadHeldForUnknown)
{
    ResultsFile results = resultsOf(smallFile());
    EXPECT_TRUE(read(QByteArray(ResultsBytes().header(1).run().integer(1)) + "kP", results));
    EXPECT_THAT(results.fieldDataCodes(), ElementsAre(kU, kP));
    EXPECT_THAT(results.fieldData(kP), ElementsAre(10.0, 20.0, 30.0));
}

TEST(ResultsFileReader, TakesNoMemoryForFieldsThatAreOnlyAnnounced)
{
    const ResultsFile results =
        resultsOf(QByteArray(ResultsBytes().header(1).run().integer(2147483647).text("kP", 21)) + "kT");
    EXPECT_THAT(results.fieldDataCodes(), ElementsAre(kP, kT));
    EXPECT_THAT(results.fieldData(kT), ElementsAre(0.0));
}

TEST(ResultsFileReader, EndsEarlyWhereNodesAreOnlyAnnounced)
{
    ResultsFile results = resultsOf(ResultsBytes().header(2147483647).run().names({}).integer(1));
    EXPECT_EQ(results.nodeCount(), 2147483647);
    results = resultsOf(ResultsBytes().header(2147483647).run().names({"kFoo"}).record(1, {1.0}));
    EXPECT_THAT(results.fieldDataCodes(), IsEmpty());
}

TEST(ResultsFileReader, ThrowsAtAFieldThatNoVectorHolds)
{
    TemporaryFolder folder;
    const QByteArray bytes = ResultsBytes().header(2147483647).run().names({"kU"}).record(1, {1.0});
    ResultsFile results;
    EXPECT_THROW(results.loadFrom(folder.write("huge.res", bytes.toStdString())), std::bad_alloc);
    EXPECT_THAT(results.fieldDataCodes(), IsEmpty());

    results.setNodeCount(1);
    results.addFieldDataCode(kU); // and stays usable
    EXPECT_THAT(results.fieldData(kU), ElementsAre(0.0));
}

TEST(ResultsFileReader, FailsOnlyWhereTheFileDoesNotOpen)
{
    TemporaryFolder folder;
    ResultsFile results;
    EXPECT_FALSE(results.loadFrom(folder.path("missing.res")));
    EXPECT_EQ(results.filePath(), folder.path("missing.res"));
    EXPECT_EQ(results.version(), Util::Version::Current);
    EXPECT_FALSE(results.loadFrom(folder.path()));
    EXPECT_TRUE(results.loadFrom(folder.write("text.res", "This is no results file.\r\n")));
    EXPECT_TRUE(results.loadFrom(folder.write("empty.res", "")));
    EXPECT_EQ(results.version(), Util::Version(0, 0, 0, 0));
}

TEST(ResultsFileReader, KeepsLineEndsInValues)
{
    // 0x0D0A0D0A0D0A0D0A, which a device in text mode would change.
    ResultsBytes bytes;
    bytes.header(1).run().names({"kU"}).integer(1).integer(0x0D0A0D0A).integer(0x0D0A0D0A);
    TemporaryFolder folder;
    ResultsFile results;
    EXPECT_TRUE(results.loadFrom(folder.write("file.res", QByteArray(bytes).toStdString())));
    EXPECT_EQ(bitsOf(results.fieldData(kU).value(0)), 0x0D0A0D0A0D0A0D0Au);
}

/// The format read value by value, as its description says it, on a file that has all of its bytes.
ResultsFile readValueByValue(const QByteArray& bytes)
{
    ResultsFile results;
    QDataStream in(bytes);
    in.skipRawData(298);
    in.setByteOrder(bytes.startsWith(QByteArray(4, '\0')) ? QDataStream::LittleEndian
                                                          : QDataStream::BigEndian);
    qint32 nodeCount;
    qint32 fieldCount;
    in >> nodeCount;
    results.setNodeCount(nodeCount);
    in.skipRawData(44);
    in >> fieldCount;
    std::vector<int> codes;
    for (int i = 0; i < fieldCount; ++i) {
        char name[21];
        in.readRawData(name, 21);
        const int code = CodeNameTable::instance().codeForName(QString::fromLatin1(name));
        if (code != kNone)
            results.addFieldDataCode(code);
        codes.push_back(code == kNone ? 0 : code);
    }
    in.skipRawData(4);
    for (int i = 0; i < nodeCount; ++i) {
        qint32 node;
        in >> node;
        for (const int code : codes) {
            double value;
            in >> value;
            if (code != 0)
                results.setFieldData(code, node, value);
        }
    }
    return results;
}

class RandomResults {
public:
    QByteArray next()
    {
        ResultsBytes bytes(below(2) == 0 ? QDataStream::LittleEndian : QDataStream::BigEndian);
        const int nodeCount =
            below(3) == 0 ? below(20) : below(20000); // of less than a block, and of several
        const QStringList names = fieldNames();
        bytes.header(nodeCount).run().integer(names.size());
        for (const QString& name : names)
            bytes.text(name.toStdString(), 21);
        bytes.integer(0);
        for (const int node : nodes(nodeCount)) {
            bytes.integer(node);
            for (int i = 0; i < names.size(); ++i)
                bytes.number(int(bits_()) / 1024.0);
        }
        return bytes;
    }

private:
    int below(int end) { return int(bits_() % quint64(end)); }

    QStringList fieldNames()
    {
        QStringList names;
        for (int count = below(8); count > 0; --count)
            names.append(below(4) == 0 ? "kFoo"
                                       : CodeNameTable::instance().nameForCode(1 + below(360), false));
        names.sort();
        for (int i = names.size() - 1; i > 0; --i) {
            if (names[i] == names[i - 1] && names[i] != "kFoo")
                names.removeAt(i);
        }
        return names;
    }

    /// Ascending, or with some pairs exchanged, or shuffled, or with repetitions.
    std::vector<int> nodes(int count)
    {
        std::vector<int> nodes(std::size_t(std::max(count, 0)));
        std::iota(nodes.begin(), nodes.end(), 1);
        const int kind = below(4);
        if (kind == 1) {
            for (int i = 0; i < count / 1000; ++i)
                std::swap(nodes[std::size_t(below(count))], nodes[std::size_t(below(count))]);
        } else if (kind == 2) {
            std::shuffle(nodes.begin(), nodes.end(), bits_);
        } else if (kind == 3) {
            for (int& node : nodes)
                node = 1 + below(count);
        }
        return nodes;
    }

    std::mt19937_64 bits_ {20240918};
};

TEST(ResultsFileReader, EqualsReadingValueByValue)
{
    RandomResults random;
    for (int i = 0; i < 100; ++i) {
        const QByteArray bytes = random.next();
        const ResultsFile expected = readValueByValue(bytes);
        const ResultsFile results = resultsOf(bytes);
        ASSERT_EQ(results.nodeCount(), expected.nodeCount());
        ASSERT_EQ(results.fieldDataCodes(), expected.fieldDataCodes());
        for (const int code : expected.fieldDataCodes())
            ASSERT_EQ(results.fieldData(code), expected.fieldData(code)) << code;
    }
}

TEST(ResultsFileReader, ReadsTheSampleInEitherByteOrder)
{
    for (const char* path : {NEREO_SAMPLES_DIR "/cavity.res", NEREO_SAMPLES_DIR "/cavity-be.res"}) {
        ResultsFile results;
        ASSERT_TRUE(results.loadFrom(path));
        EXPECT_EQ(results.nodeCount(), 65 * 65);
        EXPECT_EQ(results.elementCount(), 64 * 64);
        const QVector<double> u = results.fieldData(kU);
        ASSERT_EQ(u.size(), 65 * 65);
        EXPECT_NEAR(u[65 * 32 + 32], -0.20581, 0.005); // at the centre
    }
    ResultsFile little;
    ResultsFile big;
    ASSERT_TRUE(little.loadFrom(NEREO_SAMPLES_DIR "/cavity.res"));
    ASSERT_TRUE(big.loadFrom(NEREO_SAMPLES_DIR "/cavity-be.res"));
    EXPECT_EQ(little.title(), "Lid-driven cavity, Re 100, 65 x 65 nodes");
    EXPECT_EQ(big.title(), "Lid-driven cavity, Re 100, Größe 65 × 65");
    EXPECT_THAT(little.fieldDataCodes(), ElementsAre(kU, kV, kW, kP, kT));
    EXPECT_THAT(big.fieldDataCodes(), ElementsAre(kU, kV, kP, kT)); // another column's name is not known
    for (const int code : big.fieldDataCodes())
        EXPECT_EQ(little.fieldData(code), big.fieldData(code)) << code;
}

TEST(ResultsFileReaderDeathTest, StopsAtARepeatedField)
{
    ResultsFile results;
    const QByteArray cases[] = {
        ResultsBytes().header(1).run().names({"kU", "kU"}),
        ResultsBytes().header(1).run().names({"kKXX", "kCond"}),
        ResultsBytes().header(1).run().names({"kSlipNode", "kVeff"}),
        ResultsBytes().header(0).run().names({"kU", "kFoo", "kU"}),
    };
    for (const QByteArray& bytes : cases)
        EXPECT_ASSERTION(read(bytes, results), "false", "FileIO/ResultsFile, line 166");

    ASSERT_TRUE(read(smallFile(), results));
    EXPECT_ASSERTION(read(smallFile(), results), "false",
                     "FileIO/ResultsFile, line 166"); // a second load of it
}

TEST(ResultsFileReaderDeathTest, StopsAtARepeatedFieldBeforeItLooksAtTheNumberOfNodes)
{
    ResultsFile results = resultsOf(smallFile());
    EXPECT_ASSERTION(read(ResultsBytes().header(-1).run().names({"kU"}), results), "false",
                     "FileIO/ResultsFile, line 166");
}

TEST(ResultsFileReaderDeathTest, StopsAtANodeThatIsNotThere)
{
    ResultsFile results;
    for (const qint32 node : {0, -1, 4, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        ResultsBytes bytes;
        bytes.header(3).run().names({"kFoo", "kU"}).record(1, {1.0, 1.0}).record(node, {2.0, 2.0});
        EXPECT_INDEX_ASSERTION(read(bytes, results), "QVector<T>::operator[]", "FileIO/NodeRecordTransposer");
        const QByteArray cut =
            bytes.bytes().left(bytes.bytes().size() - 16); // the number is there, its values aren't
        EXPECT_INDEX_ASSERTION(read(cut, results), "QVector<T>::operator[]", "FileIO/NodeRecordTransposer");
    }
}

TEST(ResultsFileReaderDeathTest, StopsAtANodeThatIsNotThereAfterAllOthers)
{
    constexpr int nodeCount = 20'000; // more than is stored at once
    ResultsFile results;
    for (const qint32 node : {0, -1, nodeCount + 1}) {
        ResultsBytes bytes;
        bytes.header(nodeCount).run().names({"kU"});
        for (qint32 n = nodeCount; n > 1; --n)
            bytes.record(n, {1.0});
        bytes.record(node, {1.0});
        EXPECT_INDEX_ASSERTION(read(bytes, results), "QVector<T>::operator[]", "FileIO/NodeRecordTransposer")
            << node;
    }
}

TEST(ResultsFileReaderDeathTest, StopsAtARunOfNodesThatLeavesTheMesh)
{
    ResultsFile results;
    for (const qint32 first :
         {0, -1, 2, 3, 4, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        ResultsBytes bytes;
        bytes.header(3).run().names({"kU"});
        for (quint32 i = 0; i < 3; ++i)
            bytes.record(qint32(quint32(first) + i), {1.0});
        EXPECT_INDEX_ASSERTION(read(bytes, results), "QVector<T>::operator[]", "FileIO/NodeRecordTransposer");
    }
}

TEST(ResultsFileReader, IgnoresTheNodeNumbersOfDroppedValues)
{
    const ResultsFile results =
        resultsOf(ResultsBytes().header(2).run().names({"kFoo"}).record(0, {1.0}).record(99, {2.0}));
    EXPECT_THAT(results.fieldDataCodes(), IsEmpty());
}

TEST(ResultsFileReaderDeathTest, StopsAtNegativeCounts)
{
    ResultsFile results;
    EXPECT_COUNT_ASSERTION(read(ResultsBytes().header(1).run().integer(-1), results),
                           "FileIO/ResultsFileReader");
    EXPECT_COUNT_ASSERTION(read(ResultsBytes().header(-1).run().names({"kFoo", "kU"}), results),
                           "FileIO/ResultsFile");
}

} // namespace
} // namespace Nereo::Io
