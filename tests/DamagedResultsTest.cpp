#include "support/DamagedLoads.h"
#include "support/LoadWatch.h"
#include "support/PlainResults.h"
#include "support/ResultsBytes.h"
#include "support/SameContent.h"

#include <NereoFileIO/ResultsFile.h>
#include <NereoFileIO/ResultsFileHeader.h>
#include <NereoFileIO/ResultsScan.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <set>
#include <vector>

namespace Nereo::Io {
namespace {

/// What a plain load prints where a file contradicts itself.
std::string stopOf(const PlainResults& plain)
{
    switch (plain.end()) {
    case PlainResults::NegativeFieldCount:
    case PlainResults::NegativeNodeCount:
        return "ASSERT failure in QVector::QVector: \"Size must be greater than or equal to 0.\"";
    case PlainResults::RepeatedField:
        return "ASSERT: \"false\" in file FileIO/ResultsFile, line 166";
    case PlainResults::NodeOutOfRange:
        return "ASSERT failure in QVector<T>::operator[]: \"index out of range\"";
    default:
        return {};
    }
}

ResultsFile contentOf(const PlainResults& plain)
{
    ResultsFile results;
    results.setVersion(Util::Version(plain.integerAt(4), plain.integerAt(8), plain.integerAt(12), 0));
    results.setDateTimeString(plain.textAt(16, 26));
    results.setTitle(plain.textAt(42, 256));
    results.setNodeCount(plain.nodeCount());
    results.setElementCount(plain.integerAt(302));
    if (plain.integerAt(306) != -1)
        return results;
    results.setIterations(plain.integerAt(314), plain.integerAt(310));
    results.setTimeSteps(plain.integerAt(322), plain.integerAt(318));
    results.setCurrentTime(plain.numberAt(326));
    results.setTimeStepSize(plain.numberAt(334));
    if (!plain.hasMarkers() || !stopOf(plain).empty())
        return results;
    for (const auto& [code, column] : plain.columns()) {
        results.addFieldDataCode(code);
        const QVector<double> values = plain.values(code, 1, plain.nodeCount(), 0.0);
        for (int node = 1; node <= values.size(); ++node)
            results.setFieldData(code, node, values[node - 1]);
    }
    return results;
}

ExpectedLoad<ResultsFile> expectedFromBytes(const std::string& bytes)
{
    const PlainResults plain(QByteArray::fromStdString(bytes));
    ExpectedLoad<ResultsFile> expected;
    expected.stop = stopOf(plain);
    expected.content = contentOf(plain);
    return expected;
}

struct ExpectedEnd {
    PlainResults::End end;
    ResultsLoadResult::Outcome outcome;
    ResultsProblem::Kind problem;
};

constexpr ExpectedEnd expectedEnds[] = {
    {PlainResults::Whole,              ResultsLoadResult::Loaded,            ResultsProblem::None          },
    {PlainResults::NegativeFieldCount, ResultsLoadResult::ContradictsItself,
     ResultsProblem::NegativeFieldCount                                                                    },
    {PlainResults::NegativeNodeCount,  ResultsLoadResult::ContradictsItself,
     ResultsProblem::NegativeNodeCount                                                                     },
    {PlainResults::RepeatedField,      ResultsLoadResult::ContradictsItself, ResultsProblem::RepeatedField },
    {PlainResults::NodeOutOfRange,     ResultsLoadResult::ContradictsItself, ResultsProblem::NodeOutOfRange},
};

/// The problem of a file that is cut short or has no marker follows from where it ends.
ExpectedEnd expectedEnd(const PlainResults& plain)
{
    const qint64 size = plain.bytes().size();
    const auto endOfFile = size < 350 ? ResultsProblem::TooShort : ResultsProblem::CountsPastTheFile;
    if (plain.end() == PlainResults::CutShort)
        return {plain.end(), ResultsLoadResult::CutShort, endOfFile};
    if (plain.end() == PlainResults::WithoutMarker) {
        const auto marker = plain.endOffset() == 306 && size >= 310 ? ResultsProblem::BadHeaderMarker
            : plain.endOffset() == 342                              ? ResultsProblem::BadRunMarker
                                                                    : ResultsProblem::TooShort;
        return {plain.end(), ResultsLoadResult::NoResultsFile, marker};
    }
    return *std::find_if(std::begin(expectedEnds), std::end(expectedEnds),
                         [&plain](const ExpectedEnd& expected) { return expected.end == plain.end(); });
}

void expectScanOf(const PlainResults& plain, const ResultsScan& scan)
{
    std::set<qint32> seen;
    int repeated = 0;
    int outOfRange = 0;
    for (const qint32 node : plain.nodes()) {
        const bool isThere = node >= 1 && node <= plain.nodeCount();
        outOfRange += !isThere;
        repeated += isThere && !seen.insert(node).second;
    }
    EXPECT_EQ(scan.damage().missingNodes, plain.recordsAnnounced() - int(seen.size()));
    EXPECT_EQ(scan.damage().repeatedRecords, repeated);
    EXPECT_EQ(scan.damage().recordsOutOfRange, outOfRange);

    for (std::size_t i = 0; i < scan.statistics().size(); ++i) {
        const qint64 column = scan.header().fields()[i].column;
        ResultsStatistics expected;
        for (int record = 0; record < plain.wholeRecords(); ++record) {
            const double value = plain.numberAt(plain.recordOffset(record) + 4 + 8 * column);
            expected.notFinite += !std::isfinite(value);
            expected.count += std::isfinite(value);
            expected.maximum = std::isfinite(value) ? std::max(expected.maximum, value) : expected.maximum;
        }
        EXPECT_EQ(scan.statistics()[i].count, expected.count);
        EXPECT_EQ(scan.statistics()[i].notFinite, expected.notFinite);
        if (expected.count > 0 && expected.maximum > 0) {
            EXPECT_EQ(scan.statistics()[i].maximum, expected.maximum);
        }
    }
}

/// Loads by choice: whatever is wrong, they end with a result that says so.
void expectChosenLoads(const std::vector<DamagedFile>& files)
{
    TemporaryFolder folder;
    std::map<int, int> outcomes;
    for (const auto& [damage, bytes] : files) {
        SCOPED_TRACE(damage);
        const std::string path = folder.freshPath("damaged.res");
        writeBytes(path, bytes);
        const PlainResults plain(QByteArray::fromStdString(bytes));
        const ExpectedEnd expected = expectedEnd(plain);

        ResultsFile results;
        results.setTitle("held before");
        const LoadWatch watch(damage);
        const ResultsLoadResult result = results.loadFrom(path, ResultsLoadOptions());
        EXPECT_EQ(result.outcome, expected.outcome);
        EXPECT_EQ(result.problem.kind, expected.problem);
        EXPECT_EQ(result.problem.offset, plain.endOffset());
        if (result.isLoaded()) {
            EXPECT_EQ(result.wholeRecords, plain.wholeRecords());
            expectSameContent(results, contentOf(plain));
        } else {
            EXPECT_EQ(results.title(), "held before");
        }
        ++outcomes[result.outcome];
        if (::testing::Test::HasFailure())
            return; // one of thousands says enough
    }
    for (const auto& [outcome, count] : outcomes)
        ::testing::Test::RecordProperty("outcome" + std::to_string(outcome), count);
}

/// The header and the scan of each file, against a count by hand.
void expectScans(const std::vector<DamagedFile>& files)
{
    TemporaryFolder folder;
    for (const auto& [damage, bytes] : files) {
        SCOPED_TRACE(damage);
        const std::string path = folder.freshPath("damaged.res");
        writeBytes(path, bytes);
        const PlainResults plain(QByteArray::fromStdString(bytes));

        const LoadWatch watch(damage);
        ResultsFileHeader header;
        EXPECT_TRUE(header.readFrom(path));
        EXPECT_EQ(header.isResultsFile(), plain.end() != PlainResults::WithoutMarker);
        EXPECT_EQ(header.nodeCount(), plain.nodeCount());
        EXPECT_EQ(header.fieldCount(), plain.fieldCount());
        EXPECT_EQ(header.bytesAnnounced(), plain.bytesAnnounced());

        ResultsScan scan;
        const ResultsLoadResult result = scan.scan(path);
        EXPECT_EQ(result.isLoaded(), header.isResultsFile() && header.fieldCount() >= 0);
        if (result.isLoaded() && plain.end() != PlainResults::RepeatedField
            && plain.end() != PlainResults::NegativeNodeCount)
            expectScanOf(plain, scan);
        if (::testing::Test::HasFailure())
            return;
    }
}

/// Two fields that are known and one that isn't, on 128 nodes: a number that is negative in the other byte
/// order, so that damage to the first word announces no gigabytes.
std::string smallFile(QDataStream::ByteOrder order)
{
    ResultsBytes bytes(order);
    bytes.header(128).run().names({"kU", "kFoo", "kP"});
    for (int node = 1; node <= 128; ++node)
        bytes.record(node, {node + 0.5, -1.0, node * 10.0});
    return bytes.bytes().toStdString();
}

TEST(DamagedResultsDeathTest, LoadsOfALittleEndianFileWhatTheDescriptionSays)
{
    const std::string whole = smallFile(QDataStream::LittleEndian);
    DamagedLoads<ResultsFile> loads("res");
    loads.expect(cutAnywhere(whole), expectedFromBytes);
    loads.expect(withAByteReplaced(whole), expectedFromBytes);
}

TEST(DamagedResultsDeathTest, LoadsOfABigEndianFileWhatTheDescriptionSays)
{
    const std::string whole = smallFile(QDataStream::BigEndian);
    DamagedLoads<ResultsFile> loads("res");
    loads.expect(cutAnywhere(whole), expectedFromBytes);
    loads.expect(withAByteReplaced(whole), expectedFromBytes);
}

TEST(DamagedResults, EndEachLoadByChoiceAsTheDescriptionSays)
{
    for (const auto order : {QDataStream::LittleEndian, QDataStream::BigEndian}) {
        const std::string whole = smallFile(order);
        expectChosenLoads(cutAnywhere(whole));
        expectChosenLoads(withAByteReplaced(whole));
    }
}

TEST(DamagedResults, AreScannedAsTheyAre)
{
    for (const auto order : {QDataStream::LittleEndian, QDataStream::BigEndian}) {
        const std::string whole = smallFile(order);
        expectScans(cutAnywhere(whole));
        expectScans(withAByteReplaced(whole));
    }
}

} // namespace
} // namespace Nereo::Io
