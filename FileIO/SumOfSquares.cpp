#include "SumOfSquares.h"

#include "DoublePair.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>

namespace Nereo::Io {

namespace {

// Values are taken by fours, in two pairs that the processor works on independently.
constexpr int pairSize = 2;
constexpr int step = 2 * pairSize;

// Squares are scaled outside these bounds. Between them no square overflows, and the largest doesn't lose
// bits.
constexpr double huge = 0x1p500;
constexpr double tiny = 0x1p-400;
constexpr int scaleOfHuge = -600;
constexpr int scaleOfTiny = 600;

/// The square as 4 to the power of the scale times what it is.
double scaledSquare(double value, int scale)
{
    const double scaled = std::ldexp(value, scale);
    return scaled * scaled;
}

void addEach(const double* values, int count, ExactSum& sum)
{
    for (int i = 0; i < count; ++i)
        sum.add(values[i]);
}

#if FLT_EVAL_METHOD == 0

/// Splits values in two: high bits that are so few, and all of the same number, that their sum is exact, and
/// the rest. The power must be larger than the count times each value.
class Cut {
public:
    explicit Cut(double power) : power_(power) {}

    DoublePair rest(DoublePair values)
    {
        const DoublePair high = (values + power_) - power_;
        sum_ = sum_ + high;
        return values - high;
    }

    DoublePair sumOfHighBits() const { return sum_; }

private:
    DoublePair power_;
    DoublePair sum_ {0.0};
};

#endif

} // namespace

#if FLT_EVAL_METHOD == 0

/// Adds values with few additions to the sum. They are cut in two by their bits, and it is seldom that any is
/// left.
void addTogether(const double* values, int count, double largest, ExactSum& total)
{
    constexpr int bitsOfCount = 8; // of the longest run
    static_assert(longestRunToAdd < 1 << bitsOfCount);
    constexpr int bitsOfCut = std::numeric_limits<double>::digits - bitsOfCount - 1;
    constexpr double smallestPower = 0x1p-800; // below, the bits of a rest might not exist
    constexpr double largestPower = 0x1p1000;

    const double power = std::ldexp(1.0, std::ilogb(largest) + 1 + bitsOfCount);
    if (power < smallestPower || power > largestPower)
        return addEach(values, count, total);

    const double secondPower = std::ldexp(power, -bitsOfCut);
    Cut even(power);
    Cut odd(power);
    Cut secondEven(secondPower);
    Cut secondOdd(secondPower);
    DoublePair left(0.0); // 0 where nothing is left
    const int cut = count - count % step;
    for (int i = 0; i < cut; i += step) {
        const DoublePair leftEven = secondEven.rest(even.rest(DoublePair(values + i)));
        const DoublePair leftOdd = secondOdd.rest(odd.rest(DoublePair(values + i + pairSize)));
        left = eitherNotZero(left, eitherNotZero(leftEven, leftOdd));
    }
    if (left.first() != 0 || left.second() != 0)
        return addEach(values, count, total);
    total.add(sum(even.sumOfHighBits() + odd.sumOfHighBits()));
    total.add(sum(secondEven.sumOfHighBits() + secondOdd.sumOfHighBits()));
    addEach(values + cut, count - cut, total);
}

#else

// Intermediate results have more bits than a double, so that there is no cutting.
void addTogether(const double* values, int count, double, ExactSum& sum)
{
    addEach(values, count, sum);
}

#endif

void SumOfSquares::add(const double* values, int count, double largest)
{
    largest_ = std::max(largest_, largest);
    double squares[longestRunToAdd];
    if (largest >= huge)
        return addOneByOne(values, count);
    int i = 0;
    for (; i + pairSize <= count; i += pairSize)
        (DoublePair(values + i) * DoublePair(values + i)).store(squares + i);
    for (; i < count; ++i)
        squares[i] = values[i] * values[i];
    addTogether(squares, count, largest * largest, squares_);
    if (largest < tiny) {
        for (i = 0; i < count; ++i)
            squaresOfTiny_.add(scaledSquare(values[i], scaleOfTiny));
    }
}

/// The huge ones among the values apart.
void SumOfSquares::addOneByOne(const double* values, int count)
{
    for (int i = 0; i < count; ++i) {
        if (std::fabs(values[i]) >= huge)
            squaresOfHuge_.add(scaledSquare(values[i], scaleOfHuge));
        else
            squares_.add(scaledSquare(values[i], 0));
    }
}

double SumOfSquares::rootMean(qint64 count) const
{
    if (largest_ < tiny)
        return std::ldexp(std::sqrt(squaresOfTiny_.dividedBy(count)), -scaleOfTiny);
    if (largest_ < huge)
        return std::sqrt(squares_.dividedBy(count));
    const double meanSquare = squaresOfHuge_.dividedBy(count) + squares_.dividedBy(count, 2 * scaleOfHuge);
    return std::ldexp(std::sqrt(meanSquare), -scaleOfHuge);
}

} // namespace Nereo::Io
