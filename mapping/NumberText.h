// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_MAPPING_NUMBERTEXT_H
#define ZRCORE_MAPPING_NUMBERTEXT_H

#include <cstdint>
#include <string>
#include <string_view>

// Numbers in texts, whatever the locale.

/// The longest prefix of `text`, after blanks, that is a decimal number; 0 when there is none. Beyond the range of
/// doubles: an infinity, or 0.
double doublePrefix(std::string_view text) noexcept;

/// The longest prefix of `text`, after blanks, that is a decimal integer, in two's complement; 0 when there is none.
/// Beyond [-2^63, 2^64 - 1]: the nearest limit.
std::uint64_t integerPrefixBits(std::string_view text) noexcept;

/// `value` without its fraction, in two's complement; NaN: 0. Beyond [-2^63, 2^64 - 1]: the nearest limit.
std::uint64_t truncatedBits(double value) noexcept;

/// As C prints "%.16g".
std::string doubleText(double value);

#endif
