#pragma once

#include <algorithm>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace Nereo::Io {

/// Two doubles that the processor works on at once where it can.
class DoublePair {
public:
#ifdef __SSE2__
    explicit DoublePair(double both) : pair_(_mm_set1_pd(both)) {}
    explicit DoublePair(const double* values) : pair_(_mm_loadu_pd(values)) {}

    void store(double* values) const
    {
        _mm_storeu_pd(values, pair_);
    }
    double first() const
    {
        return _mm_cvtsd_f64(pair_);
    }
    double second() const
    {
        return _mm_cvtsd_f64(_mm_unpackhi_pd(pair_, pair_));
    }

    friend DoublePair operator+(DoublePair a, DoublePair b)
    {
        return _mm_add_pd(a.pair_, b.pair_);
    }
    friend DoublePair operator-(DoublePair a, DoublePair b)
    {
        return _mm_sub_pd(a.pair_, b.pair_);
    }
    friend DoublePair operator*(DoublePair a, DoublePair b)
    {
        return _mm_mul_pd(a.pair_, b.pair_);
    }
    friend DoublePair smaller(DoublePair a, DoublePair b)
    {
        return _mm_min_pd(a.pair_, b.pair_);
    }
    friend DoublePair larger(DoublePair a, DoublePair b)
    {
        return _mm_max_pd(a.pair_, b.pair_);
    }

    /// At each place a number that isn't 0 if one of the two there isn't.
    friend DoublePair eitherNotZero(DoublePair a, DoublePair b)
    {
        return _mm_or_pd(a.pair_, b.pair_);
    }

private:
    DoublePair(__m128d pair) : pair_(pair) {}

    __m128d pair_;
#else
    explicit DoublePair(double both) : first_(both), second_(both) {}
    explicit DoublePair(const double* values) : first_(values[0]), second_(values[1]) {}

    void store(double* values) const
    {
        values[0] = first_;
        values[1] = second_;
    }
    double first() const
    {
        return first_;
    }
    double second() const
    {
        return second_;
    }

    friend DoublePair operator+(DoublePair a, DoublePair b)
    {
        return {a.first_ + b.first_, a.second_ + b.second_};
    }
    friend DoublePair operator-(DoublePair a, DoublePair b)
    {
        return {a.first_ - b.first_, a.second_ - b.second_};
    }
    friend DoublePair operator*(DoublePair a, DoublePair b)
    {
        return {a.first_ * b.first_, a.second_ * b.second_};
    }
    friend DoublePair smaller(DoublePair a, DoublePair b)
    {
        return {std::min(a.first_, b.first_), std::min(a.second_, b.second_)};
    }
    friend DoublePair larger(DoublePair a, DoublePair b)
    {
        return {std::max(a.first_, b.first_), std::max(a.second_, b.second_)};
    }

    friend DoublePair eitherNotZero(DoublePair a, DoublePair b)
    {
        return {a.first_ != 0 ? a.first_ : b.first_, a.second_ != 0 ? a.second_ : b.second_};
    }

private:
    DoublePair(double first, double second) : first_(first), second_(second) {}

    double first_;
    double second_;
#endif
};

inline double sum(DoublePair pair)
{
    return pair.first() + pair.second();
}

} // namespace Nereo::Io
