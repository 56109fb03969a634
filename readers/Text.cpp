// SPDX-License-Identifier: Apache-2.0
#include "Text.h"

#include <ZRCore/ZRPrintableText.h>
#include <text/Numbers.h>

#include <cmath>

namespace readers {

std::string inQuotes(std::string_view text) {
  constexpr std::size_t kMostShown = 40;
  return '"' + ZRPrintableText(text, kMostShown) + '"';
}

std::optional<double> parseNumber(std::string_view text) {
  text = trimmed(text);
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  const auto number = text::numberIn<double>(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<int> parseDigits(std::string_view text) {
  return text.size() <= 9 && !text.starts_with('-') ? text::numberIn<int>(text) : std::nullopt;
}

}  // namespace readers
