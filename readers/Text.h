// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reading single values out of text, whatever the locale.
#ifndef ZRCORE_READERS_TEXT_H
#define ZRCORE_READERS_TEXT_H

#include <text/ASCII.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace readers {

/// The longest line, XML tag or XML text that is read. Whatever is longer is damage, not data, and is never collected.
inline constexpr std::size_t kLongestText = std::size_t{64} * 1024;

using text::lowerCase;
using text::trimmed;

/// In quotation marks, shortened and printable.
std::string inQuotes(std::string_view text);

/// A decimal number, the whole of the text but for blanks around it. Nothing for NaN, infinities and numbers beyond a
/// double's range.
std::optional<double> parseNumber(std::string_view text);

/// A number of digits and nothing else. At most nine of them, so that it fits.
std::optional<int> parseDigits(std::string_view text);

}  // namespace readers

#endif
