// SPDX-License-Identifier: Apache-2.0
#include "Messages.h"

void Messages::remark(std::string_view file, const readers::Remark& remark) {
  const std::string_view kind = remark.severity == readers::Severity::warning ? "warning: " : "";
  oneOfMany(std::string(file) + ":" + std::to_string(remark.line), std::string(kind) + remark.text);
}

void Messages::oneOfMany(std::string_view subject, std::string_view text) {
  if (++remarks_ <= kMostRemarks) about(subject, text);
}

void Messages::endRemarks(std::string_view file) {
  if (remarks_ > kMostRemarks) about(file, "… and " + std::to_string(remarks_ - kMostRemarks) + " more");
  remarks_ = 0;
}

void Messages::about(std::string_view subject, std::string_view text) {
  say(std::string(subject) + ": " + std::string(text));
}

void Messages::say(std::string_view text) { writeLine_("zrcore: " + std::string(text)); }

std::string harmless(std::string_view text) {
  std::string shown;
  for (const char byte : text) {
    const auto code = static_cast<unsigned char>(byte);
    if (code >= 0x80 && code < 0xa0 && !shown.empty() && shown.back() == '\xc2') {
      shown.back() = '?';  // U+0080 to U+009F
    } else {
      shown += code < 0x20 || code == 0x7f ? '?' : byte;
    }
  }
  return shown;
}

std::string shownName(std::string_view path) { return path == "-" ? "standard input" : harmless(path); }
