#include "ExactSum.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace Nereo::Io {

namespace {

constexpr int mantissaBits = std::numeric_limits<double>::digits; // 53
constexpr int lowestExponent =
    std::numeric_limits<double>::min_exponent - mantissaBits; // of the smallest double
constexpr quint64 lowHalf = 0xFFFF'FFFF;

constexpr int mostWaiting = 1 << 28; // additions of at most 33 bits, which a limb has room for

} // namespace

void ExactSum::add(double value)
{
    quint64 bits;
    std::memcpy(&bits, &value, sizeof bits);
    constexpr quint64 hiddenBit = quint64(1) << (mantissaBits - 1);
    const auto biasedExponent = int(bits >> (mantissaBits - 1) & 0x7FF);
    const quint64 mantissa = (bits & (hiddenBit - 1)) | (biasedExponent != 0 ? hiddenBit : 0);
    const int place = std::max(biasedExponent, 1) - 1; // of the lowest bit of the mantissa

    const int shift = place % limbBits;
    const quint64 low = (mantissa & lowHalf) << shift;
    const quint64 high = (mantissa >> limbBits) << shift;
    const qint64 parts[] = {qint64(low & lowHalf), qint64((low >> limbBits) + (high & lowHalf)),
                            qint64(high >> limbBits)};
    const qint64 sign = bits >> 63 != 0 ? -1 : 1;
    qint64* limb = &limbs_[std::size_t(place / limbBits)];
    for (const qint64 part : parts)
        *limb++ += sign * part;

    if (++waiting_ == mostWaiting) {
        carry(limbs_);
        waiting_ = 0;
    }
}

double ExactSum::dividedBy(qint64 divisor, int scale) const
{
    Limbs limbs = limbs_;
    carry(limbs);
    const bool isNegative = limbs.back() < 0;
    if (isNegative) {
        for (qint64& limb : limbs)
            limb = -limb;
        carry(limbs);
    }

    const auto top = std::find_if(limbs.rbegin(), limbs.rend(), [](qint64 limb) { return limb != 0; });
    if (top == limbs.rend())
        return 0.0;
    // The 64 highest bits, the lowest of which also says whether there are others below, round as all would.
    const auto index = int(limbs.rend() - top) - 1;
    const auto limbAt = [&limbs](int i) { return i < 0 ? 0 : quint64(limbs[std::size_t(i)]); };
    quint64 head = limbAt(index);
    int headBits = 1;
    for (quint64 rest = head >> 1; rest != 0; rest >>= 1)
        ++headBits;
    const quint64 below = limbAt(index - 1) << limbBits | limbAt(index - 2);
    head = head << (64 - headBits) | below >> headBits;
    const bool areOthersBelow = (below << (64 - headBits)) != 0
        || std::any_of(limbs.begin(), limbs.begin() + std::max(index - 2, 0),
                       [](qint64 limb) { return limb != 0; });
    const auto rounded = double(head | (areOthersBelow ? 1 : 0));
    const int exponent = (index - 2) * limbBits + headBits + lowestExponent;
    const double quotient = rounded / double(divisor);
    return std::ldexp(isNegative ? -quotient : quotient, exponent + scale);
}

/// Leaves in each limb but the last one what it stands for: 0 to 2^32 - 1.
void ExactSum::carry(Limbs& limbs)
{
    for (std::size_t i = 0; i + 1 < limbCount; ++i) {
        const qint64 low = limbs[i] & qint64(lowHalf);
        limbs[i + 1] += (limbs[i] - low) / (qint64(1) << limbBits);
        limbs[i] = low;
    }
}

} // namespace Nereo::Io
