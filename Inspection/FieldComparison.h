#pragma once

#include "Tolerance.h"

#include <FileIO/SumOfSquares.h>
#include <NereoInspection/Comparison.h>
#include <NereoInspection/Export.h>

namespace Nereo::Inspection {

/// Compares the values that two files have for a field, a run of nodes at a time, in memory that doesn't
/// grow.
///
/// The order of the nodes doesn't matter to what comes out: the sum of squares is exact.
class NEREOINSPECTION_EXPORT FieldComparison {
public:
    static constexpr int longestRun = Io::longestRunToAdd;

    explicit FieldComparison(const ComparisonOptions& options);

    /// Takes values of A only, of any number. They count for the peak.
    void addToPeak(const double* a, qint64 count);

    /// What is added from now on is compared with the peak of all that has been added.
    void usePeak();

    /// Takes the values of both files at at most longestRun nodes.
    void add(const double* a, const double* b, const int* nodes, int count);

    bool isDifferent() const { return difference_.count > 0; }

    /// Of so many nodes that were compared, of which those that weren't added are 0 in both files.
    FieldDifference result(qint64 nodeCount) const;

private:
    void addFinite(const double* a, const double* b, const int* nodes, int count, double* distances);
    void addAny(const double* a, const double* b, const int* nodes, int count);
    void take(double a, double b, double distance, int node);

    const ComparisonOptions* options_;
    Tolerance tolerance_;
    FieldDifference difference_;
    Io::SumOfSquares squares_;
    bool isApart_ = false; ///< infinitely
};

} // namespace Nereo::Inspection
