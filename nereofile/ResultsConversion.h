#pragma once

#include <NereoFileIO/ResultsLoadOptions.h>

#include <string>
#include <vector>

namespace Nereo::Tool {

class Arguments;
class InputPath;
class Output;

/// Writes the values of results as a table, a row for each node: as CSV with a line of names, which "-" means
/// too, or as an array of NumPy.
class ResultsConversion {
public:
    /// Throws Refusal where the target or the options make no sense.
    ResultsConversion(const Arguments& arguments, const std::string& target);

    /// Throws Refusal where the values can't be had, or not be written.
    void run(const InputPath& input, Output& output) const;

private:
    void takeNodes(const std::string& range);

    std::string target_;
    bool isCsv_ = true;
    std::vector<std::string> fields_; ///< their names; none of them means all
    int firstNode_ = 1;
    int lastNode_ = Io::ResultsLoadOptions::lastOfAllNodes;
};

} // namespace Nereo::Tool
