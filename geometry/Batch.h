// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_BATCH_H
#define ZRCORE_GEOMETRY_BATCH_H

#include <cstdint>

#include "ProjectionFormulas.h"

/// Formulas over arrays: as many elements at once as the processor has lanes, and the few that a first phase leaves
/// undecided once more, singly.
namespace geometry::ZR_EXACT_BUILD {

#if defined(__AVX512F__)
inline constexpr int kLanes = 8;
#elif defined(__AVX2__)
inline constexpr int kLanes = 4;
#else
inline constexpr int kLanes = 2;
#endif
using Lanes = exact::VectorOf<kLanes>::Real;

/// The first, and the second, of as many pairs of doubles as there are lanes; and back. Templates, because only the
/// shuffles of one width compile.
template <class R>
ZR_INLINE Two<R> separated(const R& a, const R& b) {
  if constexpr (sizeof(R) == 64) {
    return {__builtin_shufflevector(a, b, 0, 2, 4, 6, 8, 10, 12, 14),
            __builtin_shufflevector(a, b, 1, 3, 5, 7, 9, 11, 13, 15)};
  } else if constexpr (sizeof(R) == 32) {
    return {__builtin_shufflevector(a, b, 0, 2, 4, 6), __builtin_shufflevector(a, b, 1, 3, 5, 7)};
  } else {
    return {__builtin_shufflevector(a, b, 0, 2), __builtin_shufflevector(a, b, 1, 3)};
  }
}
template <class R>
ZR_INLINE Two<R> interleaved(const R& a, const R& b) {
  if constexpr (sizeof(R) == 64) {
    return {__builtin_shufflevector(a, b, 0, 8, 1, 9, 2, 10, 3, 11),
            __builtin_shufflevector(a, b, 4, 12, 5, 13, 6, 14, 7, 15)};
  } else if constexpr (sizeof(R) == 32) {
    return {__builtin_shufflevector(a, b, 0, 4, 1, 5), __builtin_shufflevector(a, b, 2, 6, 3, 7)};
  } else {
    return {__builtin_shufflevector(a, b, 0, 2), __builtin_shufflevector(a, b, 1, 3)};
  }
}

/// kLanes records of two doubles.
template <class Record>
ZR_INLINE Two<Lanes> loaded(const Record* records) {
  static_assert(sizeof(Record) == 2 * sizeof(double));
  Lanes a, b;
  __builtin_memcpy(&a, records, sizeof a);
  __builtin_memcpy(&b, records + kLanes / 2, sizeof b);
  return separated<Lanes>(a, b);
}
template <class Record>
ZR_INLINE void store(const Two<Lanes>& of, Record* records) {
  const auto [a, b] = interleaved<Lanes>(of.first, of.second);
  __builtin_memcpy(records, &a, sizeof a);
  __builtin_memcpy(records + kLanes / 2, &b, sizeof b);
}
ZR_INLINE void store(const Lanes& of, double* numbers) { __builtin_memcpy(numbers, &of, sizeof of); }

ZR_INLINE bool isAny(const exact::Mask<Lanes>& lanes) {
  std::int64_t any = 0;
  for (int lane = 0; lane < kLanes; ++lane) any |= lanes[lane];
  return any != 0;
}

/// to[i] = the formula of from[i]. `several(in, doubt)` computes kLanes of them and says which are in doubt; `one(in)`
/// computes a single one finally, as it does with what is left at the end.
template <class From, class To>
ZR_INLINE void overEach(const From* from, To* to, std::uint64_t count, auto several, auto one) {
  std::uint64_t i = 0;
  for (; i + kLanes <= count; i += kLanes) {
    exact::Doubt<Lanes> doubt;
    store(several(from + i, doubt), to + i);
    if (isAny(doubt.lanes)) [[unlikely]] {
      for (std::uint64_t lane = 0; lane < kLanes; ++lane) {
        if (doubt.lanes[lane] != 0) to[i + lane] = one(from + i + lane);
      }
    }
  }
  for (; i < count; ++i) to[i] = one(from + i);
}

}  // namespace geometry::ZR_EXACT_BUILD

#endif
