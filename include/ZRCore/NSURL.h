// SPDX-License-Identifier: Apache-2.0
/// @file
/// An address on the web.
#ifndef ZRCORE_NSURL_H
#define ZRCORE_NSURL_H

#include <ZRCore/ZRExport.h>

#include <optional>
#include <string>
#include <utility>

/// A text that the URL parser has taken.
class ZR_EXPORT NSURL {
 public:
  /// Takes a text as an address when each of its characters may stand in one (RFC 2396, and the square brackets of RFC
  /// 2732), each "%" is followed by two hexadecimal digits, and there is at most one "#". Nothing else is
  /// looked at, because callers join addresses from parts: no scheme, host or port is asked for, the empty text is an
  /// address, and nothing is escaped or repaired.
  /// @return absent for every other text. Pure; any thread.
  static std::optional<NSURL> URLWithString(std::string text);

  /// The text, as it was given.
  const std::string& absoluteString() const { return text_; }

  friend bool operator==(const NSURL&, const NSURL&) = default;

 private:
  explicit NSURL(std::string text) : text_(std::move(text)) {}

  std::string text_;
};

#endif
