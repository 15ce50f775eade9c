#pragma once

#include "ExactSum.h"

namespace Nereo::Io {

/// So many values may be added at once.
inline constexpr int longestRunToAdd = 240;

/// Adds values to a sum with few additions. None is larger than the given magnitude, which isn't 0.
void addTogether(const double* values, int count, double largest, ExactSum& total);

/// The sum of the squares of values, each of them rounded once, of any magnitude and in any order.
class NEREOFILEIO_EXPORT SumOfSquares {
public:
    /// At most longestRunToAdd finite values, of which the largest has this magnitude.
    void add(const double* values, int count, double largest);

    /// Of so many values, of which those that weren't added are 0.
    double rootMean(qint64 count) const;

private:
    void addOneByOne(const double* values, int count);

    double largest_ = 0.0;
    ExactSum squares_;
    ExactSum squaresOfHuge_; // scaled, since they would be infinite
    ExactSum squaresOfTiny_; // scaled, since they would be 0; used where no value is larger
};

} // namespace Nereo::Io
