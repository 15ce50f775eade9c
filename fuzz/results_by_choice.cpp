// Any bytes as a results file, and any options: nothing stops the process or throws, a load takes no more
// memory than it may, and what is loaded is what a plain reading finds. The last bytes make the options.

#include "Formats.h"
#include "FuzzBytes.h"
#include "Requirement.h"

#include <FileIO/ResultsFileLoad.h>
#include <FileIO/ResultsFileScan.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/ResultsFile.h>
#include <NereoFileIO/ResultsScan.h>
#include <tests/support/Bits.h>
#include <tests/support/PlainResults.h>

#include <algorithm>
#include <limits>

using namespace Nereo::Io;

namespace {

constexpr int bytesOfOptions = 16;

ResultsLoadOptions optionsOf(const QByteArray& bytes)
{
    constexpr qint64 limits[] = {0, 300'000, 1'000'000, 30'000'000};
    constexpr double missingValues[] = {0.0, -0.0, 7.5, std::numeric_limits<double>::quiet_NaN()};

    FuzzBytes in(bytes);
    ResultsLoadOptions options;
    options.memoryLimit = limits[3 - in.choice(4)]; // the largest where there are no bytes
    options.missingValue = in.item(missingValues);
    if (in.flag()) {
        options.firstNode = in.number<qint16>();
        options.lastNode = in.number<qint16>();
    }
    for (int count = in.choice(3); count > 0; --count)
        options.codes.push_back(in.choice(kNone + 2));
    if (in.flag())
        options.progress = [left = in.choice(3)](qint64, qint64) mutable { return left-- > 0; };
    return options;
}

void requireValues(const ResultsFile& results, const ResultsLoadOptions& options, const PlainResults& plain)
{
    const int first = std::max(options.firstNode, 1);
    const int last = std::min(options.lastNode, plain.recordsAnnounced());
    int fieldCount = 0;
    for (const auto& [code, column] : plain.columns()) {
        const auto& codes = options.codes;
        if (!codes.empty() && std::find(codes.begin(), codes.end(), code) == codes.end())
            continue;
        ++fieldCount;
        require(haveSameBits(results.fieldData(code), plain.values(code, first, last, options.missingValue)),
                "the values are those in the file");
    }
    require(results.fieldDataCodes().size() == fieldCount, "the fields are the wanted ones in the file");
}

void requireOutcome(const ResultsLoadResult& result, const PlainResults& plain)
{
    const bool contradicts = plain.end() >= PlainResults::NegativeFieldCount;
    switch (result.outcome) {
    case ResultsLoadResult::Loaded:
        return require(plain.end() == PlainResults::Whole, "a file that is loaded is whole");
    case ResultsLoadResult::CutShort:
        return require(plain.end() == PlainResults::CutShort, "a file that is cut short ends early");
    case ResultsLoadResult::NoResultsFile:
        return require(plain.end() == PlainResults::WithoutMarker, "a file that is none has no marker");
    case ResultsLoadResult::ContradictsItself:
        require(contradicts, "a file that contradicts itself stops a plain load");
        return require(result.problem.offset == plain.endOffset(), "it does so at its place");
    case ResultsLoadResult::OverLimit:
    case ResultsLoadResult::Cancelled:
        return; // which the options may lead to in any file
    default:
        stopBecause("bytes are neither missing nor fail");
    }
}

void load(const QByteArray& bytes, const ResultsLoadOptions& options, const PlainResults& plain)
{
    ResultsFile results;
    ResultsLoadResult result;
    {
        QDataStream in(bytes);
        const LoadGuard guard(options.memoryLimit);
        result = ResultsFileLoad(results, options).read(in);
    }
    requireOutcome(result, plain);
    if (result.isLoaded())
        requireValues(results, options, plain);
    else if (result.outcome == ResultsLoadResult::OverLimit)
        require(result.memoryNeeded > options.memoryLimit || plain.nodeCount() > 200'000'000,
                "it is over the limit");
}

void scan(const QByteArray& bytes, const PlainResults& plain)
{
    ResultsScan scan;
    QDataStream in(bytes);
    const LoadGuard guard(0);
    const ResultsLoadResult result = ResultsFileScan(scan, ResultsScan::StatisticsAndDamage, {}).read(in);
    if (!result.isLoaded())
        return;
    const ResultsDamage& damage = scan.damage();
    require(plain.nodes().isEmpty()
                || damage.missingNodes + plain.nodes().size() - damage.repeatedRecords
                        - damage.recordsOutOfRange
                    == plain.nodeCount(),
            "each record is that of a node, repeats one or is out of range");
    for (const ResultsStatistics& statistics : scan.statistics()) {
        require(statistics.count + statistics.notFinite == result.wholeRecords, "each value counts once");
        require(statistics.count == 0 || statistics.minimum <= statistics.maximum, "there is a range");
        require(statistics.count == 0
                    || (statistics.minimum <= statistics.mean && statistics.mean <= statistics.maximum),
                "the mean lies in the range");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input = inputBytes(data, size);
    const QByteArray bytes = input.chopped(std::min(input.size(), bytesOfOptions));
    const PlainResults plain(bytes);
    load(bytes, optionsOf(input.right(bytesOfOptions)), plain);
    scan(bytes, plain);
    return 0;
}
