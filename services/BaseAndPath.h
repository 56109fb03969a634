// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_SERVICES_BASEANDPATH_H
#define ZRCORE_SERVICES_BASEANDPATH_H

#include <text/Whitespace.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// No joined text is longer.
inline std::size_t longestJoined(std::string_view base, std::optional<std::string_view> path) {
  return base.size() + 1 + path.value_or(std::string_view()).size();
}

/// Appends `base` and, unless it is blank, `path`, with one "/" put between them when `base` does not end in one.
inline void appendJoined(std::string& to, std::string_view base, std::optional<std::string_view> path) {
  to.append(base);
  if (!path || text::trimmedOfWhitespace(*path).empty()) return;
  if (!base.ends_with('/')) to += '/';
  to.append(*path);
}

#endif
