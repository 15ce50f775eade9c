#include "FieldComparison.h"

#include <FileIO/DoublePair.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Nereo::Inspection {

namespace {

using Io::DoublePair;

constexpr int pairSize = 2; // of values that the processor works on at once
constexpr double infinity = std::numeric_limits<double>::infinity();

/// The least and the largest of values that are finite.
struct Extremes {
    double minimum;
    double maximum;

    double magnitude() const { return std::max(-minimum, maximum); }
};

/// Whether two runs are alike in numbers that are all finite; otherwise the extremes of the first one are
/// those of its finite values at best.
bool areAlike(const double* a, const double* b, int count, Extremes& extremes)
{
    DoublePair low(a[0]);
    DoublePair high(a[0]);
    DoublePair left(0.0); // 0 where there is no difference, which there is from what isn't finite
    int i = 0;
    for (; i + pairSize <= count; i += pairSize) {
        const DoublePair pair(a + i);
        low = smaller(low, pair);
        high = larger(high, pair);
        left = eitherNotZero(left, pair - DoublePair(b + i));
    }
    extremes = {std::min(low.first(), low.second()), std::max(high.first(), high.second())};
    bool areAlike = left.first() == 0 && left.second() == 0;
    for (; i < count; ++i) {
        extremes.minimum = std::min(extremes.minimum, a[i]);
        extremes.maximum = std::max(extremes.maximum, a[i]);
        areAlike = areAlike && a[i] - b[i] == 0;
    }
    return areAlike;
}

/// How far the values of two runs are apart. Infinite, or no number, where one that isn't finite is among
/// them; otherwise the largest distance.
double distancesOf(const double* a, const double* b, int count, double* distances)
{
    const DoublePair zero(0.0);
    DoublePair high(0.0);
    DoublePair differences(0.0); // stay 0 as long as all is finite, and are no numbers from then on
    int i = 0;
    for (; i + pairSize <= count; i += pairSize) {
        const DoublePair difference = DoublePair(a + i) - DoublePair(b + i);
        const DoublePair distance = larger(difference, zero - difference);
        high = larger(high, distance);
        differences = differences + (distance - distance);
        distance.store(distances + i);
    }
    double largest = std::max(high.first(), high.second());
    double difference = sum(differences);
    for (; i < count; ++i) {
        distances[i] = std::fabs(a[i] - b[i]);
        largest = std::max(largest, distances[i]);
        difference += distances[i] - distances[i];
    }
    if (difference != 0)
        largest = infinity;
    return largest;
}

} // namespace

FieldComparison::FieldComparison(const ComparisonOptions& options) : options_(&options), tolerance_(options)
{
}

void FieldComparison::addToPeak(const double* a, qint64 count)
{
    for (qint64 i = 0; i < count; ++i) {
        const double magnitude = std::fabs(a[i]);
        if (magnitude > difference_.peak && magnitude < infinity)
            difference_.peak = magnitude;
    }
}

void FieldComparison::usePeak()
{
    tolerance_ = Tolerance(*options_, difference_.peak);
}

void FieldComparison::add(const double* a, const double* b, const int* nodes, int count)
{
    Extremes extremes;
    if (areAlike(a, b, count, extremes)) {
        difference_.peak = std::max(difference_.peak, extremes.magnitude());
        return;
    }
    double distances[longestRun];
    const double largest = distancesOf(a, b, count, distances);
    if (largest == infinity)
        return addAny(a, b, nodes, count);
    difference_.peak = std::max(difference_.peak, extremes.magnitude());
    if (largest > 0)
        squares_.add(distances, count, largest);
    addFinite(a, b, nodes, count, distances);
}

/// Counts those of finite values that differ. There are few branches in this, for the sake of speed.
void FieldComparison::addFinite(const double* a, const double* b, const int* nodes, int count,
                                double* distances)
{
    int differing = 0;
    double largest = 0;
    for (int i = 0; i < count; ++i) {
        const bool isDifferent = tolerance_.isExceededBy(distances[i], a[i], b[i]);
        differing += isDifferent;
        distances[i] = isDifferent ? distances[i] : 0.0;
        largest = std::max(largest, distances[i]);
    }
    difference_.count += differing;
    if (differing == 0 || largest < difference_.largest)
        return;
    for (int i = 0; i < count; ++i) {
        if (distances[i] == largest)
            take(a[i], b[i], largest, nodes[i]);
    }
}

void FieldComparison::addAny(const double* a, const double* b, const int* nodes, int count)
{
    addToPeak(a, count);
    for (int i = 0; i < count; ++i) {
        const double distance = distanceOf(a[i], b[i]);
        if (distance == infinity)
            isApart_ = true;
        else if (distance > 0)
            squares_.add(&distance, 1, distance);
        if (areDifferent(a[i], b[i], tolerance_)) {
            ++difference_.count;
            take(a[i], b[i], distance, nodes[i]);
        }
    }
}

/// Of the largest differences that of the smallest node counts.
void FieldComparison::take(double a, double b, double distance, int node)
{
    const bool isFirst = difference_.node == 0 || distance > difference_.largest;
    if (!isFirst && (distance < difference_.largest || node > difference_.node))
        return;
    difference_.largest = distance;
    difference_.node = node;
    difference_.a = a;
    difference_.b = b;
}

FieldDifference FieldComparison::result(qint64 nodeCount) const
{
    FieldDifference difference = difference_;
    difference.peakShare = difference.largest / difference.peak;
    difference.rms = isApart_ ? infinity : squares_.rootMean(nodeCount);
    return difference;
}

} // namespace Nereo::Inspection
