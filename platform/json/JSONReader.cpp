// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRPrintableText.h>

#include <nlohmann/json.hpp>
#include <optional>
#include <utility>
#include <vector>

#include "JSON.h"

namespace {

NSError failure(std::string sentence, std::optional<std::size_t> position = {}) {
  NSError error{NSCocoaErrorDomain, NSJSONFailureCode, {{NSLocalizedDescriptionKey, std::move(sentence)}}};
  if (position) error.userInfo.emplace(NSJSONSerializationErrorIndex, std::to_string(*position));
  return error;
}

/// The library's sentence, in which the last token stands in quotation marks, be it as long as the document.
std::string excerptOf(std::string_view sentence) {
  const auto token = sentence.find('\''), end = sentence.rfind('\'');
  if (token == sentence.npos || end <= token) return ZRPrintableText(sentence, 2 * ZRLongestExcerpt);
  const auto inside = sentence.substr(token + 1, end - token - 1);
  return std::string(sentence.substr(0, token + 1)) + ZRPrintableText(inside, ZRLongestExcerpt) +
         std::string(sentence.substr(end));
}

/// Builds the value while the document is read; there is no second tree.
class Builder final : public nlohmann::json_sax<nlohmann::json> {
 public:
  bool null() override { return add(nullptr); }
  bool boolean(bool value) override { return add(value); }
  bool number_integer(number_integer_t value) override { return add(value); }
  /// Comes for every integer without a sign.
  bool number_unsigned(number_unsigned_t value) override {
    return value <= static_cast<number_unsigned_t>(INT64_MAX) ? add(static_cast<std::int64_t>(value)) : add(value);
  }
  bool number_float(number_float_t value, const string_t&) override { return add(value); }
  bool string(string_t& text) override { return add(std::move(text)); }
  bool binary(binary_t&) override { return false; }  // not in texts

  bool start_object(std::size_t) override { return open(false); }
  bool start_array(std::size_t) override { return open(true); }
  bool key(string_t& text) override {
    levels_.back().key = std::move(text);
    return true;
  }
  bool end_object() override {
    ZROHMDictionary entries = std::move(levels_.back().entries);
    levels_.pop_back();
    return add(std::move(entries));
  }
  bool end_array() override {
    ZROHMArray elements = std::move(levels_.back().elements);
    levels_.pop_back();
    return add(std::move(elements));
  }

  bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception& what) override {
    // The library counts from 1, its sentence begins with a code of its own in brackets.
    const std::string_view sentence = what.what();
    const std::size_t afterCode = sentence.find("] ");
    error = failure("The JSON document cannot be read: " +
                        excerptOf(sentence.substr(afterCode == sentence.npos ? 0 : afterCode + 2)),
                    position > 0 ? position - 1 : 0);
    return false;
  }

  ZROHMValue root;
  std::optional<NSError> error;

 private:
  struct Level {
    bool isArray;
    ZROHMArray elements;
    ZROHMDictionary entries;
    std::string key;
  };

  bool open(bool isArray) {
    if (levels_.size() >= ZRJSONDeepestNesting) {
      error = failure("The JSON document is nested deeper than " + std::to_string(ZRJSONDeepestNesting) + " levels.");
      return false;
    }
    levels_.push_back({isArray, {}, {}, {}});
    return true;
  }

  bool add(ZROHMValue value) {
    if (levels_.empty()) {
      root = std::move(value);
    } else if (levels_.back().isArray) {
      levels_.back().elements.push_back(std::move(value));
    } else {
      levels_.back().entries.set(std::move(levels_.back().key), std::move(value));
    }
    return true;
  }

  std::vector<Level> levels_;
};

}  // namespace

std::variant<ZROHMValue, NSError> readJSON(std::string_view bytes, ZRJSONFragments fragments) {
  Builder builder;
  nlohmann::json::sax_parse(bytes.begin(), bytes.end(), &builder);
  if (builder.error) return *std::move(builder.error);
  // The library takes a NUL byte for the end and looks no further.
  if (const std::size_t position = bytes.find('\0'); position != bytes.npos) {
    return failure("The JSON document cannot be read: it has a NUL byte.", position);
  }
  const bool isFragment = builder.root.array() == nullptr && builder.root.dictionary() == nullptr;
  if (isFragment && fragments == ZRJSONFragments::refused) {
    return failure("The JSON document is neither an object nor an array.");
  }
  return std::move(builder.root);
}
