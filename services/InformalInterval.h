// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_SERVICES_INFORMALINTERVAL_H
#define ZRCORE_SERVICES_INFORMALINTERVAL_H

#include <optional>
#include <string>
#include <string_view>

/// A phrase of the host's string table, and the number that goes into it, if any.
struct InformalInterval {
  const char* key;
  std::optional<int> number;
};

/// The phrase for a time `seconds` ago; absent when `seconds` is negative or NaN. A number above the greatest int is
/// replaced by the greatest int.
std::optional<InformalInterval> informalInterval(double seconds) noexcept;

/// Replaces each "%d", "%i", "%ld", "%li" and "%@" of `format` by the number (also with an argument's position, as in
/// "%1$d", which translators write), and each "%%" by "%". Everything else is kept as it is: the format comes from the
/// host's translations, so a mistake in it must do no harm.
std::string fillInNumber(std::string_view format, int number);

#endif
