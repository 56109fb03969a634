// SPDX-License-Identifier: Apache-2.0
#include "Messages.h"

#include <trip/ShownPath.h>

#include <cstdio>

void Messages::writeToStandardError(std::string_view line) {
  std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
}

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

void Messages::say(std::string_view text) { writeLine_("zrcore: " + ZRPrintableText(text)); }

std::string inQuotes(std::string_view text) { return std::string(1, '\'').append(excerpt(text)).append(1, '\''); }

std::string shownName(std::string_view path) { return path == "-" ? "standard input" : trip::shownPath(path); }
