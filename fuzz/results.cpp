// Any bytes as a results file. A negative count, a repeated field and a node that isn't there stop the
// process: they are put right, which is a hundred times faster than a process for each load, and gives what
// has to be loaded on the way.

#include "Formats.h"
#include "Requirement.h"

#include <FileIO/ResultsFileReader.h>
#include <NereoFileIO/ResultsFile.h>
#include <tests/support/Bits.h>
#include <tests/support/PlainResults.h>

using namespace Nereo::Io;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const PlainResults input(inputBytes(data, size), PlainResults::PutRight);
    const auto& columns = input.columns();
    const qint64 announcedBytes = qint64(columns.size()) * input.recordsAnnounced() * qint64(sizeof(double));
    ResultsFile results;
    require(loadBytes<ResultsFileReader>(input.bytes(), results, announcedBytes),
            "a file that could be opened is loaded");

    require(results.fieldDataCodes().size() == int(columns.size()), "the fields are those in the file");
    for (const auto& [code, column] : columns) {
        require(haveSameBits(results.fieldData(code), input.values(code, 1, input.nodeCount(), 0.0)),
                "the values are those in the file");
    }
    return 0;
}
