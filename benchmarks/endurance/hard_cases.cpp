// SPDX-License-Identifier: Apache-2.0
// hard_cases SECONDS [SEED]: searches for arguments whose function value lies very close to the middle of two doubles,
// and prints the best of each function as rows of HardCases.h.
//
// Over 2^15 doubles in a row a function is a straight line but for 2^-26 of a last place. Where that line comes close
// to half a last place is found by a Euclidean algorithm, in the time of two evaluations instead of 2^15.
#include <mpfr.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "Reference.h"

namespace {

constexpr int kRun = 1 << 15;
constexpr double kCloseEnough = 0x1p-22;  // to half a last place; what is closer is looked at singly

__extension__ using Whole = __int128;
constexpr Whole kTurn = Whole{1} << 62;  // a last place

/// The least x >= 0 with low <= a x mod m <= high, or a large number.
Whole firstInRange(Whole a, Whole m, Whole low, Whole high) {
  if (low == 0) return 0;
  if (a == 0) return kTurn;
  if (2 * a > m) return firstInRange(m - a, m, m - high, m - low);
  const Whole direct = (low + a - 1) / a;
  if (direct * a <= high) return direct;
  const Whole turns = firstInRange(m % a, a, (a - high % a) % a, (a - low % a) % a);
  return turns >= kTurn ? kTurn : (low + m * turns + a - 1) / a;
}

using Function = int (*)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t);

/// The value in last places of its binade, less a half, as a fraction of kTurn. `binade`: log2 of a last place.
class Line {
 public:
  Line() { mpfr_inits2(240, value_, argument_, static_cast<mpfr_ptr>(nullptr)); }
  ~Line() { mpfr_clears(value_, argument_, static_cast<mpfr_ptr>(nullptr)); }
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;

  int lastPlace(Function function, double x) {
    evaluate(function, x);
    return static_cast<int>(mpfr_get_exp(value_)) - 53;
  }
  Whole at(Function function, double x, int lastPlace) {
    evaluate(function, x);
    mpfr_mul_2si(value_, value_, -lastPlace, MPFR_RNDN);
    mpfr_sub_d(value_, value_, 0.5, MPFR_RNDN);
    mpfr_frac(argument_, value_, MPFR_RNDN);
    mpfr_mul_2si(argument_, argument_, 62, MPFR_RNDN);
    const Whole place = mpfr_get_si(argument_, MPFR_RNDD);
    return place < 0 ? place + kTurn : place;
  }
  double distance(Function function, double x) {
    evaluate(function, x);
    mpfr_mul_2si(value_, value_, 53 - static_cast<int>(mpfr_get_exp(value_)), MPFR_RNDN);
    mpfr_sub_d(value_, value_, 0.5, MPFR_RNDN);
    mpfr_rint(argument_, value_, MPFR_RNDN);
    mpfr_sub(value_, value_, argument_, MPFR_RNDN);
    return std::fabs(mpfr_get_d(value_, MPFR_RNDN));
  }

 private:
  void evaluate(Function function, double x) {
    mpfr_set_d(argument_, x, MPFR_RNDN);
    function(value_, argument_, MPFR_RNDN);
  }
  mpfr_t value_, argument_;
};

struct Found {
  double x, distance;
};

std::vector<Found> searched(const Subject& subject, Function function, double seconds, std::uint64_t seed) {
  Line line;
  Arguments arguments(subject, Kind::kGeometry, seed);
  std::vector<Found> found;
  const std::clock_t end = std::clock() + static_cast<std::clock_t>(seconds * CLOCKS_PER_SEC);
  while (std::clock() < end) {
    const double start = arguments.next().x;
    const double step = std::nextafter(std::fabs(start), HUGE_VAL) - std::fabs(start);
    const int lastPlace = line.lastPlace(function, start);
    const Whole first = line.at(function, start, lastPlace);
    const Whole second = line.at(function, start + step, lastPlace);
    const Whole last = line.at(function, start + kRun * step, lastPlace);
    // The slope to 62 places from one step, and what it misses over the whole run from the run's end.
    Whole slope = second - first;
    Whole missing = (last - first - slope * kRun) % kTurn;
    if (missing > kTurn / 2) missing -= kTurn;
    if (missing < -kTurn / 2) missing += kTurn;
    slope = ((slope + missing / kRun) % kTurn + kTurn) % kTurn;
    const auto reach = static_cast<Whole>(std::ldexp(kCloseEnough, 62));
    const Whole low = ((kTurn - reach - first) % kTurn + kTurn) % kTurn;
    if (low + 2 * reach >= kTurn) continue;
    const Whole at = firstInRange(slope, kTurn, low, low + 2 * reach);
    if (at >= kRun) continue;
    const double x = start + static_cast<double>(at) * step;
    found.push_back({x, line.distance(function, x)});
  }
  std::sort(found.begin(), found.end(), [](const Found& a, const Found& b) { return a.distance < b.distance; });
  return found;
}

}  // namespace

int main(int argc, char** argv) {
  const double seconds = argc > 1 ? std::atof(argv[1]) : 1.0;
  const std::uint64_t seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
  const std::pair<const char*, Function> functions[] = {{"sin", mpfr_sin},   {"cos", mpfr_cos},   {"tan", mpfr_tan},
                                                        {"asin", mpfr_asin}, {"acos", mpfr_acos}, {"atan", mpfr_atan},
                                                        {"exp", mpfr_exp},   {"log", mpfr_log}};
  for (const auto& [name, function] : functions) {
    const auto& all = subjects();
    const auto subject =
        std::find_if(all.begin(), all.end(), [name = name](const Subject& s) { return s.name == name; });
    const std::vector<Found> found = searched(*subject, function, seconds, seed);
    std::printf("    // %s: %zu looked at\n", name, found.size());
    for (std::size_t i = 0; i < std::min<std::size_t>(4, found.size()); ++i) {
      std::printf("    {\"%s\", %a, 0.0},  // 2^%.1f\n", name, found[i].x, std::log2(found[i].distance));
    }
  }
}
