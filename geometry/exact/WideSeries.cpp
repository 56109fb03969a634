// SPDX-License-Identifier: Apache-2.0
#include "WideSeries.h"

#include "WideTable.h"

namespace exact {

namespace {

template <std::size_t Words>
Places<Words> inverseFactorial(std::size_t n) noexcept {
  return firstOf<Words>(tables::kInverseFactorials[n - 2]);
}

/// 1/first! - u/(first + 2)! + u^2/(first + 4)! - ..., |u| <= (pi/4)^2: what is left out is below 2^-130, and 2^-260.
template <std::size_t Words>
Places<Words> alternatingSeries(const Places<Words>& u, std::size_t first) noexcept {
  constexpr std::size_t kEnd = Words == 2 ? 34 : 58;
  std::size_t n = kEnd - first % 2;
  Places<Words> sum = inverseFactorial<Words>(n);
  while (n > first) {
    n -= 2;
    const Places<Words> rest = u * sum;
    sum = inverseFactorial<Words>(n);
    subtract(sum, rest);
  }
  return sum;
}

/// 384 places of 2/pi from place `skipped` on; the last word has the first ones.
std::array<std::uint64_t, 6> twoOverPi(std::size_t skipped) noexcept {
  std::array<std::uint64_t, 6> window;
  for (std::size_t i = 0; i < window.size(); ++i) {
    const std::size_t place = skipped + 64 * (window.size() - 1 - i);
    const std::size_t word = 23 - place / 64;
    const std::size_t bits = place % 64;
    window[i] = tables::kTwoOverPi[0][word] << bits;
    if (bits != 0) window[i] |= tables::kTwoOverPi[0][word - 1] >> (64 - bits);
  }
  return window;
}

}  // namespace

template <std::size_t Words>
QuarterTurns<Words> wideReduced(double angle) noexcept {
  const Wide<Words> x(angle);
  if (std::fabs(angle) < 0.78) return {0, x};
  // x is a whole number of 53 bits times 2^power. Its product with the places of 2/pi that make it a multiple of four
  // quarter turns is left out (Payne and Hanek 1983).
  const std::uint64_t mantissa = x.places[Words - 1] >> 11U;
  const int power = x.exponent - 53;
  const int skipped = power > 2 ? power - 2 : 0;
  const std::array<std::uint64_t, 6> window = twoOverPi(static_cast<std::size_t>(skipped));
  Places<8> turns{};
  for (std::size_t i = 0; i < window.size(); ++i) {
    const TwoWords sum = productAnd(mantissa, window[i], turns[i], 0);
    turns[i] = sum.low;
    turns[i + 1] = sum.high;
  }
  // Move the point to the upper end of word 6: quarter turns stand above it, and 7 words of the rest below.
  turns = movedUp(turns, static_cast<std::size_t>(64 + power - skipped));
  auto quarters = static_cast<unsigned>(turns[7] & 3U);
  const bool isPastHalf = (turns[6] >> 63U) != 0;
  if (isPastHalf) {
    ++quarters;
    for (std::uint64_t& word : turns) word = ~word;
  }
  turns[7] = 0;
  const Wide<8> rest(turns, 64);
  Wide<Words> quarterOfTurn(firstOf<Words>(tables::kHalfOfHalfPi[0]), 1);
  Wide<Words> first;
  first.exponent = rest.exponent;
  for (std::size_t i = 0; i < Words; ++i) first.places[i] = rest.places[8 - Words + i];
  first = first * quarterOfTurn;
  first.isNegative = isPastHalf != (angle < 0.0);
  return {angle < 0.0 ? 4 - quarters : quarters, first};
}

template <std::size_t Words>
Wide<Words> wideSine(unsigned quarters, const Wide<Words>& rest) noexcept {
  const Wide<Words> square = rest * rest;
  const Places<Words> u = square.fraction();
  Wide<Words> result = quarters % 2 == 0 ? rest - rest * square * Wide<Words>(alternatingSeries<Words>(u, 3), 0)
                                         : Wide<Words>(1.0) - square * Wide<Words>(alternatingSeries<Words>(u, 2), 0);
  if (quarters % 4 >= 2) result.isNegative = !result.isNegative;
  return result;
}

template <std::size_t Words>
Wide<Words> wideExponential(double exponent) noexcept {
  const Wide<Words> logTwo(firstOf<Words>(tables::kLogTwo[0]), 0);
  constexpr double kPerLogTwo = 1.4426950408889634;
  // A little too high rather than too low, so that the rest lies below ln 2.
  double doublings = std::floor(exponent * kPerLogTwo + 0x1p-30);
  Wide<Words> rest = Wide<Words>(exponent) - Wide<Words>(doublings) * logTwo;
  if (rest.isNegative) {
    rest = rest + logTwo;
    doublings -= 1.0;
  }
  // exp - 1 of a sixteenth of the rest, by the series; then four times exp(2x) - 1 = 2 (exp(x) - 1) + (exp(x) - 1)^2.
  constexpr std::size_t kTerms = Words == 2 ? 18 : 34;
  const Places<Words> part = rest.scaled(-4).fraction();
  Places<Words> sum = inverseFactorial<Words>(kTerms);
  for (std::size_t n = kTerms; n-- > 2;) {
    sum = part * sum;
    add(sum, inverseFactorial<Words>(n));
  }
  Places<Words> grown = part * part * sum;
  add(grown, part);
  for (int i = 0; i < 4; ++i) {
    const Places<Words> square = grown * grown;
    grown = movedUp(grown, 1);
    add(grown, square);
  }
  Places<Words> half = movedDown(grown, 1);
  half[Words - 1] |= 1ULL << 63U;
  return {half, static_cast<int>(doublings) + 1};
}

template QuarterTurns<2> wideReduced(double) noexcept;
template QuarterTurns<4> wideReduced(double) noexcept;
template Wide<2> wideSine(unsigned, const Wide<2>&) noexcept;
template Wide<4> wideSine(unsigned, const Wide<4>&) noexcept;
template Wide<2> wideExponential(double) noexcept;
template Wide<4> wideExponential(double) noexcept;

}  // namespace exact
