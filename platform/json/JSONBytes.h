// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_JSON_JSONBYTES_H
#define ZRCORE_PLATFORM_JSON_JSONBYTES_H

#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>

// nlohmann-json keeps all it has read since the last text or number and quotes it in its errors, a line break as eight
// bytes: fifty megabytes of blanks and one wrong letter took it a minute and more than a gigabyte.

/// Whether there is a text or a number in every 64 KiB of a document, and its end in the next.
bool isOrdinary(std::string_view document);

/// A document that is not ordinary, as the library is given it: blanks between values as one, and its end where a
/// number becomes longer than any number need be.
class JSONBytes {
 public:
  explicit JSONBytes(std::string_view document) : document_(document) {}

  /// Where the `count`th byte that was given stands in the document, from 0. It is the last one, the one before, which
  /// is a number's end, or the end of the document.
  std::size_t positionOf(std::size_t count) const { return count > given_ ? at_ : count == given_ ? last_ : last_ - 1; }

  /// Where the document was cut off in a number, or in what is not even that; nothing: it was not.
  std::optional<std::size_t> endlessWord() const { return isCutOff_ ? std::optional(at_) : std::nullopt; }

  class Iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = char;

    Iterator() = default;  ///< the end
    explicit Iterator(JSONBytes& bytes) : bytes_(&bytes) {}
    char operator*() const { return bytes_->isBlank() ? ' ' : bytes_->document_[bytes_->at_]; }
    Iterator& operator++() {
      bytes_->advance();
      return *this;
    }
    /// Of an iterator and the end.
    bool operator!=(const Iterator&) const { return bytes_->at_ != bytes_->document_.size(); }

   private:
    JSONBytes* bytes_ = nullptr;
  };

 private:
  bool isBlank() const;  // between values
  void advance();

  std::string_view document_;
  std::size_t at_ = 0, last_ = 0, given_ = 0;
  std::size_t wordBegin_ = 0;  // where a number may begin: after what was not part of one
  bool isInText_ = false, isEscaped_ = false, isCutOff_ = false;
};

#endif
