// SPDX-License-Identifier: Apache-2.0
#include "SystemVersion.h"

#include <charconv>
#include <cstdint>
#include <limits>

namespace {

/// Takes the first component off `version`.
std::uint64_t takeComponent(std::string_view& version) {
  const auto point = version.find('.');
  const std::string_view component = version.substr(0, point);
  version.remove_prefix(point == std::string_view::npos ? version.size() : point + 1);
  std::uint64_t number = 0;
  const auto read = std::from_chars(component.data(), component.data() + component.size(), number);
  return read.ec == std::errc::result_out_of_range ? std::numeric_limits<std::uint64_t>::max() : number;
}

}  // namespace

bool isVersionBelow(std::string_view version, std::string_view other) {
  while (!version.empty() || !other.empty()) {
    const std::uint64_t left = takeComponent(version), right = takeComponent(other);
    if (left != right) return left < right;
  }
  return false;
}

float speechRateForVersion(const std::optional<std::string_view>& version) {
  if (version && isVersionBelow(*version, "8.0")) return 0.25F;
  if (version && isVersionBelow(*version, "9.0")) return 0.12F;
  return 0.5F;
}

bool versionHasSilenceHint(const std::optional<std::string_view>& version) {
  return !version || !isVersionBelow(*version, "8.0");
}
