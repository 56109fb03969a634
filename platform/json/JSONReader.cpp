// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRJSON.h>
#include <ZRCore/ZRPrintableText.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "JSON.h"
#include "JSONBytes.h"

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

/// Tells a listener what the library reads; there is no tree in between.
template <class Listener>
class Teller final : public nlohmann::json_sax<nlohmann::json> {
 public:
  Teller(std::string_view document, std::uint64_t mostValues, Listener& listener)
      : document_(document), mostValues_(mostValues), listener_(listener) {}

  /// @return what is wrong with the document
  std::optional<NSError> read() {
    if (isOrdinary(document_)) {
      nlohmann::json::sax_parse(document_.begin(), document_.end(), this);
    } else {
      nlohmann::json::sax_parse(JSONBytes::Iterator(given_), JSONBytes::Iterator(), this);
      if (const auto end = given_.endlessWord()) return failure(placeOf(*end) + "a number does not end", end);
    }
    return std::move(error_);
  }

  bool null() override { return scalar(nullptr); }
  bool boolean(bool value) override { return scalar(value); }
  bool number_integer(number_integer_t value) override { return scalar(value); }
  /// Comes for every integer without a sign.
  bool number_unsigned(number_unsigned_t value) override {
    return value <= static_cast<number_unsigned_t>(INT64_MAX) ? scalar(static_cast<std::int64_t>(value))
                                                              : scalar(value);
  }
  bool number_float(number_float_t value, const string_t&) override { return scalar(value); }
  bool string(string_t& text) override { return scalar(std::move(text)); }
  bool binary(binary_t&) override { return false; }  // not in texts

  bool start_object(std::size_t) override {
    if (!open()) return false;
    listener_.beginObject();
    return true;
  }
  bool start_array(std::size_t) override {
    if (!open()) return false;
    listener_.beginArray();
    return true;
  }
  bool key(string_t& text) override {
    if (!count()) return false;
    listener_.key(std::move(text));
    return true;
  }
  bool end_object() override {
    --depth_;
    listener_.endObject();
    return true;
  }
  bool end_array() override {
    --depth_;
    listener_.endArray();
    return true;
  }

  bool parse_error(std::size_t count, const std::string&, const nlohmann::detail::exception& what) override {
    // The library's sentence begins with a code of its own in brackets, and knows nothing of the bytes left out.
    const std::size_t position = isOrdinary(document_) ? count - 1 : given_.positionOf(count);
    std::string_view sentence = what.what();
    sentence.remove_prefix(std::min(sentence.find("] ") + 2, sentence.size()));
    if (sentence.starts_with("parse error at line ")) sentence.remove_prefix(sentence.find(": ") + 2);
    error_ = failure(placeOf(position) + excerptOf(sentence), position);
    return false;
  }

  bool isFragment = false;

 private:
  bool count() {
    if (++values_ <= mostValues_) return true;
    error_ = {ZRDocumentErrorDomain,
              ZRDocumentErrorTooManyValues,
              {{NSLocalizedDescriptionKey, "The JSON document has more than " + std::to_string(mostValues_) +
                                               " values and keys, the most that are read: ask for less, or raise the "
                                               "platform's limit."}}};
    return false;
  }

  bool open() {
    if (depth_ >= ZRJSONDeepestNesting) {
      error_ = failure("The JSON document is nested deeper than " + std::to_string(ZRJSONDeepestNesting) + " levels.");
      return false;
    }
    ++depth_;
    return count();
  }

  bool scalar(ZROHMValue&& value) {
    if (!count()) return false;
    isFragment = isFragment || depth_ == 0;
    listener_.scalar(std::move(value));
    return true;
  }

  std::string placeOf(std::size_t position) const {
    const std::string_view before = document_.substr(0, position);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const std::size_t column = position - (before.rfind('\n') + 1) + 1;
    return "The JSON document cannot be read: line " + std::to_string(line) + ", column " + std::to_string(column) +
           ": ";
  }

  std::string_view document_;
  JSONBytes given_{document_};
  const std::uint64_t mostValues_;
  std::uint64_t values_ = 0;
  Listener& listener_;
  std::optional<NSError> error_;
  std::size_t depth_ = 0;
};

template <class Listener>
std::optional<NSError> tell(std::string_view bytes, ZRJSONFragments fragments, std::uint64_t mostValues,
                            Listener& listener) {
  Teller<Listener> teller(bytes, mostValues, listener);
  if (auto error = teller.read()) return error;
  // The library takes a NUL byte for the end and looks no further.
  if (const std::size_t position = bytes.find('\0'); position != bytes.npos) {
    return failure("The JSON document cannot be read: it has a NUL byte.", position);
  }
  if (teller.isFragment && fragments == ZRJSONFragments::refused) {
    return failure("The JSON document is neither an object nor an array.");
  }
  return std::nullopt;
}

}  // namespace

ZRJSONListener::~ZRJSONListener() = default;

std::optional<NSError> ZRReadJSON(std::string_view bytes, ZRJSONFragments fragments, ZRJSONListener& listener) {
  return tell(bytes, fragments, UINT64_MAX, listener);
}

std::variant<ZROHMValue, NSError> readJSONCarefully(std::string_view bytes, ZRJSONFragments fragments,
                                                    std::uint64_t mostValues) {
  ZRJSONBuilder builder;
  if (auto error = tell(bytes, fragments, mostValues, builder)) return *std::move(error);
  return builder.take();
}

void ZRJSONBuilder::endObject() {
  ZROHMDictionary entries = std::move(levels_.back().entries);
  levels_.pop_back();
  add(std::move(entries));
}

void ZRJSONBuilder::endArray() {
  ZROHMArray elements = std::move(levels_.back().elements);
  levels_.pop_back();
  add(std::move(elements));
}

void ZRJSONBuilder::add(ZROHMValue&& value) {
  if (levels_.empty()) {
    root_ = std::move(value);
  } else if (levels_.back().isArray) {
    levels_.back().elements.push_back(std::move(value));
  } else {
    levels_.back().entries.set(std::move(levels_.back().key), std::move(value));
  }
}

ZROHMValue ZRJSONBuilder::take() { return std::exchange(root_, {}); }
