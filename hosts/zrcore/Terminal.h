// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_TERMINAL_H
#define ZRCORE_HOSTS_ZRCORE_TERMINAL_H

#include <string>

/// What the terminal behind the standard output can do.
struct Terminal {
  int columns = 80;
  int rows = 24;
  bool color = false;    ///< NO_COLOR is not set
  bool unicode = false;  ///< the locale's characters are UTF-8

  /// Whether standard output is a terminal whose lines can be drawn again.
  static bool canRedraw();

  /// As it is now: a window may have changed its size.
  static Terminal current();

  enum class Style { plain, bold, red, green };
  /// The text in that style, where the terminal is to show any.
  std::string styled(Style style, const std::string& text) const;
};

#endif
