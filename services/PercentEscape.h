// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_SERVICES_PERCENTESCAPE_H
#define ZRCORE_SERVICES_PERCENTESCAPE_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// What of a query a text stands for: the two leave different characters alone.
enum class QueryPart { value, key };

/// The length of `text` once it is escaped.
std::size_t escapedLength(std::string_view text, QueryPart part) noexcept;

/// Appends `text`, escaped, with at most one allocation. @return whether it is UTF-8; nothing is appended when it is
/// not.
[[nodiscard]] bool appendEscaped(std::string& to, std::string_view text, QueryPart part);

/// Writes `text`, escaped, into `buffer` if it fits into `capacity` bytes. @return the length of the escaped text;
/// nothing when it is not UTF-8. Without an allocation.
[[nodiscard]] std::optional<std::size_t> escapeInto(char* buffer, std::size_t capacity, std::string_view text,
                                                    QueryPart part);

#endif
