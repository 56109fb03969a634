// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_EXACT_LANES_H
#define ZRCORE_GEOMETRY_EXACT_LANES_H

#include <cstdint>
#if defined(__AVX2__) || defined(__AVX512F__)
#include <immintrin.h>
#elif defined(__ARM_NEON) && defined(__aarch64__)
#include <arm_neon.h>
#endif

/// One number, or several at once: the formulas are templates over `R`, which is `double` or one of the compiler's
/// vectors of doubles.
///
/// These headers are compiled several times, for processors with and without fused multiply-add and with wider
/// registers. Each build has a namespace of its own (ZR_EXACT_BUILD) and everything is inlined, so that no function for
/// one processor can be linked into the path of another.
#ifndef ZR_EXACT_BUILD
#define ZR_EXACT_BUILD common
#endif
#define ZR_INLINE [[gnu::always_inline]] inline

namespace exact::ZR_EXACT_BUILD {

#if defined(__FMA__) || defined(__ARM_FEATURE_FMA)
inline constexpr bool kHasFusedMultiplyAdd = true;
#else
inline constexpr bool kHasFusedMultiplyAdd = false;
#endif

// clang-format off
template <int Count> struct VectorOf {
  using Real [[gnu::vector_size(8 * Count)]] = double;
  using Word [[gnu::vector_size(8 * Count)]] = std::int64_t;
};
template <class R> struct Kind {
  static constexpr int kLanes = sizeof(R) / sizeof(double);
  using Word = typename VectorOf<kLanes>::Word;
  using Mask = Word;  // all bits of a lane set, or none
};
template <> struct Kind<double> {
  static constexpr int kLanes = 1;
  using Word = std::int64_t;
  using Mask = bool;
};
// clang-format on
template <class R>
using Word = typename Kind<R>::Word;
template <class R>
using Mask = typename Kind<R>::Mask;
template <class R>
inline constexpr bool kIsSingle = Kind<R>::kLanes == 1;

template <class R>
ZR_INLINE R all(double value) {
  if constexpr (kIsSingle<R>) {
    return value;
  } else {
    return value - R{};  // and not +, which would lose the sign of -0
  }
}

template <class R>
ZR_INLINE R spread(R value) {
  return value;
}
template <class R>
requires(!kIsSingle<R>) ZR_INLINE R spread(double value) { return all<R>(value); }

template <class R>
ZR_INLINE Word<R> wordOf(R value) {
  return __builtin_bit_cast(Word<R>, value);
}
template <class R>
ZR_INLINE R realOf(Word<R> word) {
  return __builtin_bit_cast(R, word);
}

inline constexpr std::int64_t kSignBit = INT64_MIN;

template <class R>
ZR_INLINE Mask<R> both(Mask<R> a, Mask<R> b) {
  if constexpr (kIsSingle<R>) {
    return a && b;
  } else {
    return a & b;
  }
}

template <class R>
ZR_INLINE R magnitude(R value) {
  return realOf<R>(wordOf(value) & ~kSignBit);
}
/// `value`, whose sign is turned where `sign` has its sign bit set.
template <class R>
ZR_INLINE R turned(R value, Word<R> sign) {
  return realOf<R>(wordOf(value) ^ (sign & kSignBit));
}
/// Whether |value| lies in [low, high), which are positive. NaN does not.
template <class R>
ZR_INLINE Mask<R> isWithin(R value, double low, double high) {
  const auto first = __builtin_bit_cast(std::int64_t, low);
  const auto reach = __builtin_bit_cast(std::int64_t, high) - first;
  const Word<R> past = (wordOf(value) & ~kSignBit) - first;
  if constexpr (kIsSingle<R>) {
    return static_cast<std::uint64_t>(past) < static_cast<std::uint64_t>(reach);
  } else {
    return (past >= 0) & (past < reach);
  }
}
// The compiler would make branches of some choices between single numbers, which the processor often guesses wrong:
// hence the intrinsics.

template <class R>
ZR_INLINE R smaller(R a, R b) {
#if defined(__AVX2__)
  if constexpr (kIsSingle<R>) return _mm_cvtsd_f64(_mm_min_sd(_mm_set_sd(a), _mm_set_sd(b)));
#endif
  return a < b ? a : b;
}
template <class R>
ZR_INLINE R larger(R a, R b) {
#if defined(__AVX2__)
  if constexpr (kIsSingle<R>) return _mm_cvtsd_f64(_mm_max_sd(_mm_set_sd(a), _mm_set_sd(b)));
#endif
  return a > b ? a : b;
}
/// `value` where `sign` is negative, else 0.
template <class R>
ZR_INLINE R whereNegative(R sign, R value) {
#if defined(__AVX2__)
  if constexpr (kIsSingle<R>) {
    return _mm_cvtsd_f64(_mm_blendv_pd(_mm_setzero_pd(), _mm_set_sd(value), _mm_set_sd(sign)));
  }
#endif
  return realOf<R>(wordOf(value) & (wordOf(sign) >> 63));
}

// Intrinsics of AVX-512 are used masked, though all lanes are wanted: g++ 12 warns of the others' uninitialised
// register.

template <class R>
ZR_INLINE R squareRoot(R value) {
  if constexpr (kIsSingle<R>) {
    return __builtin_sqrt(value);
#if defined(__AVX512F__)
  } else if constexpr (sizeof(R) == 64) {
    return reinterpret_cast<R>(_mm512_maskz_sqrt_pd(0xff, reinterpret_cast<__m512d>(value)));
#endif
#if defined(__AVX2__)
  } else if constexpr (sizeof(R) == 32) {
    return reinterpret_cast<R>(_mm256_sqrt_pd(reinterpret_cast<__m256d>(value)));
#endif
  } else {
    for (int lane = 0; lane < Kind<R>::kLanes; ++lane) value[lane] = __builtin_sqrt(value[lane]);
    return value;
  }
}

/// a b + c in one rounding. Only where the processor has it.
template <class R>
ZR_INLINE R fused(R a, R b, R c) {
  if constexpr (kIsSingle<R>) {
    return __builtin_fma(a, b, c);
#if defined(__AVX512F__)
  } else if constexpr (sizeof(R) == 64) {
    return reinterpret_cast<R>(
        _mm512_fmadd_pd(reinterpret_cast<__m512d>(a), reinterpret_cast<__m512d>(b), reinterpret_cast<__m512d>(c)));
#endif
#if defined(__AVX2__) && defined(__FMA__)
  } else if constexpr (sizeof(R) == 32) {
    return reinterpret_cast<R>(
        _mm256_fmadd_pd(reinterpret_cast<__m256d>(a), reinterpret_cast<__m256d>(b), reinterpret_cast<__m256d>(c)));
#endif
#if defined(__ARM_NEON) && defined(__aarch64__)
  } else if constexpr (sizeof(R) == 16) {
    return reinterpret_cast<R>(vfmaq_f64(reinterpret_cast<float64x2_t>(c), reinterpret_cast<float64x2_t>(a),
                                         reinterpret_cast<float64x2_t>(b)));
#endif
  } else {
    for (int lane = 0; lane < Kind<R>::kLanes; ++lane) c[lane] = __builtin_fma(a[lane], b[lane], c[lane]);
    return c;
  }
}

/// A row of a table of `count` rows. Lanes that are not in a function's domain, and whose results nobody uses, may ask
/// for rows that do not exist.
template <class R>
ZR_INLINE Word<R> existing(Word<R> row, std::int64_t count) {
  if constexpr (kIsSingle<R>) {
    return row;
  } else {
    return row & (row >= 0) & (row < count);
  }
}

/// Column `column` of the rows `index` of a table of `Row`, a record of doubles.
template <class R, class Row>
ZR_INLINE R looked(const Row* table, double Row::*column, Word<R> index) {
  if constexpr (kIsSingle<R>) {
    return table[index].*column;
  } else {
    constexpr int kDoubles = sizeof(Row) / sizeof(double);
    const double* const base = &(table->*column);
    const Word<R> offset = index * kDoubles;
#if defined(__AVX512F__)
    if constexpr (sizeof(R) == 64) {
      return reinterpret_cast<R>(
          _mm512_mask_i64gather_pd(_mm512_setzero_pd(), 0xff, reinterpret_cast<__m512i>(offset), base, 8));
    }
#endif
#if defined(__AVX2__)
    if constexpr (sizeof(R) == 32) {
      return reinterpret_cast<R>(_mm256_i64gather_pd(base, reinterpret_cast<__m256i>(offset), 8));
    }
#endif
    R result{};
    for (int lane = 0; lane < Kind<R>::kLanes; ++lane) result[lane] = base[offset[lane]];
    return result;
  }
}

}  // namespace exact::ZR_EXACT_BUILD

#endif
