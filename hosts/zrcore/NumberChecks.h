// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_NUMBERCHECKS_H
#define ZRCORE_HOSTS_ZRCORE_NUMBERCHECKS_H

#include <CLI/CLI.hpp>
#include <limits>
#include <string>

// Checks of options' numbers. CLI11's own let "nan" pass, and tell the greatest double with all its 309 digits.

/// @param lowest, highest  both allowed
inline CLI::Validator numberWithin(double lowest, double highest, const std::string& rule) {
  const auto fault = [=](const std::string& text) {
    double number = 0.0;
    const bool holds = CLI::detail::lexical_cast(text, number) && number >= lowest && number <= highest;
    return holds ? std::string() : "'" + text + "' is no number " + rule;
  };
  return {fault, ""};
}

inline CLI::Validator positiveNumber() {
  using Limits = std::numeric_limits<double>;
  return numberWithin(Limits::denorm_min(), Limits::max(), "above 0");
}

inline CLI::Validator numberFrom0To1() { return numberWithin(0.0, 1.0, "from 0 to 1"); }

#endif
