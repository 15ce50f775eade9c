#pragma once

#include <NereoFileIO/Export.h>

#include <QtGlobal>

namespace Nereo::Io {

/// A point of the curve by which a property varies: x is the independent variable, y the property's value.
class NEREOFILEIO_EXPORT Point {
public:
    constexpr Point() = default; ///< (0, 0)
    constexpr Point(double x, double y) : x_(x), y_(y) {}

    constexpr double x() const { return x_; }
    constexpr void setX(double x) { x_ = x; }

    constexpr double y() const { return y_; }
    constexpr void setY(double y) { y_ = y; }

    /// Exact, without a tolerance; a NaN coordinate equals nothing.
    friend constexpr bool operator==(const Point& left, const Point& right)
    {
        return left.x_ == right.x_ && left.y_ == right.y_;
    }
    friend constexpr bool operator!=(const Point& left, const Point& right) { return !(left == right); }

private:
    double x_ = 0.0;
    double y_ = 0.0;
};

/// For QHash and QSet.
NEREOFILEIO_EXPORT uint qHash(const Point& point);

} // namespace Nereo::Io
