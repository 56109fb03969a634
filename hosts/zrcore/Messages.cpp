#include "Messages.h"

#include <algorithm>

void Messages::remark(std::string_view file, const readers::Remark& remark) {
  if (++remarks_ > kMostRemarks) return;
  const std::string_view kind = remark.severity == readers::Severity::warning ? "warning: " : "";
  about(std::string(file) + ":" + std::to_string(remark.line), std::string(kind) + remark.text);
}

void Messages::endRemarks(std::string_view file) {
  if (remarks_ > kMostRemarks) about(file, "… and " + std::to_string(remarks_ - kMostRemarks) + " more");
  remarks_ = 0;
}

void Messages::about(std::string_view subject, std::string_view text) {
  say(std::string(subject) + ": " + std::string(text));
}

void Messages::say(std::string_view text) { writeLine_("zrcore: " + std::string(text)); }

std::string shownName(std::string_view path) {
  if (path == "-") return "standard input";
  std::string name(path);
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; }, '?');
  return name;
}
