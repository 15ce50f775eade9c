#pragma once

#include <NereoFileIO/Export.h>

#include <QtGlobal>

#include <array>
#include <cstddef>

namespace Nereo::Io {

/// A sum of doubles without any rounding, so that the order in which they are added doesn't matter.
///
/// It is a number of fixed point with room for the smallest double, for the largest one and for 2^40 of it.
class NEREOFILEIO_EXPORT ExactSum {
public:
    void add(double value); ///< a finite one

    /// The sum divided by a number, as scaled by a power of two: each step is rounded to the nearest double.
    double dividedBy(qint64 divisor, int scale = 0) const;

private:
    static constexpr int limbBits = 32;
    static constexpr std::size_t limbCount = 68;

    using Limbs = std::array<qint64, limbCount>;

    static void carry(Limbs& limbs);

    Limbs limbs_ {}; // the lowest bit of the first is that of the smallest double; more than 32 bits wait in
                     // each
    int waiting_ = 0;
};

} // namespace Nereo::Io
