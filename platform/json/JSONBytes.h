// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_JSON_JSONBYTES_H
#define ZRCORE_PLATFORM_JSON_JSONBYTES_H

#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>

/// A document as nlohmann-json is given it. The library keeps all it has read since the last text or number and quotes
/// that in its errors, a line break as eight bytes: fifty megabytes of blanks and one wrong letter took it a minute and
/// more than a gigabyte. So blanks between values are given as one, and a number that is longer than any number need be
/// ends the document.
class JSONBytes {
 public:
  explicit JSONBytes(std::string_view bytes) : bytes_(bytes) {}

  bool isAtEnd() const { return at_ == bytes_.size(); }
  char current() const { return isBlank() ? ' ' : bytes_[at_]; }

  void advance() {
    const char byte = bytes_[at_];
    const bool wasBlank = isBlank();
    if (isInText_) {
      isInText_ = byte != '"' || isEscaped_;
      isEscaped_ = byte == '\\' && !isEscaped_;
    } else {
      isInText_ = byte == '"';
      wordLength_ = wasBlank || isStructure(byte) ? 0 : wordLength_ + 1;
    }
    last_ = {at_, last_[0]};
    ++given_;
    ++at_;
    while (wasBlank && !isAtEnd() && isBlank()) ++at_;
    if (wordLength_ > kLongestWord) bytes_ = bytes_.substr(0, at_);
  }

  /// Where the `count`th byte that was given stands in the document, from 0. It is one of the last two.
  std::size_t positionOf(std::size_t count) const {
    return count > given_ ? at_ : count == given_ ? last_[0] : last_[1];
  }

  /// Where the document was cut off in a number, or in what is not even that; nothing: it was not.
  std::optional<std::size_t> endlessWord() const {
    return wordLength_ > kLongestWord ? std::optional(at_) : std::nullopt;
  }

  class Iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = char;

    Iterator() = default;  ///< the end
    explicit Iterator(JSONBytes& bytes) : bytes_(&bytes) {}
    char operator*() const { return bytes_->current(); }
    Iterator& operator++() {
      bytes_->advance();
      return *this;
    }
    /// Of an iterator and the end.
    bool operator!=(const Iterator&) const { return !bytes_->isAtEnd(); }

   private:
    JSONBytes* bytes_ = nullptr;
  };

 private:
  static constexpr std::size_t kLongestWord = 65536;

  bool isBlank() const {
    const char byte = bytes_[at_];
    return !isInText_ && (byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t');
  }
  static bool isStructure(char byte) {
    return byte == ',' || byte == ':' || byte == '[' || byte == ']' || byte == '{' || byte == '}';
  }

  std::string_view bytes_;
  std::size_t at_ = 0;
  bool isInText_ = false, isEscaped_ = false;
  std::size_t wordLength_ = 0;
  std::size_t given_ = 0;
  std::array<std::size_t, 2> last_{};  // where the bytes stand that were given last, the last one first
};

#endif
