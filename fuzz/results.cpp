// Any bytes as a results file. A negative count, a repeated field and a node that isn't there stop the
// process: they are put right, which is a hundred times faster than a process for each load, and gives what
// has to be loaded on the way.

#include "Formats.h"
#include "Requirement.h"
#include "ResultsInput.h"

#include <FileIO/ResultsFileReader.h>
#include <NereoFileIO/ResultsFile.h>
#include <tests/support/Bits.h>

using namespace Nereo::Io;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ResultsInput input(inputBytes(data, size));
    ResultsFile results;
    require(loadBytes<ResultsFileReader>(input.bytes(), results, input.announcedBytes()),
            "a file that could be opened is loaded");

    require(results.fieldDataCodes() == input.fields().keys(), "the fields are those in the file");
    for (auto field = input.fields().begin(); field != input.fields().end(); ++field) {
        require(haveSameBits(results.fieldData(field.key()), field.value()),
                "the values are those in the file");
    }
    return 0;
}
