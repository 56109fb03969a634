// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TEXT_WHITESPACE_H
#define ZRCORE_TEXT_WHITESPACE_H

#include <string_view>

namespace text {

/// A part of `text` (UTF-8) without the white space and line breaks at its ends: U+0009 to U+000D, U+0020, U+0085,
/// U+00A0, U+1680, U+2000 to U+200B, U+2028, U+2029, U+202F, U+205F and U+3000, the platform's set. Bytes that are not
/// UTF-8 are not white space.
std::string_view trimmedOfWhitespace(std::string_view text) noexcept;

}  // namespace text

#endif
