// SPDX-License-Identifier: Apache-2.0
/// @file
/// The value that moves between service documents and model objects.
#ifndef ZRCORE_ZROHMVALUE_H
#define ZRCORE_ZROHMVALUE_H

#include <ZRCore/NSObject.h>
#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRGeometry.h>
#include <ZRCore/ZROHMOrderedMap.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

class ZROHMValue;
using ZROHMArray = std::vector<ZROHMValue>;
using ZROHMDictionary = ZROHMOrderedMap<ZROHMValue>;

/// Nothing, a number, a text, an array, a dictionary, a coordinate or an object.
///
/// Copies share what they hold until one of them is changed, so a copy costs a reference count whatever its size. An
/// empty array or dictionary holds nothing. No operation recurses, so a value may be nested as deeply as memory allows.
/// Two threads may use two copies at once, and may read one value at once.
class ZR_EXPORT ZROHMValue {
 public:
  enum class Kind : std::uint8_t { null, number, string, array, dictionary, coordinate, object };
  /// What a number was made of. A boolean is a number that remembers it.
  enum class NumberType : std::uint8_t { boolean, signed64, unsigned64, real };

  ZROHMValue() noexcept = default;
  ZROHMValue(std::nullptr_t) noexcept {}
  ZROHMValue(std::same_as<bool> auto value) noexcept : tag_(Tag::boolean) { payload_.signed64 = value ? 1 : 0; }
  template <std::signed_integral Integer>
  ZROHMValue(Integer value) noexcept : tag_(Tag::signed64) {
    payload_.signed64 = value;
  }
  template <std::unsigned_integral Integer>
  requires(!std::same_as<Integer, bool>) ZROHMValue(Integer value)
  noexcept : tag_(Tag::unsigned64) { payload_.unsigned64 = value; }
  template <std::floating_point Real>
  ZROHMValue(Real value) noexcept : tag_(Tag::real) {
    payload_.real = static_cast<double>(value);
  }
  ZROHMValue(std::string text);  ///< UTF-8
  ZROHMValue(std::string_view text) : ZROHMValue(std::string(text)) {}
  ZROHMValue(const char* text) : ZROHMValue(std::string(text)) {}
  /// An absent text is null.
  ZROHMValue(std::optional<std::string> text);
  ZROHMValue(ZROHMArray elements);
  ZROHMValue(ZROHMDictionary entries);
  ZROHMValue(CLLocationCoordinate2D coordinate);
  /// A reference to an object; an absent object is null.
  ZROHMValue(std::shared_ptr<NSObject> object);
  template <std::derived_from<NSObject> Object>
  requires(!std::same_as<Object, NSObject> && !std::is_const_v<Object>) ZROHMValue(std::shared_ptr<Object> object)
      : ZROHMValue(std::shared_ptr<NSObject>(std::move(object))) {}

  ZROHMValue(const ZROHMValue& other) noexcept;
  ZROHMValue(ZROHMValue&& other) noexcept : tag_(other.tag_), payload_(other.payload_) { other.tag_ = Tag::null; }
  ZROHMValue& operator=(const ZROHMValue& other) noexcept;
  ZROHMValue& operator=(ZROHMValue&& other) noexcept;
  ~ZROHMValue() {
    if (isBoxed()) release();
  }

  Kind kind() const noexcept;
  bool isNull() const noexcept { return tag_ == Tag::null; }
  bool isNumber() const noexcept { return tag_ >= Tag::boolean && tag_ <= Tag::real; }
  bool isBoolean() const noexcept { return tag_ == Tag::boolean; }

  /// What a number was made of; nothing for other kinds.
  std::optional<NumberType> numberType() const noexcept;

  /// @name Contents
  /// The content of a value of that kind; null for a value of another kind. Valid until the value is changed.
  /// @{
  const std::string* string() const noexcept;
  const ZROHMArray* array() const noexcept;
  const ZROHMDictionary* dictionary() const noexcept;
  const CLLocationCoordinate2D* coordinate() const noexcept;
  /// @}
  /// The object referred to; null when the value is not an object reference.
  const std::shared_ptr<NSObject>& object() const noexcept;

  /// The array to change in place, seen by this value alone. A value of another kind becomes an empty array first.
  ZROHMArray& modifiableArray();
  /// The dictionary to change in place, seen by this value alone. A value of another kind becomes an empty one first.
  ZROHMDictionary& modifiableDictionary();

  /// As a double: a number's value; of a text the longest numeric prefix after blanks ("40.5abc" is 40.5, "0x10" and
  /// "inf" are 0; beyond the range of doubles an infinity); 0 for other kinds.
  double doubleValue() const noexcept;

  /// As an integer: a number without its fraction, NaN as 0, beyond [-2^63, 2^64 - 1] the nearest limit; of a text the
  /// longest integer prefix after blanks, likewise; 0 for other kinds. In two's complement: -1 is 2^64 - 1, so that a
  /// narrower integer is its low bits.
  std::uint64_t integerBits() const noexcept;

  /// The value for people and for text properties: integers in decimal, doubles with up to 16 significant digits (as C
  /// prints "%.16g", whatever the locale), booleans as 1 and 0, a text as it is, null as "<null>", an object by its
  /// description. The layout of arrays and dictionaries, over several lines, is not promised.
  std::string text() const;

  /// Whether both are nothing, stand for the same number (whatever its type), or hold equal content: texts byte by
  /// byte, arrays in order, dictionaries in any order, coordinates exactly, objects by their `isEqual`.
  friend ZR_EXPORT bool operator==(const ZROHMValue& a, const ZROHMValue& b);

 private:
  struct Box;
  struct Container;
  struct TextBox;
  struct ArrayBox;
  struct DictionaryBox;
  struct CoordinateBox;
  struct ObjectBox;
  enum class Tag : std::uint8_t {
    null,
    boolean,
    signed64,
    unsigned64,
    real,
    string,
    array,
    dictionary,
    coordinate,
    object
  };
  union Payload {
    std::int64_t signed64;
    std::uint64_t unsigned64;
    double real;
    Box* box;  ///< null for an empty array or dictionary
  };

  bool isBoxed() const noexcept { return tag_ >= Tag::string; }
  void release() noexcept;
  void giveUpContainer(Box*& orphans) noexcept;
  static void destroy(Box* box) noexcept;

  Tag tag_ = Tag::null;
  Payload payload_{};
};

#endif
