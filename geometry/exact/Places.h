// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_EXACT_PLACES_H
#define ZRCORE_GEOMETRY_EXACT_PLACES_H

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

/// Binary places after the point, in words of 64; the last word has the first places. With 128-bit integers where the
/// compiler has them; the results are whole numbers, so that it makes no difference.
namespace exact {

template <std::size_t Words>
using Places = std::array<std::uint64_t, Words>;

struct TwoWords {
  std::uint64_t low, high;
};

/// a b + c + d, which fits.
inline TwoWords productAnd(std::uint64_t a, std::uint64_t b, std::uint64_t c, std::uint64_t d) noexcept {
#ifdef __SIZEOF_INT128__
  __extension__ using Double = unsigned __int128;
  const Double all = static_cast<Double>(a) * b + c + d;
  return {static_cast<std::uint64_t>(all), static_cast<std::uint64_t>(all >> 64U)};
#else
  constexpr std::uint64_t kHalf = 0xffffffffU;
  const std::uint64_t low = (a & kHalf) * (b & kHalf);
  const std::uint64_t middle = (a >> 32U) * (b & kHalf) + (low >> 32U);
  const std::uint64_t other = (a & kHalf) * (b >> 32U) + (middle & kHalf);
  const std::uint64_t product = (other << 32U) | (low & kHalf);
  const std::uint64_t upper = (a >> 32U) * (b >> 32U) + (middle >> 32U) + (other >> 32U);
  const std::uint64_t withC = product + c;
  const std::uint64_t withD = withC + d;
  return {withD, upper + (withC < c ? 1 : 0) + (withD < d ? 1 : 0)};
#endif
}

/// a b, cut off: less than one last place too small.
template <std::size_t Words>
Places<Words> operator*(const Places<Words>& a, const Places<Words>& b) noexcept {
  std::array<std::uint64_t, 2 * Words> all{};
  for (std::size_t i = 0; i < Words; ++i) {
    std::uint64_t carry = 0;
    for (std::size_t j = 0; j < Words; ++j) {
      const TwoWords sum = productAnd(a[i], b[j], all[i + j], carry);
      all[i + j] = sum.low;
      carry = sum.high;
    }
    all[i + Words] = carry;
  }
  Places<Words> upper;
  for (std::size_t i = 0; i < Words; ++i) upper[i] = all[i + Words];
  return upper;
}

/// a += b; whether there is a carry out of the first place.
template <std::size_t Words>
bool add(Places<Words>& a, const Places<Words>& b) noexcept {
  std::uint64_t carry = 0;
  for (std::size_t i = 0; i < Words; ++i) {
    const std::uint64_t sum = a[i] + carry;
    carry = sum < carry ? 1 : 0;
    a[i] = sum + b[i];
    carry += a[i] < sum ? 1 : 0;
  }
  return carry != 0;
}

/// a -= b; whether there is a borrow.
template <std::size_t Words>
bool subtract(Places<Words>& a, const Places<Words>& b) noexcept {
  std::uint64_t borrow = 0;
  for (std::size_t i = 0; i < Words; ++i) {
    const std::uint64_t difference = a[i] - borrow;
    borrow = a[i] < borrow ? 1 : 0;
    borrow += difference < b[i] ? 1 : 0;
    a[i] = difference - b[i];
  }
  return borrow != 0;
}

template <std::size_t Words>
Places<Words> movedDown(const Places<Words>& a, std::size_t bits) noexcept {
  Places<Words> result{};
  const std::size_t words = bits / 64;
  const std::size_t rest = bits % 64;
  for (std::size_t i = words; i < Words; ++i) {
    const std::uint64_t next = i + 1 < Words && rest != 0 ? a[i + 1] << (64 - rest) : 0;
    result[i - words] = (a[i] >> rest) | next;
  }
  return result;
}

template <std::size_t Words>
Places<Words> movedUp(const Places<Words>& a, std::size_t bits) noexcept {
  Places<Words> result{};
  const std::size_t words = bits / 64;
  const std::size_t rest = bits % 64;
  for (std::size_t i = words; i < Words; ++i) {
    const std::uint64_t next = i > words && rest != 0 ? a[i - words - 1] >> (64 - rest) : 0;
    result[i] = (a[i - words] << rest) | next;
  }
  return result;
}

/// 64 times the words where there is no place set.
template <std::size_t Words>
std::size_t leadingZeros(const Places<Words>& a) noexcept {
  for (std::size_t i = Words; i-- > 0;) {
    if (a[i] != 0) return 64 * (Words - 1 - i) + static_cast<std::size_t>(std::countl_zero(a[i]));
  }
  return 64 * Words;
}

/// The first places of a longer row of words.
template <std::size_t Words, std::size_t Count>
Places<Words> firstOf(const std::uint64_t (&words)[Count]) noexcept {
  Places<Words> result;
  for (std::size_t i = 0; i < Words; ++i) result[i] = words[Count - Words + i];
  return result;
}

}  // namespace exact

#endif
