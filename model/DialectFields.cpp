// SPDX-License-Identifier: Apache-2.0
#include "DialectFields.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <utility>

std::optional<double> finiteNumber(const ZROHMValue& value) {
  double number = 0.0;
  if (const std::string* const text = value.string()) {
    const char* const end = text->data() + text->size();
    const auto [rest, error] = std::from_chars(text->data(), end, number);
    if (error != std::errc() || rest != end) return std::nullopt;
  } else if (value.isNumber() && !value.isBoolean()) {
    number = value.doubleValue();
  } else {
    return std::nullopt;
  }
  return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

DialectFields::DialectFields(const ZROHMDictionary* entries, std::string path, ZRGeoAddressReading& reading)
    : entries_(entries),
      path_(std::move(path)),
      reading_(reading),
      asked_(entries != nullptr ? entries->size() : 0, false) {}

DialectFields::~DialectFields() {
  for (std::size_t i = 0; i < asked_.size(); ++i) {
    if (!asked_[i]) reading_.unknownKeys.push_back(pathOf((entries_->begin() + static_cast<std::ptrdiff_t>(i))->first));
  }
}

std::string DialectFields::pathOf(std::string_view key) const { return path_ + std::string(key); }

void DialectFields::noteUnusable(std::string_view key) { reading_.unusableKeys.push_back(pathOf(key)); }

const ZROHMValue* DialectFields::value(std::string_view key) {
  const std::size_t position = entries_ != nullptr ? entries_->indexOf(key) : 0;
  if (position >= asked_.size()) return nullptr;
  asked_[position] = true;
  reading_.hasKnownKeys = true;
  const ZROHMValue& found = (entries_->begin() + static_cast<std::ptrdiff_t>(position))->second;
  return found.isNull() ? nullptr : &found;
}

std::optional<std::string> DialectFields::text(std::string_view key) {
  const ZROHMValue* const found = value(key);
  if (found == nullptr) return std::nullopt;
  if (found->string() == nullptr && (!found->isNumber() || found->isBoolean())) {
    noteUnusable(key);
    return std::nullopt;
  }
  std::string text = found->text();
  return text.empty() ? std::nullopt : std::optional(std::move(text));
}

std::optional<std::string> DialectFields::firstText(std::initializer_list<std::string_view> keys) {
  std::optional<std::string> first;
  for (const std::string_view key : keys) {
    auto found = text(key);
    if (!first) first = std::move(found);
  }
  return first;
}

std::optional<double> DialectFields::number(std::string_view key) {
  const ZROHMValue* const found = value(key);
  if (found == nullptr) return std::nullopt;
  const auto number = finiteNumber(*found);
  if (!number) noteUnusable(key);
  return number;
}

DialectFields DialectFields::inside(std::string_view key) {
  const ZROHMValue* const found = value(key);
  const ZROHMDictionary* const entries = found != nullptr ? found->dictionary() : nullptr;
  if (found != nullptr && entries == nullptr) noteUnusable(key);
  return DialectFields(entries, pathOf(key) + ".", reading_);
}
