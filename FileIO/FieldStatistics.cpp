#include "FieldStatistics.h"

#include "DoublePair.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Nereo::Io {

namespace {

// Values are taken by fours, in two pairs that the processor works on independently.
constexpr int pairSize = 2;
constexpr int step = 2 * pairSize;

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
        squares_.add(values, run.count, largest);
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

ResultsStatistics FieldStatistics::result() const
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();

    ResultsStatistics statistics;
    statistics.count = count_;
    statistics.minimum = count_ > 0 ? minimum_.value : none;
    statistics.maximum = count_ > 0 ? maximum_.value : none;
    // Two roundings can lead out of the range, as of 199 values that are the same.
    statistics.mean = count_ > 0 ? std::clamp(sum_.dividedBy(count_), minimum_.value, maximum_.value) : none;
    statistics.rootMeanSquare = count_ > 0 ? squares_.rootMean(count_) : none;
    statistics.minimumNode = minimum_.node;
    statistics.maximumNode = maximum_.node;
    statistics.notFinite = notFinite_;
    statistics.firstNotFiniteNode = firstNotFiniteNode_;
    statistics.firstNotFiniteOffset = firstNotFiniteOffset_;
    return statistics;
}

} // namespace Nereo::Io
