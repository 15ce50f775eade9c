#pragma once

#include <QVector>

namespace Nereo::Io {

/// An empty vector with room for so many values, on pages that cost as little as the platform allows when
/// they are first touched: of all that filling a big vector takes, that costs most.
QVector<double> reserveField(int valueCount);

} // namespace Nereo::Io
