#pragma once

#include <QtGlobal>

namespace Nereo::Io {

/// What the values of one field of a results file are like. Values that are no finite numbers only count as
/// such. Nothing here depends on the order of the records, but for what says so.
struct ResultsStatistics {
    qint64 count = 0;     ///< of the finite values, which the numbers below are about
    double minimum = 0.0; ///< a NaN where there are none, as the next three
    double maximum = 0.0;
    double mean = 0.0;           ///< the exact sum, rounded once, divided by the count; within the extremes
    double rootMeanSquare = 0.0; ///< of squares that are rounded once each, and summed likewise
    int minimumNode = 0;         ///< the smallest of the nodes with this value; 0 where there is none
    int maximumNode = 0;         ///< likewise

    qint64 notFinite = 0;             ///< how many values are infinite or no numbers
    int firstNotFiniteNode = 0;       ///< that of the first one in the file; 0 where there is none
    qint64 firstNotFiniteOffset = -1; ///< where it stands, in bytes; -1 likewise
};

} // namespace Nereo::Io
