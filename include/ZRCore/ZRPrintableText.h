// SPDX-License-Identifier: Apache-2.0
/// @file
/// Texts from outside (files, servers, users) as logs and messages may show them. Any thread.
#ifndef ZRCORE_ZRPRINTABLETEXT_H
#define ZRCORE_ZRPRINTABLETEXT_H

#include <ZRCore/ZRExport.h>

#include <cstddef>
#include <string>
#include <string_view>

/// As much of one text from outside as a message holds, bytes. Two of them fit into a message, a name and a value.
inline constexpr std::size_t ZRLongestExcerpt = 100;

/// `text` as a part of a line: it does nothing to a terminal, does not turn the direction of what stands beside it, and
/// cannot pass for a second line. Control characters, the separators of lines and paragraphs, the controls of
/// direction (U+202A to U+202E, U+2066 to U+2069) and bytes that are not UTF-8 become "\xHH" for each of their bytes.
/// @param mostBytes  of `text`; where it is longer, whole characters up to there and "..."
ZR_EXPORT std::string ZRPrintableText(std::string_view text, std::size_t mostBytes = std::string_view::npos);

/// The length in bytes of the character that `text` begins with, when that stays as it is; else 0.
ZR_EXPORT std::size_t ZRPrintableLength(std::string_view text) noexcept;

#endif
