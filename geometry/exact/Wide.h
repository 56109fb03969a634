// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_EXACT_WIDE_H
#define ZRCORE_GEOMETRY_EXACT_WIDE_H

#include <cmath>

#include "Places.h"

namespace exact {

/// A number of 64 Words significant bits and any exponent: 0.places * 2^exponent, the first place set; or zero.
/// Operations cut off, with a relative error below 2^(2 - 64 Words); sums of numbers of opposite signs err so
/// relatively to the larger one, unless they are exact.
template <std::size_t Words>
struct Wide {
  static constexpr int kPlaces = 64 * static_cast<int>(Words);

  bool isNegative = false;
  int exponent = 0;
  Places<Words> places{};

  Wide() = default;
  /// 0.places * 2^power, whatever places are set.
  Wide(const Places<Words>& unnormalised, int power) noexcept;
  explicit Wide(double value) noexcept;

  bool isZero() const noexcept { return places[Words - 1] == 0; }
  /// The nearest double, ties to even: subnormal or infinite where it has to be.
  double nearest() const noexcept;
  /// Whether the nearest double stays the same if the number is changed by up to 2^-108 of itself. False among the
  /// subnormal numbers.
  bool isClear() const noexcept;
  /// The places rounded down to 53, as a double in [0.5, 1).
  double roughMantissa() const noexcept {
    return std::bit_cast<double>((0x3feULL << 52U) | ((places[Words - 1] << 1U) >> 12U));
  }
  Wide scaled(int powerOfTwo) const noexcept {
    Wide result = *this;
    if (!isZero()) result.exponent += powerOfTwo;
    return result;
  }
  /// The magnitude of a number below 1, as places.
  Places<Words> fraction() const noexcept {
    return exponent <= -kPlaces ? Places<Words>{} : movedDown(places, static_cast<std::size_t>(-exponent));
  }
};

template <std::size_t Words>
Wide<Words>::Wide(const Places<Words>& unnormalised, int power) noexcept : exponent(power), places(unnormalised) {
  const std::size_t zeros = leadingZeros(places);
  if (zeros == 64 * Words) {
    exponent = 0;
  } else if (zeros != 0) {
    places = movedUp(places, zeros);
    exponent -= static_cast<int>(zeros);
  }
}

template <std::size_t Words>
Wide<Words>::Wide(double value) noexcept {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const auto field = static_cast<int>((bits >> 52U) & 0x7ffU);
  Places<Words> significand{};
  significand[Words - 1] = bits << 11U;
  if (field != 0) {
    significand[Words - 1] |= 1ULL << 63U;
    exponent = field - 1022;
    places = significand;
  } else {
    *this = Wide(significand, -1021);
  }
  isNegative = (bits >> 63U) != 0;
}

template <std::size_t Words>
double Wide<Words>::nearest() const noexcept {
  constexpr int kLeastNormal = -1021;
  constexpr std::uint64_t kInfinity = 0x7ffULL << 52U;
  const std::uint64_t sign = isNegative ? 1ULL << 63U : 0;
  const int kept = exponent >= kLeastNormal ? 53 : 53 - (kLeastNormal - exponent);
  if (isZero() || kept < 0) return std::bit_cast<double>(sign);
  const auto cut = static_cast<unsigned>(64 - kept);
  const std::uint64_t first = places[Words - 1];
  const std::uint64_t whole = cut == 64 ? 0 : first >> cut;
  const bool half = ((first >> (cut - 1)) & 1U) != 0;
  std::uint64_t rest = first & ((1ULL << (cut - 1)) - 1);
  for (std::size_t i = 0; i + 1 < Words; ++i) rest |= places[i];
  const std::uint64_t rounded = whole + (half && (rest != 0 || (whole & 1U) != 0) ? 1 : 0);
  if (kept < 53) return std::bit_cast<double>(sign | rounded);
  const std::int64_t field = static_cast<std::int64_t>(exponent) + 1021;  // `rounded` adds one to it
  if (field >= 0x7fe) return std::bit_cast<double>(sign | kInfinity);
  return std::bit_cast<double>(sign | ((static_cast<std::uint64_t>(field) << 52U) + rounded));
}

template <std::size_t Words>
bool Wide<Words>::isClear() const noexcept {
  // The places 54 to 108: neither 1000... nor 0111...
  const std::uint64_t next = ((places[Words - 1] & 0x7ffU) << 44U) | (places[Words - 2] >> 20U);
  constexpr std::uint64_t kMiddle = 1ULL << 54U;
  return exponent > -1021 && next != kMiddle && next != kMiddle - 1;
}

template <std::size_t Words>
Wide<Words> operator-(Wide<Words> a) noexcept {
  a.isNegative = !a.isNegative;
  return a;
}

template <std::size_t Words>
Wide<Words> operator+(const Wide<Words>& a, const Wide<Words>& b) noexcept {
  if (a.isZero()) return b;
  if (b.isZero()) return a;
  if (a.exponent < b.exponent) return b + a;
  const int distance = a.exponent - b.exponent;
  if (distance >= Wide<Words>::kPlaces) return a;
  const Places<Words> aligned = movedDown(b.places, static_cast<std::size_t>(distance));
  Wide<Words> result = a;
  if (a.isNegative == b.isNegative) {
    if (add(result.places, aligned)) {
      result.places = movedDown(result.places, 1);
      result.places[Words - 1] |= 1ULL << 63U;
      ++result.exponent;
    }
    return result;
  }
  if (subtract(result.places, aligned)) return b + a;  // of the same exponent, and b is the larger one
  result = Wide<Words>(result.places, result.exponent);
  result.isNegative = !result.isZero() && a.isNegative;
  return result;
}

template <std::size_t Words>
Wide<Words> operator-(const Wide<Words>& a, const Wide<Words>& b) noexcept {
  return a + (-b);
}

template <std::size_t Words>
Wide<Words> operator*(const Wide<Words>& a, const Wide<Words>& b) noexcept {
  Wide<Words> result(a.places * b.places, a.exponent + b.exponent);
  result.isNegative = a.isNegative != b.isNegative;
  return result;
}

/// Newton's iteration doubles the places: from 51 to 102, 204 and 408.
template <std::size_t Words>
inline constexpr int kNewtonSteps = Words == 2 ? 2 : 3;

template <std::size_t Words>
Wide<Words> operator/(const Wide<Words>& a, const Wide<Words>& b) noexcept {
  Wide<Words> mantissa = b;
  mantissa.exponent = 0;
  mantissa.isNegative = false;
  const Wide<Words> one(1.0);
  Wide<Words> inverse(1.0 / mantissa.roughMantissa());
  for (int i = 0; i < kNewtonSteps<Words>; ++i) inverse = inverse + inverse * (one - mantissa * inverse);
  inverse.isNegative = b.isNegative;
  return a * inverse.scaled(-b.exponent);
}

/// Of a number that is not negative.
template <std::size_t Words>
Wide<Words> squareRoot(const Wide<Words>& square) noexcept {
  if (square.isZero()) return square;
  Wide<Words> mantissa = square;  // times an even power of two
  mantissa.exponent = square.exponent % 2 == 0 ? 0 : -1;
  const Wide<Words> one(1.0);
  Wide<Words> inverse(1.0 /
                      std::sqrt(mantissa.exponent == 0 ? mantissa.roughMantissa() : 0.5 * mantissa.roughMantissa()));
  for (int i = 0; i < kNewtonSteps<Words>; ++i) {
    inverse = inverse + (inverse * (one - mantissa * inverse * inverse)).scaled(-1);
  }
  return (mantissa * inverse).scaled((square.exponent - mantissa.exponent) / 2);
}

}  // namespace exact

#endif
