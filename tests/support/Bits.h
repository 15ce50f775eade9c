#pragma once

#include <QtGlobal>

#include <algorithm>
#include <cstring>

/// Numbers by their bits: a value that is no number equals itself, and zeros of different signs differ.

inline quint64 bitsOf(double number)
{
    quint64 bits;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

inline double fromBits(quint64 bits)
{
    double number;
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

template <class Numbers>
bool haveSameBits(const Numbers& left, const Numbers& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](double a, double b) { return bitsOf(a) == bitsOf(b); });
}
