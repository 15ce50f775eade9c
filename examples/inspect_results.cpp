// What can be asked of a results file that may be large, cut or damaged: inspect_results FILE
//
// The facts without the values; two fields of it within 100 MB, with a line that tells of the progress; and
// what becomes of the same file when its end is missing. None of it stops the process, whatever is in the
// file.

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/ResultsFile.h>
#include <NereoFileIO/ResultsFileHeader.h>
#include <NereoFileIO/ResultsScan.h>

#include <filesystem>
#include <iostream>
#include <limits>

using namespace Nereo::Io;

namespace {

const char* describe(ResultsLoadResult::Outcome outcome)
{
    switch (outcome) {
    case ResultsLoadResult::Loaded:
        return "loaded";
    case ResultsLoadResult::CutShort:
        return "cut short";
    case ResultsLoadResult::CannotOpen:
        return "can't be opened";
    case ResultsLoadResult::ReadFailed:
        return "the disk gives no more";
    case ResultsLoadResult::NoResultsFile:
        return "no results file";
    case ResultsLoadResult::ContradictsItself:
        return "contradicts itself";
    case ResultsLoadResult::OverLimit:
        return "over the limit";
    case ResultsLoadResult::Cancelled:
        return "cancelled";
    }
    return "";
}

void print(const ResultsLoadResult& result)
{
    std::cout << describe(result.outcome) << ": " << result.wholeRecords << " of " << result.recordsAnnounced
              << " records";
    if (result.problem.kind != ResultsProblem::None)
        std::cout << ", at byte " << result.problem.offset;
    std::cout << '\n';
}

bool printFacts(const std::string& path)
{
    ResultsFileHeader header;
    if (!header.readFrom(path)) {
        std::cerr << "inspect_results: can't open " << path << '\n';
        return false;
    }
    std::cout << header.title() << '\n'
              << header.nodeCount() << " nodes, iteration " << header.currentIteration() << ", "
              << header.bytesThere() << " of " << header.bytesAnnounced() << " bytes\n";
    for (const ResultsFileHeader::Field& field : header.fields())
        std::cout << "  " << field.name << (field.code == kNone ? " (unknown)" : "") << '\n';
    return true;
}

bool printProgress(qint64 bytesDone, qint64 bytesInAll)
{
    std::cout << "\rread " << bytesDone << " of " << bytesInAll << " bytes" << std::flush;
    return true; // false would cancel
}

ResultsLoadResult loadTwoFields(const std::string& path, ResultsFile& results)
{
    ResultsLoadOptions options;
    options.codes = {kP, kU};
    options.memoryLimit = 100'000'000;
    options.missingValue = std::numeric_limits<double>::quiet_NaN();
    options.progress = printProgress;
    const ResultsLoadResult result = results.loadFrom(path, options);
    std::cout << '\n';
    print(result);
    return result;
}

void printStatistics(const std::string& path)
{
    ResultsScan scan;
    if (!scan.scan(path).isLoaded())
        return;
    for (std::size_t i = 0; i < scan.statistics().size(); ++i) {
        const ResultsStatistics& statistics = scan.statistics()[i];
        std::cout << "  " << scan.header().fields()[i].name << " from " << statistics.minimum << " at node "
                  << statistics.minimumNode << " to " << statistics.maximum << " at node "
                  << statistics.maximumNode << '\n';
    }
    std::cout << scan.damage().missingNodes << " nodes without a record\n";
}

/// The first half of the file.
std::string writeHalf(const std::string& path)
{
    const std::string half = (std::filesystem::temp_directory_path() / "inspect_results-half.res").string();
    std::filesystem::copy_file(path, half, std::filesystem::copy_options::overwrite_existing);
    std::filesystem::resize_file(half, std::filesystem::file_size(path) / 2);
    return half;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: inspect_results FILE\n";
        return 2;
    }
    const std::string path = argv[1];
    if (!printFacts(path))
        return 1;
    ResultsFile results;
    if (!loadTwoFields(path, results).isLoaded())
        return 1;
    printStatistics(path);

    const std::string half = writeHalf(path);
    loadTwoFields(half, results);
    std::filesystem::remove(half);
    return 0;
}
