// SPDX-License-Identifier: Apache-2.0
// exact_count FUNCTION|all COUNT [SEED]: counts wrong roundings among COUNT arguments, a quarter of each kind, with
// this processor's quickest build. Prints a line a function. Exit code 1 if there are any.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "Reference.h"

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: exact_count FUNCTION|all COUNT [SEED]\n");
    return 2;
  }
  const std::uint64_t count = std::strtoull(argv[2], nullptr, 10);
  const std::uint64_t seed = argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 1;
  const exact::Functions& functions = exact::functionsOf(exact::bestBuild());
  bool isAnyWrong = false;
  for (const Subject& subject : subjects()) {
    if (std::strcmp(argv[1], "all") != 0 && subject.name != argv[1]) continue;
    const std::clock_t start = std::clock();
    Judge judge(subject);
    std::uint64_t wrong = 0;
    for (const Kind kind : kKinds) {
      Arguments arguments(subject, kind, seed);
      for (std::uint64_t i = 0; i < count / 4; ++i) {
        const auto [x, y] = arguments.next();
        const double result = subject.compute(functions, x, y);
        if (judge.isRight(result, x, y)) continue;
        if (++wrong <= 10) std::printf("%s(%a, %a) gives %a\n", subject.name.c_str(), x, y, result);
      }
    }
    std::printf("%-14s %12llu arguments, %9llu of them by MPFR, wrong roundings: %llu (%.0f s)\n", subject.name.c_str(),
                static_cast<unsigned long long>(count / 4 * 4), static_cast<unsigned long long>(judge.askedMpfr()),
                static_cast<unsigned long long>(wrong), static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    std::fflush(stdout);
    isAnyWrong |= wrong != 0;
  }
  return isAnyWrong ? 1 : 0;
}
