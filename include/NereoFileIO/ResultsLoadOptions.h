#pragma once

#include <QtGlobal>

#include <functional>
#include <limits>
#include <vector>

namespace Nereo::Io {

/// Is told how many bytes of how many are done. What it gives says whether to go on: false cancels. What it
/// throws comes out of the operation, which then has changed nothing.
///
/// It is called at least every 64 MiB and once at the end, and otherwise at most 100 times a second. Where a
/// file has no size, as a pipe, the second number is what its counts announce.
using ResultsProgress = std::function<bool(qint64 bytesDone, qint64 bytesInAll)>;

/// What of a results file is loaded, and at what cost.
struct ResultsLoadOptions {
    static constexpr int lastOfAllNodes = std::numeric_limits<int>::max();
    static constexpr qint64 unlimited = std::numeric_limits<qint64>::max();

    /// The fields, by FieldVariable or NodeFlag. Those that the file doesn't hold are left out; none of them
    /// here means all that are known.
    std::vector<int> codes;

    /// The nodes from the first to the last, both included, as far as the file has them. The object then
    /// holds as many nodes as these: the entry 0 of a field belongs to firstNode, and so does its node
    /// number 1.
    int firstNode = 1;
    int lastNode = lastOfAllNodes;

    /// The most bytes that the load may allocate in all, at any time: what takes more isn't begun. A load
    /// takes 8 bytes for each value, 256 KiB and at least one record; the constant tables that the library
    /// builds once for the process don't count.
    qint64 memoryLimit = unlimited;

    /// What stands for a value that the file lacks, because it is cut short or has no record of the node: as
    /// a rule 0 or a NaN.
    double missingValue = 0.0;

    ResultsProgress progress; ///< may be empty
};

} // namespace Nereo::Io
