// SPDX-License-Identifier: Apache-2.0
#include "Outline.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace place {

namespace {

// How a Use is kept in a byte: the kind, or for a result the dialect's number beyond.
constexpr auto kResult = static_cast<std::uint8_t>(Outline::Use::Kind::result);

}  // namespace

bool isListKey(std::string_view key) {
  static constexpr std::array<std::string_view, 5> kKeys{"results", "features", "addresses", "places", "locations"};
  return std::any_of(kKeys.begin(), kKeys.end(), [key](std::string_view known) {
    return std::equal(key.begin(), key.end(), known.begin(), known.end(),
                      [](char ours, char theirs) { return ours == theirs || ours == theirs - 'a' + 'A'; });
  });
}

Outline::Outline(std::optional<ZRGeoAddressDialect> only) {
  const auto dialects = ZRGeoAddressDialects();
  for (std::size_t i = 0; i < dialects.size(); ++i) {
    if (only && dialects[i] != *only) continue;
    for (const std::string_view key : ZRGeoAddressDialectRecogniserKeys(dialects[i])) {
      recogniserKeys_[std::string(key)] |= 1U << i;
      if (const auto dot = key.find('.'); dot != key.npos) paths_.emplace(key.substr(0, dot));
    }
  }
}

std::uint32_t Outline::dialectsWith(const std::string& path) const {
  const auto found = recogniserKeys_.find(path);
  return found != recogniserKeys_.end() ? found->second : 0;
}

void Outline::key(std::string key) {
  Level& level = levels_.back();
  level.dialects |= dialectsWith(key);
  if (!level.path.empty()) levels_[levels_.size() - 2].dialects |= dialectsWith(level.path + key);
  key_ = std::move(key);
}

void Outline::open(bool isArray) {
  Level level{uses_.size(), isArray};
  if (!levels_.empty() && !levels_.back().isArray) {
    if (isArray && isListKey(key_)) levels_.back().hasList = true;
    if (!isArray && paths_.contains(key_)) level.path = key_ + ".";
  }
  levels_.push_back(std::move(level));
  uses_.push_back(0);
}

void Outline::close() {
  const Level level = std::move(levels_.back());
  levels_.pop_back();
  auto use = static_cast<std::uint8_t>(Use::Kind::unknown);
  if (level.hasList) {
    use = static_cast<std::uint8_t>(Use::Kind::listsInside);
  } else if (level.dialects != 0) {
    use = static_cast<std::uint8_t>(kResult + std::countr_zero(level.dialects));
  } else if (level.holdsSomething) {
    use = static_cast<std::uint8_t>(Use::Kind::inside);
  }
  uses_[level.position] = use;
  if (use != 0 && !levels_.empty()) levels_.back().holdsSomething = true;
}

void Outline::finish() {
  while (!levels_.empty()) close();
}

Outline::Use Outline::use(std::size_t position) const {
  const std::uint8_t use = uses_[position];
  if (use < kResult) return {static_cast<Use::Kind>(use)};
  return {Use::Kind::result, ZRGeoAddressDialects()[use - kResult]};
}

}  // namespace place
