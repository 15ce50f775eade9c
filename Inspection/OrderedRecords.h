#pragma once

#include "ResultsPair.h"

#include <FileIO/NodeMarks.h>

#include <vector>

namespace Nereo::Inspection {

/// Compares two results files record by record, side by side, in memory that doesn't grow with them but for a
/// bit a node. Their nodes have to come in the same order, once each.
class OrderedRecords {
public:
    explicit OrderedRecords(ResultsPair& pair);

    /// False if the nodes don't: what has been compared then means nothing.
    bool compare();

private:
    bool findPeaks();
    bool compareBoth(RecordStream& a, RecordStream& b, int first, int last);
    bool compareOne(const ResultsSide& side, RecordStream& records, int first, int last);
    bool isOnceEach() const;

    ResultsPair& pair_;
    int largestNode_;             ///< in any of the files
    std::vector<double> columns_; ///< of a run of A
    std::vector<int> nodes_;      ///< likewise
    std::vector<double> zeros_;
    Io::NodeMarks marks_;
};

} // namespace Nereo::Inspection
