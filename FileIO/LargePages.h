#pragma once

#include <QVector>

namespace Nereo::Io {

/// An empty vector with room for so many values, on large pages where the platform has them: the first touch
/// of fresh pages is the largest cost of filling a big vector.
QVector<double> reserveInLargePages(int valueCount);

} // namespace Nereo::Io
