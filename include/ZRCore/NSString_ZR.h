// SPDX-License-Identifier: Apache-2.0
/// @file
/// Texts: blanks, ordinals, percent-escaping for queries. Texts are UTF-8; every operation is for any thread.
#ifndef ZRCORE_NSSTRING_ZR_H
#define ZRCORE_NSSTRING_ZR_H

#include <ZRCore/ZRExport.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace NSString_ZR {

/// Whether `string` is absent, empty, or nothing but whitespace and newlines (as in `stripWhitespace`).
ZR_EXPORT bool isBlank(std::optional<std::string_view> string);

/// `string` without the whitespace and newline characters at both ends: the 26 characters U+0009 to U+000D, U+0020,
/// U+0085, U+00A0, U+1680, U+2000 to U+200B, U+2028, U+2029, U+202F, U+205F, U+3000.
ZR_EXPORT std::string stripWhitespace(std::string_view string);

/// `number` with its English ordinal suffix, where the system's language is English or none; elsewhere the number
/// alone. Only 11, 12 and 13 themselves are exempt from "st", "nd", "rd": 111 gives "111st", in every
/// application of the kit alike. Negative numbers take "th".
/// @param number  written as its low 32 bits, signed; the suffix goes by the whole number.
ZR_EXPORT std::string stringOrdinalFor(std::int64_t number);

/// `string` escaped as the value of a query parameter: each byte that is not a letter, a digit or one of "-_.~%"
/// becomes "%" and two upper-case hexadecimal digits. "%" is left alone, so that a text that is escaped
/// already is not escaped again; a stray "%" therefore passes too, and makes an address that no parser takes.
/// @return absent for an absent text and for bytes that are not UTF-8.
ZR_EXPORT std::optional<std::string> urlQueryParameterEscaped(std::optional<std::string_view> string);

/// The same for the key of a query parameter: square brackets are left alone too, so that "a[0].b" stays.
ZR_EXPORT std::optional<std::string> urlQueryParameterKeyEscaped(std::optional<std::string_view> string);

/// The same two, written into a buffer of the caller's, without an allocation. Additions. Any thread.
/// @param buffer    `capacity` bytes, which must not overlap `string`; no zero ends the text, and what is left of the
///                  buffer behind it may have changed
/// @param capacity  three times the text's length and one more always suffices, and is quickest
/// @return          the escaped text's length in bytes; when that is more than `capacity`, nothing has been written.
///                  Absent for bytes that are not UTF-8.
ZR_EXPORT std::optional<std::size_t> urlQueryParameterEscapedInto(char* buffer, std::size_t capacity,
                                                                  std::string_view string);
ZR_EXPORT std::optional<std::size_t> urlQueryParameterKeyEscapedInto(char* buffer, std::size_t capacity,
                                                                     std::string_view string);

/// `base` and `path` with one "/" put between them, unless `base` ends in one; a slash that `path` begins with stays
/// ("x/" and "/y" give "x//y"). With a blank path: `base`.
ZR_EXPORT std::string stringWithBaseUrlStringPath(std::string_view base, std::optional<std::string_view> path);

}  // namespace NSString_ZR

#endif
