// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_SERVICES_STRICTNUMBER_H
#define ZRCORE_SERVICES_STRICTNUMBER_H

#include <optional>
#include <string_view>

/// The decimal number that `text` is, all of it but for blanks and tabs before: an optional minus, digits with or
/// without a point among, before or after them, and an optional exponent. No plus before the digits, no hexadecimal, no
/// "inf", no separators of thousands. Absent for anything else and beyond the range of doubles; nearer to 0 than they
/// reach: 0.
std::optional<double> strictNumber(std::string_view text) noexcept;

#endif
