#pragma once

#include <NereoInspection/Comparison.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace Nereo::Inspection {

/// How far two finite numbers may be apart without being different: the largest of the tolerances.
class Tolerance {
public:
    /// For values in no field, which have no peak.
    explicit Tolerance(const ComparisonOptions& options) : Tolerance(options, 0.0) {}

    /// For those of a field whose peak is known.
    Tolerance(const ComparisonOptions& options, double peak)
        : absolute_(std::max(atLeast0(options.absolute), atLeast0(options.peak) * peak)),
          relative_(atLeast0(options.relative))
    {
    }

    bool isNone() const { return absolute_ == 0 && relative_ == 0; }

    /// Whether finite numbers differ that are so far apart.
    bool isExceededBy(double distance, double a, double b) const
    {
        return distance > std::max(absolute_, relative_ * std::max(std::fabs(a), std::fabs(b)));
    }

private:
    static double atLeast0(const std::optional<double>& tolerance)
    {
        return tolerance && *tolerance > 0 ? *tolerance : 0.0; // nor is it a NaN then
    }

    double absolute_;
    double relative_;
};

/// How far two values are apart: infinitely where only one of them is a number, or finite.
inline double distanceOf(double a, double b)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (a == b || (std::isnan(a) && std::isnan(b)))
        return 0.0;
    return std::isfinite(a) && std::isfinite(b) ? std::fabs(a - b) : infinity;
}

inline bool areDifferent(double a, double b, const Tolerance& tolerance)
{
    const double distance = distanceOf(a, b);
    if (distance == 0 || !std::isfinite(a) || !std::isfinite(b))
        return distance != 0;
    return tolerance.isExceededBy(distance, a, b);
}

} // namespace Nereo::Inspection
