#include "support/Bits.h"
#include "support/ResultsBytes.h"
#include "support/TemporaryFolder.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/ResultsFile.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>

namespace Nereo::Io {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Order = QDataStream::ByteOrder;
constexpr Order bothOrders[] = {QDataStream::LittleEndian, QDataStream::BigEndian};

using Result = ResultsLoadResult;

/// Two fields on four nodes, and a name between them that is unknown.
ResultsBytes smallFile(Order order = QDataStream::LittleEndian)
{
    ResultsBytes bytes(order);
    bytes.header(4).run().names({"kU", "kFoo", "kP"});
    for (const int node : {1, 2, 3, 4})
        bytes.record(node, {node + 0.5, -1.0, node * 10.0});
    return bytes;
}

constexpr int recordsPlace = 354 + 3 * 21;
constexpr int recordSize = 4 + 3 * 8;

class ResultsFileLoad : public ::testing::Test {
protected:
    Result load(const QByteArray& bytes, const ResultsLoadOptions& options = {})
    {
        return results.loadFrom(folder.write("run.res", bytes.toStdString()), options);
    }

    /// The object holds a field that no file here has.
    void hold()
    {
        results = ResultsFile();
        results.setNodeCount(1);
        results.setTitle("held before");
        results.addFieldDataCode(kT);
        results.setFieldData(kT, 1, 7.0);
        ASSERT_TRUE(results.saveTo("held/before"));
    }

    void expectHeld() const
    {
        EXPECT_EQ(results.title(), "held before");
        EXPECT_EQ(results.nodeCount(), 1);
        EXPECT_EQ(results.filePath(), "held/before");
        EXPECT_EQ(results.version(), Util::Version::Current);
        EXPECT_THAT(results.fieldDataCodes(), ElementsAre(kT));
        EXPECT_THAT(results.fieldData(kT), ElementsAre(7.0));
    }

