// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_OPTIONCHECKS_H
#define ZRCORE_HOSTS_ZRCORE_OPTIONCHECKS_H

#include <CLI/CLI.hpp>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>

#include "Messages.h"

// Checks of options' values. For numbers, CLI11's own let "nan" pass, and tell the greatest double with all its 309 digits.

/// @param lowest, highest  both allowed
inline CLI::Validator numberWithin(double lowest, double highest, const std::string& rule) {
  const auto fault = [=](const std::string& text) {
    double number = 0.0;
    const bool holds = CLI::detail::lexical_cast(text, number) && number >= lowest && number <= highest;
    return holds ? std::string() : inQuotes(text) + " is no number " + rule;
  };
  return {fault, ""};
}

inline CLI::Validator positiveNumber() {
  using Limits = std::numeric_limits<double>;
  return numberWithin(Limits::denorm_min(), Limits::max(), "above 0");
}

inline CLI::Validator numberFrom0To1() { return numberWithin(0.0, 1.0, "from 0 to 1"); }

/// The name of a file or a folder that is to be written.
inline CLI::Validator someName() {
  const auto fault = [](const std::string& text) { return text.empty() ? "the name is empty" : std::string(); };
  return {fault, ""};
}

/// A whole number that 32 bits hold.
inline CLI::Validator wholeNumber() {
  const auto fault = [](const std::string& text) {
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool holds = error == std::errc() && end == text.data() + text.size();
    return holds ? std::string() : inQuotes(text) + " is no whole number from -2147483648 to 2147483647";
  };
  return {fault, ""};
}

#endif
