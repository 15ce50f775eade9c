#include "support/Bits.h"
#include "support/ResultsBytes.h"
#include "support/TemporaryFolder.h"

#include "FileIO/ResultsFileScan.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/ResultsScan.h>

#include <gmock/gmock.h>

#include <QBuffer>
#include <QThread>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>

namespace Nereo::Io {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

using Order = QDataStream::ByteOrder;
constexpr Order bothOrders[] = {QDataStream::LittleEndian, QDataStream::BigEndian};

using Result = ResultsLoadResult;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

/// A scan of bytes that are whole unless said otherwise.
ResultsScan scanOf(const QByteArray& bytes, Result::Outcome outcome = Result::Loaded,
                   ResultsScan::Part part = ResultsScan::StatisticsAndDamage)
{
    ResultsScan scan;
    QDataStream in(bytes);
    EXPECT_EQ(ResultsFileScan(scan, part, {}).read(in).outcome, outcome);
    return scan;
}

/// A file of one field with a value for each node from 1 on.
QByteArray fieldOf(const std::vector<double>& values, Order order = QDataStream::LittleEndian)
{
    ResultsBytes bytes(order);
    bytes.header(int(values.size())).run().names({"kU"});
    for (std::size_t i = 0; i < values.size(); ++i)
        bytes.record(int(i) + 1, {values[i]});
    return bytes;
}

ResultsStatistics statisticsOf(const std::vector<double>& values)
{
    return scanOf(fieldOf(values)).statistics().at(0);
}

TEST(ResultsScan, TellsWhatTheValuesOfEachFieldAreLike)
{
    for (const Order order : bothOrders) {
        ResultsBytes bytes(order);
        bytes.header(4).run().names({"kU", "kFoo", "kP"});
        bytes.record(1, {3, 0, -1}).record(2, {-4, 0, notANumber}).record(3, {12, 0, infinity});
        bytes.record(4, {1, 0, -3});
        const ResultsScan scan = scanOf(bytes);
        EXPECT_EQ(scan.header().fields().at(1).name, "kFoo");
        ASSERT_THAT(scan.statistics(), SizeIs(3));

        const ResultsStatistics& u = scan.statistics()[0];
        EXPECT_EQ(u.count, 4);
        EXPECT_EQ(u.minimum, -4);
        EXPECT_EQ(u.minimumNode, 2);
        EXPECT_EQ(u.maximum, 12);
        EXPECT_EQ(u.maximumNode, 3);
        EXPECT_EQ(u.mean, 3);
        EXPECT_EQ(u.rootMeanSquare, std::sqrt(42.5));
        EXPECT_EQ(u.notFinite, 0);
        EXPECT_EQ(u.firstNotFiniteNode, 0);
        EXPECT_EQ(u.firstNotFiniteOffset, -1);

        const ResultsStatistics& p = scan.statistics()[2];
        EXPECT_EQ(p.count, 2);
        EXPECT_EQ(p.minimum, -3);
        EXPECT_EQ(p.minimumNode, 4);
        EXPECT_EQ(p.maximum, -1);
        EXPECT_EQ(p.maximumNode, 1);
        EXPECT_EQ(p.mean, -2);
        EXPECT_EQ(p.notFinite, 2);
        EXPECT_EQ(p.firstNotFiniteNode, 2);
        EXPECT_EQ(p.firstNotFiniteOffset, 354 + 3 * 21 + 28 + 4 + 16);
    }
}

TEST(ResultsScan, HasNoNumbersWhereNoValueIsFinite)
{
    for (const std::vector<double>& values : {
             std::vector<double>(), {notANumber, infinity, -infinity}
    }) {
        const ResultsStatistics statistics = statisticsOf(values);
        EXPECT_EQ(statistics.count, 0);
        EXPECT_EQ(statistics.notFinite, qint64(values.size()));
        for (const double number :
             {statistics.minimum, statistics.maximum, statistics.mean, statistics.rootMeanSquare})
            EXPECT_TRUE(std::isnan(number));
        EXPECT_EQ(statistics.minimumNode, 0);
        EXPECT_EQ(statistics.maximumNode, 0);
    }
}

TEST(ResultsScan, NamesTheSmallestNodeOfAnExtreme)
{
    ResultsBytes bytes;
    bytes.header(6).run().names({"kU"});
    for (const int node : {5, 3, 6, 4})
        bytes.record(node, {node == 4 ? -0.0 : 0.0});
    const ResultsStatistics statistics = scanOf(bytes, Result::CutShort).statistics().at(0);
    EXPECT_EQ(statistics.minimumNode, 3);
    EXPECT_EQ(statistics.maximumNode, 3);
    EXPECT_EQ(bitsOf(statistics.minimum), bitsOf(0.0));
}

TEST(ResultsScan, SumsWithoutRounding)
{
    const struct {
        std::vector<double> values;
        double mean;
    } cases[] = {
        {{1e16, 1, -1e16},                                   1.0 / 3 },
        {{1e300, 1e-300, -1e300, 3},                         0.75    },
        {{largest, largest},                                 largest },
        {{largest, -largest, smallest},                      0.0     },
        {{smallest, smallest},                               smallest},
        {{0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1}, 0.1     },
    };
    for (const auto& [values, mean] : cases)
        EXPECT_EQ(statisticsOf(values).mean, mean) << ::testing::PrintToString(values);
}

TEST(ResultsScan, HasTheMeanOfValuesThatAreAlikeAmongThem)
{
    int divided = 0; // to another one
    for (const double value : {0.9116279622512017, -0.9116279622512017, 1.1, -1e-7}) {
        for (int count = 1; count <= 200; ++count) {
            EXPECT_EQ(bitsOf(statisticsOf(std::vector<double>(std::size_t(count), value)).mean),
                      bitsOf(value))
                << count << " of " << value;
            divided += value * count / count != value;
        }
    }
    EXPECT_GT(divided, 0);
}

TEST(ResultsScan, SquaresTheLargestAndTheSmallestNumbers)
{
    const struct {
        std::vector<double> values;
        double rootMeanSquare;
    } cases[] = {
        {{3, -4, 12, 13 * std::sqrt(3.0)},         13                         },
        {{1e200, 1e200},                           1e200                      },
        {{largest, -largest},                      largest                    },
        {{1e-200, -1e-200},                        1e-200                     },
        {{smallest, smallest},                     smallest                   },
        {{largest, 1e-300, 0, 0},                  largest / 2                },
        {{0x1p500, 0x1p500, 0, 0, 0, 0, 0, 0},     0x1p499                    },
        {{0x1p499, 0x1p499, 0, 0, 0, 0, 0, 0},     0x1p498                    },
        {{0x1p-400, 0x1p-401, 0x1p-401, 0x1p-400}, 0x1p-400 * std::sqrt(0.625)},
    };
    for (const auto& [values, rootMeanSquare] : cases)
        EXPECT_DOUBLE_EQ(statisticsOf(values).rootMeanSquare, rootMeanSquare)
            << ::testing::PrintToString(values);
}

void expectSameBits(const ResultsStatistics& actual, const ResultsStatistics& expected)
{
    EXPECT_EQ(actual.count, expected.count);
    EXPECT_EQ(bitsOf(actual.minimum), bitsOf(expected.minimum));
    EXPECT_EQ(bitsOf(actual.maximum), bitsOf(expected.maximum));
    EXPECT_EQ(bitsOf(actual.mean), bitsOf(expected.mean));
    EXPECT_EQ(bitsOf(actual.rootMeanSquare), bitsOf(expected.rootMeanSquare));
    EXPECT_EQ(actual.minimumNode, expected.minimumNode);
    EXPECT_EQ(actual.maximumNode, expected.maximumNode);
    EXPECT_EQ(actual.notFinite, expected.notFinite);
}

TEST(ResultsScan, DependsNeitherOnTheOrderNorOnTheBlocks)
{
    std::mt19937_64 random(20261121);
    std::normal_distribution<double> normal;
    const auto exponentOf = [&random](int range) { return int(random() % quint64(2 * range + 1)) - range; };
    for (const int range : {0, 3, 40, 300, 550, 1000}) { // of binary exponents
        constexpr int nodeCount = 5000;
        std::vector<double> values;
        for (int i = 0; i < nodeCount; ++i)
            values.push_back(i % 1000 == 7 ? notANumber : std::ldexp(normal(random), exponentOf(range)));
        const ResultsStatistics expected = statisticsOf(values);

        std::vector<int> nodes(nodeCount);
        std::iota(nodes.begin(), nodes.end(), 1);
        for (const int otherColumns : {0, 1, 70}) { // of which the size of the blocks depends
            std::shuffle(nodes.begin(), nodes.end(), random);
            ResultsBytes bytes(otherColumns == 1 ? QDataStream::BigEndian : QDataStream::LittleEndian);
            bytes.header(nodeCount).run().integer(otherColumns + 1);
            for (int i = 0; i < otherColumns; ++i)
                bytes.text("kFoo", 21);
            bytes.text("kU", 21).integer(0);
            for (const int node : nodes) {
                bytes.integer(node).text("", 8 * otherColumns);
                bytes.number(values[std::size_t(node) - 1]);
            }
            expectSameBits(scanOf(bytes).statistics().back(), expected);
        }
    }
}

TEST(ResultsScan, FindsWhatIsWrongWithTheNodes)
{
    const struct {
        const char* what;
        int nodeCount;
        std::vector<int> nodes;
        int missing, firstMissing;
        int repeated, firstRepeated, firstRepeatedRecord;
        int outOfRange, firstOutOfRange, firstOutOfRangeRecord;
    } cases[] = {
  // what         nodes        records     missing  repeated   out of range
        {"none",          4, {1, 2, 3, 4},              0, 0, 0, 0, -1, 0, 0,           -1},
        {"another order", 4, {4, 2, 1, 3},              0, 0, 0, 0, -1, 0, 0,           -1},
        {"one twice",     4, {1, 2, 2, 4},              1, 3, 1, 2, 2,  0, 0,           -1},
        {"one always",    4, {3, 3, 3, 3},              3, 1, 3, 3, 1,  0, 0,           -1},
        {"two twice",     4, {3, 1, 1, 3},              2, 2, 2, 1, 2,  0, 0,           -1},
        {"outside",       4, {1, 0, 5, 4},              2, 2, 0, 0, -1, 2, 0,           1 },
        {"far outside",   2, {-2147483647, 2147483647}, 2, 1, 0, 0, -1, 2, -2147483647, 0 },
        {"no nodes",      0, {},                        0, 0, 0, 0, -1, 0, 0,           -1},
    };
    for (const auto& expected : cases) {
        for (const qint64 together : {qint64(0), qint64(1), qint64(1) << 28}) {
            SCOPED_TRACE(expected.what);
            ResultsBytes bytes;
            bytes.header(expected.nodeCount).run().names({"kU"});
            for (const int node : expected.nodes)
                bytes.record(node, {1.0});
            ResultsScan scan;
            QDataStream in(bytes);
            ResultsFileScan fileScan(scan, ResultsScan::Damage, {});
            fileScan.setNodesTogether(together);
            EXPECT_EQ(fileScan.read(in).outcome, Result::Loaded);
            const auto offset = [](int record) { return record < 0 ? -1 : 375 + 12 * record; };
            const ResultsDamage& damage = scan.damage();
            EXPECT_EQ(damage.missingNodes, expected.missing);
            EXPECT_EQ(damage.firstMissingNode, expected.firstMissing);
            EXPECT_EQ(damage.repeatedRecords, expected.repeated);
            EXPECT_EQ(damage.firstRepeatedNode, expected.firstRepeated);
            EXPECT_EQ(damage.firstRepeatedOffset, offset(expected.firstRepeatedRecord));
            EXPECT_EQ(damage.recordsOutOfRange, expected.outOfRange);
            EXPECT_EQ(damage.firstNodeOutOfRange, expected.firstOutOfRange);
            EXPECT_EQ(damage.firstOutOfRangeOffset, offset(expected.firstOutOfRangeRecord));
            EXPECT_THAT(scan.statistics(), IsEmpty());
        }
    }
}

/// Announces far more nodes than there are records, so that several passes are needed.
TEST(ResultsScan, LooksAtNodesThatAreFarApart)
{
    constexpr int mostNodes = std::numeric_limits<int>::max();
    ResultsBytes bytes;
    bytes.header(mostNodes).run().names({"kU"});
    for (const int node : {1, mostNodes, 1'000'000'000, 2, 1'000'000'000, mostNodes, 2'000'000'000})
        bytes.record(node, {1.0});
    const ResultsScan scan = scanOf(bytes, Result::CutShort);
    EXPECT_EQ(scan.damage().missingNodes, mostNodes - 5);
    EXPECT_EQ(scan.damage().firstMissingNode, 3);
    EXPECT_EQ(scan.damage().repeatedRecords, 2);
    EXPECT_EQ(scan.damage().firstRepeatedNode, 1'000'000'000); // not in the first pass, but first in the file
    EXPECT_EQ(scan.damage().firstRepeatedOffset, 375 + 4 * 12);
    EXPECT_EQ(scan.damage().recordsOutOfRange, 0);
    EXPECT_EQ(scan.statistics().at(0).count, 7);
}

TEST(ResultsScan, EqualsAPlainCountOfRandomNodes)
{
    std::mt19937 random(20261121);
    for (int trial = 0; trial < 300; ++trial) {
        const int nodeCount = int(random() % 400);
        const int recordCount = int(random() % 400);
        std::vector<int> counts(std::size_t(nodeCount) + 2);
        ResultsBytes bytes;
        bytes.header(nodeCount).run().names({"kU"});
        int expectedRepeated = 0;
        for (int i = 0; i < std::min(recordCount, nodeCount); ++i) {
            const int node = int(random() % unsigned(nodeCount + 2));
            bytes.record(node, {1.0});
            const bool isThere = node >= 1 && node <= nodeCount;
            expectedRepeated += isThere && counts[std::size_t(node)] > 0;
            ++counts[std::size_t(node)];
        }
        ResultsScan scan;
        QDataStream in(bytes);
        ResultsFileScan fileScan(scan, ResultsScan::Damage, {});
        fileScan.setNodesTogether(qint64(random() % 100) - recordCount / 2);
        EXPECT_TRUE(fileScan.read(in).isLoaded());
        const auto begin = counts.begin() + 1;
        const auto end = counts.begin() + 1 + nodeCount;
        const auto firstMissing = std::find(begin, end, 0);
        EXPECT_EQ(scan.damage().missingNodes, std::count(begin, end, 0));
        EXPECT_EQ(scan.damage().firstMissingNode, firstMissing == end ? 0 : firstMissing - begin + 1);
        EXPECT_EQ(scan.damage().repeatedRecords, expectedRepeated);
        EXPECT_EQ(scan.damage().recordsOutOfRange, counts.front() + counts.back());
    }
}

/// The nodes are further apart than there are marks, which are those of 2^28 nodes.
TEST(ResultsScan, ReadsAFileAgainWhereItHasTo)
{
    const TemporaryFolder folder;
    ResultsBytes bytes;
    bytes.header(2'000'000'000).run().names({"kU"});
    for (const int node : {1, 1'500'000'000, 2, 1'500'000'000})
        bytes.record(node, {1.0});
    const std::string path = folder.write("run.res", QByteArray(bytes).toStdString());
    qint64 bytesDone = 0;
    ResultsScan scan;
    const Result result =
        scan.scan(path, ResultsScan::StatisticsAndDamage, [&bytesDone](qint64 done, qint64) {
            bytesDone = done;
            return true;
        });
    EXPECT_EQ(result.outcome, Result::CutShort);
    EXPECT_GT(bytesDone, QByteArray(bytes).size());
    EXPECT_EQ(scan.damage().firstMissingNode, 3);
    EXPECT_EQ(scan.damage().firstRepeatedNode, 1'500'000'000);
    EXPECT_EQ(scan.damage().firstRepeatedOffset, 375 + 3 * 12);
    EXPECT_EQ(scan.statistics().at(0).count, 4);
}

/// Takes so long over each read that a progress function is called for it.
class SlowBuffer : public QBuffer {
protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        QThread::msleep(11);
        return QBuffer::readData(data, maxSize);
    }
};

TEST(ResultsScan, EndsWhereverItIsCancelled)
{
    constexpr int nodeCount = 30'000;
    ResultsBytes bytes;
    bytes.header(nodeCount).run().names({"kU"});
    for (int node = nodeCount; node > 0; --node)
        bytes.record(node, {1.0});
    SlowBuffer device;
    device.setData(bytes);
    int cancelAt = 0;
    for (bool isCancelled = true; isCancelled; ++cancelAt) {
        ASSERT_TRUE(device.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
        QDataStream in(&device);
        int called = 0;
        ResultsScan scan;
        ResultsFileScan fileScan(scan, ResultsScan::Damage,
                                 [&](qint64, qint64) { return called++ != cancelAt; });
        fileScan.setNodesTogether(-nodeCount / 2); // two passes
        const Result result = fileScan.read(in);
        isCancelled = result.outcome == Result::Cancelled;
        if (isCancelled)
            EXPECT_EQ(called, cancelAt + 1); // none behind the one that cancels
        else
            EXPECT_EQ(scan.damage().missingNodes, 0);
        device.close();
    }
    EXPECT_GE(cancelAt, 4);
}

TEST(ResultsScan, IsCopiedAndMoved)
{
    ResultsScan scan = scanOf(fieldOf({1, 2, 6}));
    ResultsScan copy(scan);
    const ResultsScan moved(std::move(scan));
    ResultsScan assigned;
    assigned = copy;
    for (const ResultsScan* each : std::initializer_list<const ResultsScan*> {&copy, &moved, &assigned}) {
        EXPECT_EQ(each->header().nodeCount(), 3);
        EXPECT_EQ(each->statistics().at(0).mean, 3);
        EXPECT_EQ(each->damage().missingNodes, 0);
    }
}

TEST(ResultsScan, TakesARecordThatIsCutOffForThatOfItsNodeOnly)
{
    ResultsBytes bytes;
    bytes.header(3).run().names({"kU", "kP"}).record(2, {1, 2}).record(2, {3, 4});
    const QByteArray whole = bytes;
    for (const int missing : {1, 8, 15, 16}) {
        const ResultsScan scan = scanOf(whole.chopped(missing), Result::CutShort);
        EXPECT_EQ(scan.statistics().at(0).count, 1);
        EXPECT_EQ(scan.statistics().at(0).mean, 1.0);
        EXPECT_EQ(scan.damage().repeatedRecords, 1);
        EXPECT_EQ(scan.damage().missingNodes, 2);
    }
    EXPECT_EQ(scanOf(whole.chopped(17), Result::CutShort).damage().repeatedRecords, 0);
}

TEST(ResultsScan, GoesOnFromWhatALoadStopsAt)
{
    const ResultsScan scan =
        scanOf(ResultsBytes().header(2).run().names({"kU", "kU"}).record(0, {1, 2}).record(1, {3, 4}));
    ASSERT_THAT(scan.statistics(), SizeIs(2));
    EXPECT_EQ(scan.statistics()[0].mean, 2);
    EXPECT_EQ(scan.statistics()[0].minimumNode, 0);
    EXPECT_EQ(scan.statistics()[1].mean, 3);
    EXPECT_EQ(scan.damage().recordsOutOfRange, 1);
    scanOf(ResultsBytes().header(-3).run().names({"kU"}));
}

TEST(ResultsScan, GivesOnlyWhatIsAskedFor)
{
    const QByteArray bytes = fieldOf({1, 2});
    EXPECT_THAT(scanOf(bytes, Result::Loaded, ResultsScan::Damage).statistics(), IsEmpty());
    const ResultsScan scan = scanOf(ResultsBytes().header(1).run().names({"kU"}).record(9, {1}),
                                    Result::Loaded, ResultsScan::Statistics);
    EXPECT_EQ(scan.damage().recordsOutOfRange, 0);
    EXPECT_EQ(scan.damage().missingNodes, 0);
}

TEST(ResultsScan, KeepsWhatItHoldsWhereNothingWasRead)
{
    TemporaryFolder folder;
    ResultsScan scan;
    const auto scanned = [&](const QByteArray& bytes) {
        return scan.scan(folder.write("run.res", bytes.toStdString())).outcome;
    };
    EXPECT_EQ(scanned(fieldOf({1, 2, 6})), Result::Loaded);
    EXPECT_EQ(scan.scan(folder.path("missing.res")).outcome, Result::CannotOpen);
    EXPECT_EQ(scanned("no results"), Result::NoResultsFile);
    EXPECT_EQ(scanned(ResultsBytes().header(1).run().integer(-1)), Result::ContradictsItself);

    QByteArray longRecord = ResultsBytes().header(1).run().integer(5'000'000); // of 40 MB
    longRecord.resize(354 + 21 * 5'000'000);
    EXPECT_EQ(scanned(longRecord), Result::OverLimit);

    const std::string path = folder.write("run.res", fieldOf({3}).toStdString());
    const auto cancel = [](qint64, qint64) { return false; };
    EXPECT_EQ(scan.scan(path, ResultsScan::StatisticsAndDamage, cancel).outcome, Result::Cancelled);
    EXPECT_EQ(scan.header().nodeCount(), 3);
    EXPECT_EQ(scan.statistics().at(0).mean, 3);

    EXPECT_EQ(scanned(fieldOf({1, 2, 6}).chopped(1)), Result::CutShort);
    EXPECT_EQ(scan.statistics().at(0).mean, 1.5);
}

} // namespace
} // namespace Nereo::Io
