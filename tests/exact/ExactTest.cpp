// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>
#include <string_view>

#include "HardCases.h"
#include "Reference.h"

namespace {

using exact::Build;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::vector<Build> runnableBuilds() {
  std::vector<Build> builds;
  for (const Build build : {Build::kCommon, Build::kFused}) {
    if (build <= exact::bestBuild()) builds.push_back(build);
  }
  return builds;
}

const Subject& subject(std::string_view name) {
  for (const Subject& each : subjects()) {
    if (each.name == name) return each;
  }
  throw std::invalid_argument(std::string(name));
}

class EveryFunction : public testing::TestWithParam<Subject> {};

TEST_P(EveryFunction, GivesTheNearestDouble) {
  constexpr int kEach = 250'000;
  for (const Build build : runnableBuilds()) {
    for (const Kind kind : kKinds) {
      Arguments arguments(GetParam(), kind, 1);
      Judge judge(GetParam());
      for (int i = 0; i < (build == exact::bestBuild() ? kEach : kEach / 10); ++i) {
        const auto [x, y] = arguments.next();
        const double result = GetParam().compute(exact::functionsOf(build), x, y);
        ASSERT_TRUE(judge.isRight(result, x, y)) << std::hexfloat << x << ' ' << y << " gives " << result;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, EveryFunction, testing::ValuesIn(subjects()), [](const auto& each) {
  std::string name = each.param.name;
  std::replace(name.begin(), name.end(), '.', '_');
  return name;
});

TEST(Functions, RoundTheHardestKnownArguments) {
  for (const HardCase& hard : kHardCases) {
    const Subject& function = subject(hard.function);
    Judge judge(function, true);
    for (const Build build : runnableBuilds()) {
      EXPECT_TRUE(judge.isRight(function.compute(exact::functionsOf(build), hard.x, hard.y), hard.x, hard.y))
          << hard.function << ' ' << std::hexfloat << hard.x << ' ' << hard.y;
    }
  }
}

// What MPFR computes in the exact rational case, or where no random argument goes: signs of zero, infinities, NaN,
// poles, ties.
TEST(Functions, HaveTheSpecialValuesOfAnnexF) {
  constexpr double kSpecial[] = {0.0,    -0.0,     1.0,    -1.0,    3.0,    -4.0,      kInf,
                                 -kInf,  kNaN,     5e-324, -5e-324, 1e-310, 0x1p-1022, 1.7976931348623157e308,
                                 0x1p54, -0x1p500, 2.0,    0.5};
  for (const Subject& function : subjects()) {
    Judge judge(function, true);
    for (const double x : kSpecial) {
      for (const double y : kSpecial) {
        for (const Build build : runnableBuilds()) {
          const double result = function.compute(exact::functionsOf(build), x, y);
          EXPECT_TRUE(judge.isRight(result, x, y)) << function.name << ' ' << x << ' ' << y << " gives " << result;
        }
      }
    }
  }
}

// A hypotenuse may be a double, or lie in the middle of two: that of whole numbers of up to 54 bits.
TEST(Hypotenuse, OfPythagoreanTriplesIsExactOrATieToEven) {
  const Subject& hypot = subject("hypot");
  Judge judge(hypot, true);
  std::mt19937_64 dice(3);
  for (int i = 0; i < 20'000; ++i) {
    const auto p = static_cast<double>(dice() % 94'906'265);  // its square has 53 bits
    const auto q = static_cast<double>(dice() % 94'906'265);
    const double x = std::fabs(p * p - q * q), y = 2.0 * p * q;
    const double result = hypot.compute(exact::functionsOf(exact::bestBuild()), x, y);
    EXPECT_TRUE(judge.isRight(result, x, y)) << std::hexfloat << x << ' ' << y;
  }
}

}  // namespace
