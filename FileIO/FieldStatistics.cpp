#include "FieldStatistics.h"

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

struct Extremes {
    double minimum;
    double maximum;
    bool areFinite; ///< all values; otherwise the others mean nothing
};

/// The extremes of some of the values.
struct PairedExtremes {
    DoublePair low;
    DoublePair high;
    DoublePair differences {0.0}; // stay 0 as long as values are finite, and are no numbers from then on

    explicit PairedExtremes(double value) : low(value), high(value) {}

    void take(DoublePair pair)
    {
        low = smaller(low, pair);
        high = larger(high, pair);
        differences = differences + (pair - pair);
    }
};

Extremes extremesOf(const double* values, int count)
{
    PairedExtremes even(values[0]);
    PairedExtremes odd(values[0]);
    int i = 0;
    for (; i + step <= count; i += step) {
        even.take(DoublePair(values + i));
        odd.take(DoublePair(values + i + pairSize));
    }
    const DoublePair low = smaller(even.low, odd.low);
    const DoublePair high = larger(even.high, odd.high);
    Extremes extremes {std::min(low.first(), low.second()), std::max(high.first(), high.second()), false};
    double difference = sum(even.differences + odd.differences);
    for (; i < count; ++i) {
        extremes.minimum = std::min(extremes.minimum, values[i]);
        extremes.maximum = std::max(extremes.maximum, values[i]);
        difference += values[i] - values[i];
    }
    extremes.areFinite = difference == 0;
    return extremes;
}

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

/// Adds values with few additions to the sum. They are cut in two by their bits, and it is seldom that any is
/// left.
void addTogether(const double* values, int count, double largest, ExactSum& total)
{
    constexpr int bitsOfCount = 8; // of the longest run
    static_assert(FieldStatistics::longestRun < 1 << bitsOfCount);
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

} // namespace

void FieldStatistics::add(double* values, const RecordRun& run, qint64 valueOffset)
{
    const Extremes extremes = extremesOf(values, run.count);
    if (extremes.areFinite)
        return addFinite(values, run, extremes.minimum, extremes.maximum);
    RecordRun finite = run;
    int nodes[longestRun];
    finite.count = removeNotFinite(values, nodes, run, valueOffset);
    finite.nodes = nodes;
    if (finite.count == 0)
        return;
    const Extremes extremesOfFinite = extremesOf(values, finite.count);
    addFinite(values, finite, extremesOfFinite.minimum, extremesOfFinite.maximum);
}

/// Counts the values that are no finite numbers and closes the gaps. Gives the number of the others, and
/// their nodes.
int FieldStatistics::removeNotFinite(double* values, int* nodes, const RecordRun& run, qint64 valueOffset)
{
    int finite = 0;
    for (int i = 0; i < run.count; ++i) {
        if (std::isfinite(values[i])) {
            nodes[finite] = run.nodes[i];
            values[finite++] = values[i];
        } else if (notFinite_++ == 0) {
            firstNotFiniteNode_ = run.nodes[i];
            firstNotFiniteOffset_ = run.offset + i * run.recordSize + valueOffset;
        }
    }
    return finite;
}

void FieldStatistics::addFinite(const double* values, const RecordRun& run, double minimum, double maximum)
{
    take(minimum, minimum < minimum_.value, values, run, minimum_);
    take(maximum, maximum > maximum_.value, values, run, maximum_);
    count_ += run.count;

    const double largest = std::max(-minimum, maximum);
    if (largest > 0) {
        addTogether(values, run.count, largest, sum_);
        addSquares(values, run.count, largest);
    }
}

/// Of nodes with the same value the smallest one counts, and its zero where these have two signs.
void FieldStatistics::take(double value, bool isBeyond, const double* values, const RecordRun& run,
                           Extreme& extreme) const
{
    const bool isFirst = isBeyond || count_ == 0;
    if (!isFirst && (value != extreme.value || run.smallestNode >= extreme.node))
        return;
    if (isFirst)
        extreme.node = std::numeric_limits<int>::max();
    for (int i = 0; i < run.count; ++i) {
        if (values[i] == value && run.nodes[i] <= extreme.node)
            extreme = {values[i], run.nodes[i]};
    }
}

void FieldStatistics::addSquares(const double* values, int count, double largest)
{
    double squares[longestRun];
    if (largest >= huge)
        return addSquaresOneByOne(values, count);
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
void FieldStatistics::addSquaresOneByOne(const double* values, int count)
{
    for (int i = 0; i < count; ++i) {
        if (std::fabs(values[i]) >= huge)
            squaresOfHuge_.add(scaledSquare(values[i], scaleOfHuge));
        else
            squares_.add(scaledSquare(values[i], 0));
    }
}

double FieldStatistics::rootMeanSquare() const
{
    const double largest = std::max(-minimum_.value, maximum_.value);
    if (largest < tiny)
        return std::ldexp(std::sqrt(squaresOfTiny_.dividedBy(count_)), -scaleOfTiny);
    if (largest < huge)
        return std::sqrt(squares_.dividedBy(count_));
    const double meanSquare = squaresOfHuge_.dividedBy(count_) + squares_.dividedBy(count_, 2 * scaleOfHuge);
    return std::ldexp(std::sqrt(meanSquare), -scaleOfHuge);
}

ResultsStatistics FieldStatistics::result() const
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();

    ResultsStatistics statistics;
    statistics.count = count_;
    statistics.minimum = count_ > 0 ? minimum_.value : none;
    statistics.maximum = count_ > 0 ? maximum_.value : none;
    statistics.mean = count_ > 0 ? sum_.dividedBy(count_) : none;
    statistics.rootMeanSquare = count_ > 0 ? rootMeanSquare() : none;
    statistics.minimumNode = minimum_.node;
    statistics.maximumNode = maximum_.node;
    statistics.notFinite = notFinite_;
    statistics.firstNotFiniteNode = firstNotFiniteNode_;
    statistics.firstNotFiniteOffset = firstNotFiniteOffset_;
    return statistics;
}

} // namespace Nereo::Io
