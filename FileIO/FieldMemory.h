#pragma once

#include <QVector>

#include <cstddef>
#include <limits>

namespace Nereo::Io {

/// The values that a vector can hold: more bytes than an int counts can't be asked for, its own data
/// included.
inline constexpr int mostValuesOfField =
    int((std::size_t(std::numeric_limits<int>::max()) - sizeof(QArrayData)) / sizeof(double));

/// An empty vector with room for so many values, on pages that cost as little as the platform allows when
/// they are first touched: of all that filling a big vector takes, that costs most.
QVector<double> reserveField(int valueCount);

} // namespace Nereo::Io
