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

/// The phrase for a time that lies `seconds` back; absent when they are negative or NaN. Numbers beyond an int are the
/// greatest int.
std::optional<InformalInterval> informalInterval(double seconds) noexcept;

/// `format` with the number in place of each "%d", "%i", "%ld", "%li" and "%@" (also written "%1$d" and so on, as
/// translators do to name an argument), and "%" in place of each "%%". Anything else stays as it is: a translation is
/// the host's text, and no mistake in it may do harm.
std::string fillInNumber(std::string_view format, int number);

#endif
