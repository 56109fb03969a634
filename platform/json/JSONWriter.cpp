// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZROHMWalk.h>
#include <ZRCore/ZRPrintableText.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "JSON.h"

namespace {

/// A document as deep as values may be would be mostly blanks.
constexpr std::size_t kDeepestIndentation = 100;

/// Appends a text of JSON. What a terminal would obey is escaped in it, though JSON need not.
void appendWithEscapes(std::string& to, std::string_view json) {
  while (!json.empty()) {
    std::size_t length = ZRPrintableLength(json);
    if (length > 0) {
      to += json.substr(0, length);
    } else {  // a character of up to three bytes
      const auto first = static_cast<unsigned char>(json[0]);
      length = first < 0x80 ? 1 : first < 0xE0 ? 2 : 3;
      unsigned code = length == 1 ? first : first & (0xFFU >> (length + 1));
      for (std::size_t i = 1; i < length; ++i) code = code << 6U | (static_cast<unsigned char>(json[i]) & 0x3FU);
      constexpr std::string_view kDigits = "0123456789abcdef";
      to += "\\u";
      for (unsigned shift = 16; shift > 0; shift -= 4) to += kDigits[code >> (shift - 4) & 0xFU];
    }
    json.remove_prefix(length);
  }
}

class Writer {
 public:
  explicit Writer(ZRJSONLayout layout) : isPretty_(layout == ZRJSONLayout::pretty) {}

  bool leaf(const ZROHMValue& value) {
    switch (value.kind()) {
      case ZROHMValue::Kind::null:
        text += "null";
        return true;
      case ZROHMValue::Kind::number:
        return number(value);
      case ZROHMValue::Kind::string:
        return string(*value.string());
      default:
        return fail(value.coordinate() ? "a coordinate" : "an object reference");
    }
  }

  bool begin(const ZROHMValue& value) {
    text += value.array() ? '[' : '{';
    path_.emplace_back();
    return true;
  }

  void end(const ZROHMValue& value) {
    const bool isEmpty = text.back() == '[' || text.back() == '{';
    path_.pop_back();
    if (!isEmpty) newLine();
    text += value.array() ? ']' : '}';
  }

  void element(std::size_t position) {
    if (position > 0) text += ',';
    path_.back() = {nullptr, position};
    newLine();
  }

  void entry(std::size_t position, const std::string& key) {
    if (position > 0) text += ',';
    path_.back() = {&key, position};
    newLine();
    string(key);
    text += isPretty_ ? ": " : ":";
  }

  std::string text;
  std::string fault;

 private:
  struct Step {
    const std::string* key = nullptr;
    std::size_t position = 0;
  };

  void newLine() {
    if (isPretty_) text.append("\n").append(2 * std::min(path_.size(), kDeepestIndentation), ' ');
  }

  bool number(const ZROHMValue& value) {
    if (value.isBoolean()) {
      text += value.doubleValue() != 0.0 ? "true" : "false";
    } else if (value.numberType() == ZROHMValue::NumberType::real) {
      return real(value.doubleValue());
    } else {
      text += value.text();
    }
    return true;
  }

  bool real(double value) {
    if (!std::isfinite(value)) return fail("the number " + ZROHMValue(value).text());
    char digits[32];
    const auto result = std::to_chars(digits, digits + sizeof digits, value);
    const std::string_view shortest(digits, static_cast<std::size_t>(result.ptr - digits));
    text += shortest;
    if (shortest.find_first_of(".e") == shortest.npos) text += ".0";
    return true;
  }

  bool string(const std::string& content) {
    const bool needsCare = std::any_of(content.begin(), content.end(), [](char c) {
      return static_cast<unsigned char>(c) < 0x20 || static_cast<unsigned char>(c) > 0x7E || c == '"' || c == '\\';
    });
    if (!needsCare) {
      text.append("\"").append(content).append("\"");
      return true;
    }
    try {
      appendWithEscapes(text, nlohmann::json(content).dump());
      return true;
    } catch (const nlohmann::json::type_error&) {
      return fail("a text that is not UTF-8");
    }
  }

  bool fail(const std::string& what) {
    if (!fault.empty()) return false;  // the first fault stands
    std::string place;
    for (const auto& [key, position] : path_) {
      if (key == nullptr) {
        place += '[' + std::to_string(position) + ']';
      } else {
        place += (place.empty() ? "" : ".") + *key;
      }
    }
    const std::string shown = ZRPrintableText(place, ZRLongestExcerpt);
    fault = "JSON cannot say " + what + (place.empty() ? "." : ", which stands at " + shown + ".");
    return false;
  }

  const bool isPretty_;
  std::vector<Step> path_;
};

}  // namespace

std::variant<std::string, NSError> writeJSON(const ZROHMValue& value, ZRJSONLayout layout) {
  Writer writer(layout);
  ZROHMWalk(value, writer);
  if (!writer.fault.empty()) {
    return NSError{NSCocoaErrorDomain, NSJSONFailureCode, {{NSLocalizedDescriptionKey, std::move(writer.fault)}}};
  }
  return std::move(writer.text);
}
