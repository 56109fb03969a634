// SPDX-License-Identifier: Apache-2.0
#include "Terminal.h"

#include <langinfo.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string_view>

namespace {

std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

}  // namespace

bool Terminal::canRedraw() {
  const std::string_view kind = environment("TERM");
  return ::isatty(STDOUT_FILENO) == 1 && !kind.empty() && kind != "dumb";
}

Terminal Terminal::current() {
  Terminal terminal;
  winsize size{};
  if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 && size.ws_row > 0) {
    terminal.columns = size.ws_col;
    terminal.rows = size.ws_row;
  }
  terminal.color = environment("NO_COLOR").empty();
  terminal.unicode = std::string_view(::nl_langinfo(CODESET)) == "UTF-8";
  return terminal;
}

std::string Terminal::styled(Style style, const std::string& text) const {
  constexpr std::array<const char*, 4> kCodes{"", "\x1b[1m", "\x1b[31m", "\x1b[32m"};
  if (!color || style == Style::plain) return text;
  return kCodes.at(static_cast<std::size_t>(style)) + text + "\x1b[0m";
}
