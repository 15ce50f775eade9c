#pragma once

#include "ExactSum.h"
#include "SumOfSquares.h"

#include <NereoFileIO/ResultsStatistics.h>

namespace Nereo::Io {

/// Records that follow each other in a file.
struct RecordRun {
    const int* nodes;
    int count;
    int smallestNode;  ///< or a smaller number
    qint64 offset;     ///< of the first one, in bytes from the start of the file
    qint64 recordSize; ///< in bytes
};

/// Gathers what the values of a field are like, a run of records at a time, in memory that doesn't grow.
///
/// The sums are exact, so that they don't depend on the order of the values or on how they come in runs.
class NEREOFILEIO_EXPORT FieldStatistics {
public:
    static constexpr int longestRun = longestRunToAdd;

    /// Takes a value from each record of a run, at most longestRun of them, and changes the values. The
    /// offset is that of the values in their records.
    void add(double* values, const RecordRun& run, qint64 valueOffset);

    ResultsStatistics result() const;

private:
    struct Extreme {
        double value = 0.0;
        int node = 0;
    };

    int removeNotFinite(double* values, int* nodes, const RecordRun& run, qint64 valueOffset);
    void addFinite(const double* values, const RecordRun& run, double minimum, double maximum);
    void take(double value, bool isBeyond, const double* values, const RecordRun& run,
              Extreme& extreme) const;

    qint64 count_ = 0;
    Extreme minimum_;
    Extreme maximum_;
    qint64 notFinite_ = 0;
    int firstNotFiniteNode_ = 0;
    qint64 firstNotFiniteOffset_ = -1;
    ExactSum sum_;
    SumOfSquares squares_;
};

} // namespace Nereo::Io
