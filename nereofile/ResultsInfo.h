#pragma once

#include <NereoFileIO/ResultsFileHeader.h>
#include <NereoFileIO/ResultsStatistics.h>

#include <string>
#include <vector>

namespace Nereo::Tool {

class InputPath;
class Json;
class Output;

/// A results file, with what its values are like where that was asked for.
struct Results {
    Io::ResultsFileHeader header;
    std::vector<Io::ResultsStatistics> statistics;
    bool hasStatistics = false;
};

/// Reads what the file says of itself, or goes through its values; says why where that isn't possible.
Results readResults(const InputPath& input, bool wantsStatistics);

void writeText(Output& output, const std::string& name, const Results& results);

/// The members of an object.
void writeJson(Json& json, const Results& results);

} // namespace Nereo::Tool
