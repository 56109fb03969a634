// SPDX-License-Identifier: Apache-2.0
// What values say of their content: as numbers, as texts, and compared. Nothing here depends on how they keep it.
#include <ZRCore/ZROHMValue.h>
#include <ZRCore/ZROHMWalk.h>

#include <cmath>
#include <utility>

#include "NumberText.h"

namespace {

using NumberType = ZROHMValue::NumberType;

bool isNegativeInteger(const ZROHMValue& number) {
  return number.numberType() == NumberType::signed64 && static_cast<std::int64_t>(number.integerBits()) < 0;
}

/// Compares without rounding: not every integer of 64 bits is a double.
bool isSameNumber(const ZROHMValue& a, const ZROHMValue& b) {
  const bool aIsReal = a.numberType() == NumberType::real;
  const bool bIsReal = b.numberType() == NumberType::real;
  if (aIsReal && bIsReal) return a.doubleValue() == b.doubleValue();
  if (aIsReal) return isSameNumber(b, a);
  if (a.integerBits() != b.integerBits()) return false;
  if (!bIsReal) return isNegativeInteger(a) == isNegativeInteger(b);
  const double real = b.doubleValue();
  const bool isInRange = isNegativeInteger(a) ? real >= -0x1p63 : real < 0x1p64;
  return isInRange && std::trunc(real) == real && isNegativeInteger(a) == (real < 0.0);
}

using Pairs = std::vector<std::pair<const ZROHMValue*, const ZROHMValue*>>;

// Arrays and dictionaries are compared but for their content, which joins the pairs still to compare.

bool sameShallowly(const ZROHMArray& a, const ZROHMArray& b, Pairs& pairs) {
  if (&a == &b) return true;
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) pairs.emplace_back(&a[i], &b[i]);
  return true;
}

bool sameShallowly(const ZROHMDictionary& a, const ZROHMDictionary& b, Pairs& pairs) {
  if (&a == &b) return true;
  if (a.size() != b.size()) return false;
  for (const auto& [key, value] : a) {
    const ZROHMValue* const other = b.find(key);
    if (other == nullptr) return false;
    pairs.emplace_back(&value, other);
  }
  return true;
}

bool sameShallowly(const ZROHMValue& a, const ZROHMValue& b, Pairs& pairs) {
  if (a.kind() != b.kind()) return false;
  switch (a.kind()) {
    case ZROHMValue::Kind::null:
      return true;
    case ZROHMValue::Kind::number:
      return isSameNumber(a, b);
    case ZROHMValue::Kind::string:
      return *a.string() == *b.string();
    case ZROHMValue::Kind::coordinate:
      return a.coordinate()->latitude == b.coordinate()->latitude &&
             a.coordinate()->longitude == b.coordinate()->longitude;
    case ZROHMValue::Kind::object:
      return a.object()->isEqual(b.object().get());
    case ZROHMValue::Kind::array:
      return sameShallowly(*a.array(), *b.array(), pairs);
    case ZROHMValue::Kind::dictionary:
      return sameShallowly(*a.dictionary(), *b.dictionary(), pairs);
  }
  return false;
}

class TextWriter {
 public:
  bool leaf(const ZROHMValue& value) {
    text += value.text();
    return true;
  }
  bool begin(const ZROHMValue& value) {
    text += value.array() ? "(" : "{";
    return true;
  }
  void end(const ZROHMValue& value) { text += value.array() ? "\n)" : ";\n}"; }
  void element(std::size_t position) { text += position == 0 ? "\n" : ",\n"; }
  void entry(std::size_t position, const std::string& key) { text += (position == 0 ? "\n" : ";\n") + key + " = "; }
  std::string text;
};

std::string numberText(const ZROHMValue& number) {
  switch (*number.numberType()) {
    case NumberType::real:
      return doubleText(number.doubleValue());
    case NumberType::unsigned64:
      return std::to_string(number.integerBits());
    default:
      return std::to_string(static_cast<std::int64_t>(number.integerBits()));
  }
}

}  // namespace

double ZROHMValue::doubleValue() const noexcept {
  switch (tag_) {
    case Tag::real:
      return payload_.real;
    case Tag::unsigned64:
      return static_cast<double>(payload_.unsigned64);
    case Tag::boolean:
    case Tag::signed64:
      return static_cast<double>(payload_.signed64);
    case Tag::string:
      return doublePrefix(*string());
    default:
      return 0.0;
  }
}

std::uint64_t ZROHMValue::integerBits() const noexcept {
  switch (tag_) {
    case Tag::real:
      return truncatedBits(payload_.real);
    case Tag::unsigned64:
      return payload_.unsigned64;
    case Tag::boolean:
    case Tag::signed64:
      return static_cast<std::uint64_t>(payload_.signed64);
    case Tag::string:
      return integerPrefixBits(*string());
    default:
      return 0;
  }
}

std::string ZROHMValue::text() const {
  switch (kind()) {
    case Kind::null:
      return "<null>";
    case Kind::number:
      return numberText(*this);
    case Kind::string:
      return *string();
    case Kind::coordinate:
      return '<' + doubleText(coordinate()->latitude) + ',' + doubleText(coordinate()->longitude) + '>';
    case Kind::object:
      return object()->description();
    default: {
      TextWriter writer;
      ZROHMWalk(*this, writer);
      return std::move(writer.text);
    }
  }
}

bool operator==(const ZROHMValue& a, const ZROHMValue& b) {
  Pairs pairs{{&a, &b}};
  while (!pairs.empty()) {
    const auto [left, right] = pairs.back();
    pairs.pop_back();
    if (!sameShallowly(*left, *right, pairs)) return false;
  }
  return true;
}
