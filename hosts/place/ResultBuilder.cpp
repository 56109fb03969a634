// SPDX-License-Identifier: Apache-2.0
#include "ResultBuilder.h"

#include <utility>

namespace place {

namespace {

constexpr std::size_t kMostElements = 3;
constexpr std::size_t kLongestText = 65536;
constexpr std::size_t kBytesOfAValue = 64;  // about, beside its text

}  // namespace

/// @return whether there is still room; where there is none, nothing is kept from now on
bool ResultBuilder::charge(std::size_t bytes) {
  bytes_ += bytes;
  if (bytes_ <= kMostBytes) return true;
  builder_ = {};
  skipped_ += std::exchange(elements_, {}).size();
  return false;
}

/// Whether the next value is one that is kept.
bool ResultBuilder::takes(std::size_t bytes) {
  if (skipped_ > 0) return false;
  if (!elements_.empty() && elements_.back() && ++*elements_.back() > kMostElements) return false;
  return charge(kBytesOfAValue + bytes);
}

void ResultBuilder::begin(bool isArray) {
  if (!takes(0)) {
    ++skipped_;
    return;
  }
  elements_.push_back(isArray ? std::optional<std::size_t>(0) : std::nullopt);
  isArray ? builder_.beginArray() : builder_.beginObject();
}

/// @return whether what ends is kept
bool ResultBuilder::end() {
  if (skipped_ > 0) {
    --skipped_;
    return false;
  }
  elements_.pop_back();
  return true;
}

void ResultBuilder::beginObject() { begin(false); }

void ResultBuilder::beginArray() { begin(true); }

void ResultBuilder::key(std::string key) {
  if (skipped_ == 0 && charge(key.size())) builder_.key(std::move(key));
}

void ResultBuilder::endObject() {
  if (end()) builder_.endObject();
}

void ResultBuilder::endArray() {
  if (end()) builder_.endArray();
}

void ResultBuilder::scalar(ZROHMValue value) {
  const std::string* const text = value.string();
  if (text != nullptr && text->size() > kLongestText) {
    beginArray();
    endArray();
  } else if (takes(text != nullptr ? text->size() : 0)) {
    builder_.scalar(std::move(value));
  }
}

std::optional<ZROHMValue> ResultBuilder::take() {
  ZROHMValue value = builder_.take();
  return std::exchange(bytes_, 0) <= kMostBytes ? std::optional(std::move(value)) : std::nullopt;
}

}  // namespace place