    const TemporaryFolder folder;
    ResultsFile results;
};

TEST_F(ResultsFileLoad, ReplacesWhatTheObjectHolds)
{
    for (const Order order : bothOrders) {
        hold();
        const Result result = load(smallFile(order));
        EXPECT_EQ(result.outcome, Result::Loaded);
        EXPECT_TRUE(result.isLoaded());
        EXPECT_EQ(result.problem.kind, ResultsProblem::None);
        EXPECT_EQ(result.recordsAnnounced, 4);
        EXPECT_EQ(result.wholeRecords, 4);

        EXPECT_EQ(results.filePath(), folder.path("run.res"));
        EXPECT_EQ(results.version(), Util::Version(2023, 1, 7, 0));
        EXPECT_EQ(results.dateTimeString(), "2024-05-18 14:22:47");
        EXPECT_EQ(results.title(), "Lid-driven cavity");
        EXPECT_EQ(results.nodeCount(), 4);
        EXPECT_EQ(results.elementCount(), 77);
        EXPECT_EQ(results.currentIteration(), 500);
        EXPECT_EQ(results.startingIteration(), 100);
        EXPECT_EQ(results.currentTimeStep(), 8);
        EXPECT_EQ(results.startingTimeStep(), 3);
        EXPECT_EQ(results.currentTime(), 1.25);
        EXPECT_EQ(results.timeStepSize(), 0.125);
        EXPECT_THAT(results.fieldDataCodes(), ElementsAre(kU, kP));
        EXPECT_THAT(results.fieldData(kU), ElementsAre(1.5, 2.5, 3.5, 4.5));
        EXPECT_THAT(results.fieldData(kP), ElementsAre(10.0, 20.0, 30.0, 40.0));
    }
}

TEST_F(ResultsFileLoad, TakesTheFieldsThatAreWanted)
{
    const struct {
        std::vector<int> wanted;
        QList<int> loaded;
    } cases[] = {
        {{},              {kU, kP}},
        {{kP},            {kP}    },
        {{kP, kU, kP},    {kU, kP}},
        {{kT, kP},        {kP}    },
        {{kT, kNone, -1}, {}      },
    };
    for (const auto& [wanted, loaded] : cases) {
        ResultsLoadOptions options;
        options.codes = wanted;
        EXPECT_EQ(load(smallFile(), options).outcome, Result::Loaded);
        EXPECT_EQ(results.fieldDataCodes(), loaded);
        if (loaded.contains(kP)) {
            EXPECT_THAT(results.fieldData(kP), ElementsAre(10.0, 20.0, 30.0, 40.0));
        }
    }
}

TEST_F(ResultsFileLoad, TakesTheNodesThatAreWanted)
{
    constexpr int smallest = std::numeric_limits<int>::min();
    constexpr int largest = std::numeric_limits<int>::max();
    const struct {
        int first;
        int last;
        std::vector<double> values;
    } cases[] = {
        {1,        largest,  {10, 20, 30, 40}},
        {1,        4,        {10, 20, 30, 40}},
        {2,        3,        {20, 30}        },
        {3,        largest,  {30, 40}        },
        {smallest, 1,        {10}            },
        {4,        4,        {40}            },
        {5,        9,        {}              },
        {3,        2,        {}              },
        {largest,  largest,  {}              },
        {smallest, 0,        {}              },
        {largest,  smallest, {}              },
    };
    QByteArray shuffled =
        ResultsBytes().header(4).run().names({"kP"}).record(3, {30}).record(1, {10}).record(4, {40}).record(
            2, {20});
    for (const QByteArray& bytes : {smallFile().bytes(), shuffled}) {
        for (const auto& [first, last, values] : cases) {
            ResultsLoadOptions options;
            options.firstNode = first;
            options.lastNode = last;
            EXPECT_EQ(load(bytes, options).outcome, Result::Loaded);
            EXPECT_EQ(results.nodeCount(), int(values.size())) << first << ' ' << last;
            EXPECT_THAT(results.fieldData(kP), ::testing::ElementsAreArray(values)) << first << ' ' << last;
        }
    }
}

TEST_F(ResultsFileLoad, SaysWhereAFileIsCutShort)
{
    const QByteArray whole = smallFile();
    for (int size = 310; size < whole.size(); ++size) {
        const Result result = load(whole.left(size));
        EXPECT_EQ(result.outcome, Result::CutShort) << size;
        EXPECT_EQ(result.problem.kind,
                  size < 350 ? ResultsProblem::TooShort : ResultsProblem::CountsPastTheFile);
        EXPECT_EQ(result.problem.offset, size);
        EXPECT_EQ(result.recordsAnnounced, 4);
        EXPECT_EQ(result.wholeRecords, std::max(size - recordsPlace, 0) / recordSize) << size;
    }
}

TEST_F(ResultsFileLoad, PutsAValueInPlaceOfThoseThatAreMissing)
{
    QByteArray bytes = ResultsBytes().header(5).run().names({"kU", "kP"}).record(2, {1, 2}).record(4, {3, 4});
    bytes += QByteArray(ResultsBytes().record(3, {5, 6})).mid(4).chopped(8); // of kU
    for (const double missing : {0.0, -0.0, 7.5, std::numeric_limits<double>::quiet_NaN()}) {
        ResultsLoadOptions options;
        options.missingValue = missing;
        EXPECT_EQ(load(bytes, options).outcome, Result::CutShort);
        const QVector<double> u {missing, 1, 5, 3, missing};
        const QVector<double> p {missing, 2, missing, 4, missing};
        EXPECT_TRUE(haveSameBits(results.fieldData(kU), u)) << missing;
        EXPECT_TRUE(haveSameBits(results.fieldData(kP), p)) << missing;
    }
    QByteArray big = ResultsBytes(QDataStream::BigEndian).header(2).run().names({"kU"}).record(1, {1.5});
    ResultsLoadOptions options;
    options.missingValue = 2.5;
    load(big.chopped(1), options);
    EXPECT_THAT(results.fieldData(kU), ElementsAre(2.5, 2.5));
}

TEST_F(ResultsFileLoad, KeepsTheObjectWhereAFileContradictsItself)
{
    const auto expectContradiction = [this](const QByteArray& bytes, ResultsProblem::Kind kind,
                                            qint64 offset) {
        hold();
        ResultsLoadOptions onlyT;
        onlyT.codes = {kT}; // which no file has: what contradicts itself does so whatever is wanted
        for (const ResultsLoadOptions& options : {ResultsLoadOptions(), onlyT}) {
            const Result result = load(bytes, options);
            EXPECT_EQ(result.outcome, Result::ContradictsItself) << kind;
            EXPECT_FALSE(result.isLoaded());
            EXPECT_EQ(result.problem.kind, kind);
            EXPECT_EQ(result.problem.offset, offset);
            expectHeld();
        }
    };
    expectContradiction(ResultsBytes().header(3).run().integer(-1), ResultsProblem::NegativeFieldCount, 346);
    expectContradiction(ResultsBytes().header(-1).run().names({"kFoo", "kU"}),
                        ResultsProblem::NegativeNodeCount, 298);
    expectContradiction(ResultsBytes().header(-1).run().integer(-1), ResultsProblem::NegativeFieldCount, 346);
    expectContradiction(ResultsBytes().header(1).run().names({"kU", "kFoo", "kU"}),
                        ResultsProblem::RepeatedField, 350 + 2 * 21);
    for (const int node : {0, -1, 3, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        const QByteArray bytes =
            ResultsBytes().header(2).run().names({"kU", "kFoo"}).record(1, {1, 1}).record(node, {1, 1});
        expectContradiction(bytes, ResultsProblem::NodeOutOfRange, 354 + 42 + 20);
        expectContradiction(bytes.chopped(16), ResultsProblem::NodeOutOfRange, 354 + 42 + 20);
    }
}

TEST_F(ResultsFileLoad, FindsABadNodeBehindManyGoodOnes)
{
    constexpr int nodeCount = 30'000; // several blocks
    ResultsBytes bytes;
    bytes.header(nodeCount).run().names({"kU"});
    for (int node = nodeCount; node > 1; --node)
        bytes.record(node, {1.0});
    bytes.record(0, {1.0});
    hold();
    const Result result = load(bytes);
    EXPECT_EQ(result.outcome, Result::ContradictsItself);
    EXPECT_EQ(result.problem.offset, 375 + 12 * (nodeCount - 1));
    expectHeld();
}

TEST_F(ResultsFileLoad, TakesWhatNoLoadMindsForWhole)
{
    ResultsLoadOptions options;
    EXPECT_EQ(load(ResultsBytes().header(2).run().names({"kFoo"}).record(0, {1}).record(9, {2})).outcome,
              Result::Loaded);
    EXPECT_EQ(results.nodeCount(), 2);
    EXPECT_EQ(load(ResultsBytes().header(-5).run().names({"kFoo"})).outcome, Result::Loaded);
    EXPECT_EQ(results.nodeCount(), -5);
    EXPECT_EQ(load(smallFile().bytes() + "behind").outcome, Result::Loaded);
}

TEST_F(ResultsFileLoad, KeepsTheObjectWhereAFileIsNone)
{
    hold();
    EXPECT_EQ(results.loadFrom(folder.path("missing.res"), ResultsLoadOptions()).outcome, Result::CannotOpen);
    EXPECT_EQ(results.loadFrom(folder.path(), ResultsLoadOptions()).outcome, Result::CannotOpen);
    EXPECT_EQ(results.loadFrom("", ResultsLoadOptions()).outcome, Result::CannotOpen);
    expectHeld();

    const auto expectNone = [this](const QByteArray& bytes, ResultsProblem::Kind kind, qint64 offset) {
        const Result result = load(bytes);
        EXPECT_EQ(result.outcome, Result::NoResultsFile);
        EXPECT_EQ(result.problem.kind, kind);
        EXPECT_EQ(result.problem.offset, offset);
        expectHeld();
    };
    expectNone("", ResultsProblem::TooShort, 0);
    expectNone("This is no results file.\n", ResultsProblem::TooShort, 25);
    expectNone(smallFile().bytes().left(309), ResultsProblem::TooShort, 309);
    expectNone(ResultsBytes().header(1, 0).run(), ResultsProblem::BadHeaderMarker, 306);
    expectNone(ResultsBytes().header(1).run(0), ResultsProblem::BadRunMarker, 342);
}

TEST_F(ResultsFileLoad, HoldsALimitOfMemory)
{
    hold();
    ResultsLoadOptions options;
    options.memoryLimit = 1000;
    Result result = load(smallFile(), options);
    EXPECT_EQ(result.outcome, Result::OverLimit);
    EXPECT_GT(result.memoryNeeded, 1000);
    expectHeld();

    options.memoryLimit = result.memoryNeeded; // which is what any load takes, without the values
    result = load(smallFile(), options);
    EXPECT_EQ(result.outcome, Result::OverLimit);
    expectHeld();

    options.memoryLimit = result.memoryNeeded - 1;
    EXPECT_EQ(load(smallFile(), options).outcome, Result::OverLimit);
    options.memoryLimit = result.memoryNeeded;
    EXPECT_EQ(load(smallFile(), options).outcome, Result::Loaded);
}

TEST_F(ResultsFileLoad, CountsWhatIsWantedAgainstTheLimit)
{
    constexpr int million = 1'000'000;
    const QByteArray bytes = ResultsBytes().header(million).run().names({"kU", "kP"}); // without records
    ResultsLoadOptions options;
    options.memoryLimit = 9 * million;
    EXPECT_EQ(load(bytes, options).outcome, Result::OverLimit);
    options.codes = {kP};
    EXPECT_EQ(load(bytes, options).outcome, Result::CutShort);
    EXPECT_THAT(results.fieldData(kP), SizeIs(million));
    options.codes = {};
    options.lastNode = million / 2;
    EXPECT_EQ(load(bytes, options).outcome, Result::CutShort);
}

TEST_F(ResultsFileLoad, SaysThatAFieldIsTooLargeForAVector)
{
    constexpr int mostNodes = std::numeric_limits<int>::max();
    const QByteArray bytes = ResultsBytes().header(mostNodes).run().names({"kU"}).record(7, {1.5});
    hold();
    const Result result = load(bytes);
    EXPECT_EQ(result.outcome, Result::OverLimit);
    EXPECT_GT(result.memoryNeeded, qint64(8) * mostNodes);
    expectHeld();

    ResultsLoadOptions options; // but a part of it isn't
    options.firstNode = 7;
    options.lastNode = 8;
    EXPECT_EQ(load(bytes, options).outcome, Result::CutShort);
    EXPECT_THAT(results.fieldData(kU), ElementsAre(1.5, 0.0));
    EXPECT_EQ(load(ResultsBytes().header(mostNodes).run().names({"kFoo"})).outcome, Result::CutShort);
}

struct Call {
    qint64 done;
    qint64 inAll;
};

std::string largeFile(int nodeCount)
{
    ResultsBytes bytes;
    bytes.header(nodeCount).run().names({"kU", "kFoo", "kP"});
    std::string text = bytes.bytes().toStdString();
    const std::string record = QByteArray(ResultsBytes().record(1, {1, 2, 3})).mid(4).toStdString();
    for (int i = 0; i < nodeCount; ++i)
        text += record;
    return text;
}

TEST_F(ResultsFileLoad, TellsOfItsProgress)
{
    const std::string path = folder.write("large.res", largeFile(6'000'000)); // 168 MB
    std::vector<Call> calls;
    ResultsLoadOptions options;
    options.progress = [&](qint64 done, qint64 inAll) {
        calls.push_back({done, inAll});
        return true;
    };
    EXPECT_EQ(results.loadFrom(path, options).outcome, Result::Loaded);
    constexpr qint64 size = recordsPlace + qint64(recordSize) * 6'000'000;
    ASSERT_GE(calls.size(), 3u);
    qint64 before = 0;
    for (const auto& [done, inAll] : calls) {
        EXPECT_GE(done, before);
        EXPECT_LE(done - before, 64 << 20);
        EXPECT_EQ(inAll, size);
        before = done;
    }
    EXPECT_EQ(before, size);
}

TEST_F(ResultsFileLoad, CallsNoMoreThanAHundredTimesASecond)
{
    const std::string path = folder.write("large.res", largeFile(1'000'000));
    int calls = 0;
    ResultsLoadOptions options;
    options.progress = [&calls](qint64, qint64) { return ++calls > 0; };
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(results.loadFrom(path, options).outcome, Result::Loaded);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    EXPECT_LE(calls, int(100 * time.count()) + 5); // and once at the end of each
}

TEST_F(ResultsFileLoad, LeavesTheObjectAloneWhereverItIsCancelled)
{
    const std::string path = folder.write("large.res", largeFile(3'000'000));
    hold();
    int called = 0;
    int cancelAt = 0;
    ResultsLoadOptions options;
    options.progress = [&](qint64, qint64) { return called++ != cancelAt; };
    for (bool isCancelled = true; isCancelled; ++cancelAt) {
        called = 0;
        const Result result = results.loadFrom(path, options);
        isCancelled = result.outcome == Result::Cancelled;
        if (isCancelled) {
            EXPECT_EQ(called, cancelAt + 1); // none behind the one that cancels
            expectHeld();
        } else {
            EXPECT_EQ(result.outcome, Result::Loaded);
        }
    }
    EXPECT_GE(cancelAt, 2);
    EXPECT_THAT(results.fieldDataCodes(), ElementsAre(kU, kP));
}

TEST_F(ResultsFileLoad, LetsOutWhatTheProgressFunctionThrows)
{
    hold();
    const std::string path = folder.write("run.res", smallFile().bytes().toStdString());
    ResultsLoadOptions options;
    options.progress = [](qint64, qint64) -> bool { throw std::runtime_error("enough"); };
    EXPECT_THROW(results.loadFrom(path, options), std::runtime_error);
    expectHeld();
}

/// A file that changes when a load has read a part of it.
class ChangingResultsFile : public ResultsFileLoad {
protected:
    template <class Change>
    Result loadWith(Change change)
    {
        ResultsLoadOptions options;
        options.progress = [&, hasChanged = false](qint64, qint64) mutable {
            if (!std::exchange(hasChanged, true))
                change();
            return true;
        };
        return results.loadFrom(path, options);
    }

    static constexpr int nodeCount = 6'000'000;
    const std::string path = folder.write("large.res", largeFile(nodeCount));
};

TEST_F(ChangingResultsFile, IsCutShortWhereItShrinks)
{
    const Result result = loadWith([this] { QFile::resize(QString::fromStdString(path), 400 << 10); });
    EXPECT_EQ(result.outcome, Result::CutShort);
    EXPECT_LT(result.wholeRecords, nodeCount);
    EXPECT_EQ((result.problem.offset - recordsPlace) / recordSize, result.wholeRecords);
}

TEST_F(ChangingResultsFile, IsLoadedWhereItGrows)
{
    const Result result = loadWith([this] {
        QFile file(QString::fromStdString(path));
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.write("more");
    });
    EXPECT_EQ(result.outcome, Result::Loaded);
}

} // namespace
} // namespace Nereo::Io
