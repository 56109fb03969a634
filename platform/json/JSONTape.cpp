// SPDX-License-Identifier: Apache-2.0
#include "JSONTape.h"

#include <ZRCore/ZRDocumentLimits.h>
#include <ZRCore/ZRJSONService.h>
#include <simdjson.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>
#include <vector>

#include "JSONBytes.h"

namespace {

/// Longer documents are the careful reader's: simdjson takes up to fourteen bytes for one of the document.
constexpr std::size_t kLongestAtOnce = ZRLongestParsedBodyBytes;
/// Up to this length of a document its memory is kept for the next one.
constexpr std::size_t kSmall = 256 * 1024;
/// Room is made for so many elements or entries before they are there: an object may name one entry a million times.
constexpr std::size_t kMostReserved = 1024;

/// Whether the document cannot have more values and keys than that: each begins the document or stands behind one of
/// these bytes, and takes one byte at least.
bool hasAtMost(std::string_view bytes, std::uint64_t mostValues) {
  if (bytes.size() <= mostValues) return true;
  std::uint64_t bound = 1;
  for (const char before : {',', ':', '[', '{'}) {
    bound += static_cast<std::uint64_t>(std::count(bytes.begin(), bytes.end(), before));
  }
  return bound <= mostValues;
}

/// An array or an object that is being filled.
struct OpenContainer {
  std::size_t end = 0;
  bool isArray = false;
  std::string_view key{};
  ZROHMArray elements{};
  ZROHMDictionary entries{};

  void add(ZROHMValue&& value) {
    if (isArray) {
      elements.push_back(std::move(value));
    } else {
      entries.set(std::string(key), std::move(value));
    }
  }
  ZROHMValue take() { return isArray ? ZROHMValue(std::move(elements)) : ZROHMValue(std::move(entries)); }
};

}  // namespace

struct JSONTape::Parser {
  simdjson::dom::parser parser{kLongestAtOnce};
};

JSONTape::JSONTape() = default;
JSONTape::~JSONTape() = default;

bool JSONTape::read(std::string_view bytes, std::uint64_t mostValues) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  if (bytes.empty() || bytes.size() > kLongestAtOnce) return false;
  if (!isOrdinary(bytes) || !hasAtMost(bytes, mostValues)) return false;
  if (!parser_) parser_ = std::make_unique<Parser>();
  simdjson::dom::parser& parser = parser_->parser;
  if (parser.capacity() < bytes.size() || parser.max_depth() != ZRJSONDeepestNesting) {
    if (parser.allocate(std::max(bytes.size(), parser.capacity()), ZRJSONDeepestNesting) != simdjson::SUCCESS) {
      return false;
    }
  }
  if (parser.parse(bytes.data(), bytes.size()).error() != simdjson::SUCCESS) return false;
  words_ = parser.doc.tape.get();
  texts_ = reinterpret_cast<const char*>(parser.doc.string_buf.get());
  return true;
}

bool JSONTape::isSmall() const { return !parser_ || parser_->parser.capacity() <= kSmall; }

std::string_view JSONTape::textAt(std::size_t place) const {
  const char* const text = texts_ + (words_[place] & ((std::uint64_t{1} << 56U) - 1));
  std::uint32_t length = 0;
  std::memcpy(&length, text, sizeof length);
  return {text + sizeof length, length};
}

ZROHMValue JSONTape::scalarAt(std::size_t place) const {
  switch (kindAt(place)) {
    case '"':
      return textAt(place);
    case 'l':
      return static_cast<std::int64_t>(words_[place + 1]);
    case 'u':
      return words_[place + 1];
    case 'd':
      return std::bit_cast<double>(words_[place + 1]);
    case 't':
      return true;
    case 'f':
      return false;
    default:
      return nullptr;
  }
}

std::size_t JSONTape::after(std::size_t place) const {
  switch (kindAt(place)) {
    case '[':
    case '{':
      return behind(place);
    case 'l':
    case 'u':
    case 'd':
      return place + 2;
    default:
      return place + 1;
  }
}

ZROHMPart JSONTape::partAt(std::size_t place) const {
  switch (kindAt(place)) {
    case '"':
      return ZROHMPart::of(textAt(place));
    case '[':
      return {.kind = ZROHMValue::Kind::array};
    case '{':
      return {.kind = ZROHMValue::Kind::dictionary};
    case 'n':
      return {};
    default:
      return {.kind = ZROHMValue::Kind::number, .value = scalarAt(place)};
  }
}

ZROHMDocument::Content JSONTape::contentOf(std::size_t container) const {
  const char kind = kindAt(container);
  if (kind != '[' && kind != '{') return {};
  return {container + 1, behind(container) - 1};
}

std::size_t JSONTape::nextElement(Content& content) const {
  const std::size_t place = content.next;
  content.next = after(place);
  return place;
}

std::size_t JSONTape::nextEntry(Content& content, std::string_view& key) const {
  key = textAt(content.next++);
  return nextElement(content);
}

ZROHMValue JSONTape::valueAt(std::size_t place) const {
  // A list instead of recursion: documents may be nested deeper than the stack is.
  std::vector<OpenContainer> open;
  while (true) {
    const char kind = kindAt(place);
    const bool isArray = kind == '[';
    ZROHMValue value;
    if (!isArray && kind != '{') {
      value = scalarAt(place);
      place = after(place);
    } else if (countAt(place) == 0) {
      value = isArray ? ZROHMValue(ZROHMArray()) : ZROHMValue(ZROHMDictionary());
      place = behind(place);
    } else {
      OpenContainer& container = open.emplace_back(OpenContainer{.end = behind(place) - 1, .isArray = isArray});
      const std::size_t room = std::min(countAt(place), kMostReserved);
      isArray ? container.elements.reserve(room) : container.entries.reserve(room);
      ++place;
      if (!isArray) container.key = textAt(place++);
      continue;
    }
    while (!open.empty()) {
      open.back().add(std::move(value));
      if (place != open.back().end) {
        if (!open.back().isArray) open.back().key = textAt(place++);
        break;
      }
      value = open.back().take();
      open.pop_back();
      ++place;
    }
    if (open.empty()) return value;
  }
}
