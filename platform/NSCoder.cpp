// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSCoder.h>
#include <ZRCore/ZROHMClassInfo.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

/// Under which a nested object keeps the name of its class.
constexpr const char* kClassKey = "class";
constexpr int kDeepestObject = 100;

// Doubles that documents have no number for.
constexpr const char* kInfinity = "Infinity";
constexpr const char* kNegativeInfinity = "-Infinity";
constexpr const char* kNaN = "NaN";

double doubleFrom(const ZROHMValue& value) {
  if (value.isNumber()) return value.doubleValue();
  const std::string* const text = value.string();
  if (text == nullptr) return 0.0;
  if (*text == kInfinity) return std::numeric_limits<double>::infinity();
  if (*text == kNegativeInfinity) return -std::numeric_limits<double>::infinity();
  return *text == kNaN ? std::numeric_limits<double>::quiet_NaN() : 0.0;
}

/// Whether a number is negative; -0 and NaN are not.
bool isNegative(const ZROHMValue& number) { return number.doubleValue() < 0.0; }

std::int64_t int64From(const ZROHMValue& value) {
  if (!value.isNumber()) return 0;
  const std::uint64_t bits = value.integerBits();
  constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  return static_cast<std::int64_t>(isNegative(value) ? bits : std::min(bits, kMost));
}

}  // namespace

NSCoding::~NSCoding() = default;
NSCoder::~NSCoder() = default;

ZRMemoryCoder::ZRMemoryCoder(ZRArchivableClasses classes) : classes_(std::move(classes)) {}
ZRMemoryCoder::ZRMemoryCoder(ZROHMDictionary values, ZRArchivableClasses classes)
    : values_(std::move(values)), classes_(std::move(classes)) {}
ZRMemoryCoder::~ZRMemoryCoder() = default;

void ZRMemoryCoder::encodeDoubleForKey(double value, std::string_view key) {
  if (std::isfinite(value)) {
    put(value, key);
  } else {
    put(std::isnan(value) ? kNaN : value > 0.0 ? kInfinity : kNegativeInfinity, key);
  }
}

void ZRMemoryCoder::encodeInt32ForKey(std::int32_t value, std::string_view key) { put(value, key); }

void ZRMemoryCoder::encodeInt64ForKey(std::int64_t value, std::string_view key) { put(value, key); }

void ZRMemoryCoder::encodeBoolForKey(bool value, std::string_view key) { put(value, key); }

void ZRMemoryCoder::encodeStringForKey(const std::optional<std::string>& value, std::string_view key) {
  put(value, key);
}

void ZRMemoryCoder::encodeObjectForKey(const std::shared_ptr<const NSObject>& object, std::string_view key) {
  put(archived(object.get()), key);
}

bool ZRMemoryCoder::containsValueForKey(std::string_view key) const { return values_.contains(key); }

double ZRMemoryCoder::decodeDoubleForKey(std::string_view key) const { return doubleFrom(valueFor(key)); }

std::int32_t ZRMemoryCoder::decodeInt32ForKey(std::string_view key) const {
  using Limits = std::numeric_limits<std::int32_t>;
  const auto value = int64From(valueFor(key));
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

std::int64_t ZRMemoryCoder::decodeInt64ForKey(std::string_view key) const { return int64From(valueFor(key)); }

bool ZRMemoryCoder::decodeBoolForKey(std::string_view key) const { return int64From(valueFor(key)) != 0; }

std::optional<std::string> ZRMemoryCoder::decodeStringForKey(std::string_view key) const {
  const std::string* const text = valueFor(key).string();
  return text != nullptr ? std::optional(*text) : std::nullopt;
}

std::shared_ptr<NSObject> ZRMemoryCoder::decodeObjectForKey(std::string_view key) const {
  const ZROHMDictionary* const values = valueFor(key).dictionary();
  const ZROHMClassInfo* const type = values != nullptr ? classOf(*values) : nullptr;
  if (type == nullptr || depth_ >= kDeepestObject) return nullptr;
  ZRMemoryCoder nested(*values, classes_);
  nested.depth_ = depth_ + 1;
  return type->makeInstance(nested);
}

ZROHMValue ZRMemoryCoder::archived(const NSObject* object) const {
  const auto* const coding = dynamic_cast<const NSCoding*>(object);
  if (coding == nullptr || !object->classInfo().isArchivable() || depth_ >= kDeepestObject) return nullptr;
  const std::string& name = object->classInfo().name();
  ZRMemoryCoder nested(classes_);
  nested.depth_ = depth_ + 1;
  nested.put(name, kClassKey);  // first, for readers
  coding->encodeWithCoder(nested);
  nested.put(name, kClassKey);  // and last, for an object that wrote something else under it
  return std::move(nested.values_);
}

const ZROHMClassInfo* ZRMemoryCoder::classOf(const ZROHMDictionary& values) const {
  const ZROHMValue* const name = values.find(kClassKey);
  if (name == nullptr || name->string() == nullptr) return nullptr;
  const auto found = std::find_if(classes_.begin(), classes_.end(), [&](const ZROHMClassInfo* type) {
    return type->isArchivable() && type->name() == *name->string();
  });
  return found != classes_.end() ? *found : nullptr;
}

void ZRMemoryCoder::put(ZROHMValue value, std::string_view key) { values_.set(std::string(key), std::move(value)); }

const ZROHMValue& ZRMemoryCoder::valueFor(std::string_view key) const {
  static const auto* const absent = new ZROHMValue;
  const ZROHMValue* const found = values_.find(key);
  return found != nullptr ? *found : *absent;
}
