// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeoAddress.h>
#include <text/ASCII.h>

#include <array>
#include <utility>

namespace {

struct QualityText {
  ZRGeoAddressQuality level;
  std::string_view written;
  std::string_view read;  ///< in small letters; empty: not read
};

// The columns differ, and other programs depend on both.
constexpr std::array<QualityText, 10> kTexts{{
    {ZRGeoAddressQualityUnknown, "unknown", ""},
    {ZRGeoAddressQualitySideOfStreet, "side_of_street", "sideofstreet"},
    {ZRGeoAddressQualityAddress, "address", "address"},
    {ZRGeoAddressQualityStreet, "street", "street"},
    {ZRGeoAddressQualityIntersection, "intersection", "intersection"},
    {ZRGeoAddressQualityZip, "zip", "zip"},
    {ZRGeoAddressQualityCity, "city", "city"},
    {ZRGeoAddressQualityCounty, "county", "county"},
    {ZRGeoAddressQualityState, "state", "state"},
    {ZRGeoAddressQualityCountry, "country", "country"},
}};

/// What the services' codes begin with.
constexpr std::array<std::pair<std::string_view, ZRGeoAddressQuality>, 15> kCodes{{
    {"A1", ZRGeoAddressQualityCountry},
    {"A3", ZRGeoAddressQualityState},
    {"XX", ZRGeoAddressQualityState},
    {"A4", ZRGeoAddressQualityCounty},
    {"A5", ZRGeoAddressQualityCity},
    {"A6", ZRGeoAddressQualityNeighborhood},
    {"Z1", ZRGeoAddressQualityZip},
    {"ZIP", ZRGeoAddressQualityZip},
    {"L1", ZRGeoAddressQualityAddress},
    {"DB", ZRGeoAddressQualityAddress},
    {"P1", ZRGeoAddressQualitySideOfStreet},
    {"I1", ZRGeoAddressQualityIntersection},
    {"B", ZRGeoAddressQualityStreet},
    {"Z2", ZRGeoAddressQualityStreet},
    {"Z3", ZRGeoAddressQualityStreet},
}};

constexpr std::array<std::uint64_t, 10> kZooms{15, 16, 16, 15, 15, 11, 11, 11, 11, 5};
constexpr std::uint64_t kZoomOfOtherLevels = 15;

}  // namespace

std::uint64_t ZRGeoAddress::geoQuality() const {
  if (geoQuality_ != ZRGeoAddressQualityUnknown) return geoQuality_;
  const std::optional<std::string>& code = resultCode_ ? resultCode_ : qualityCode_;
  if (!code) return ZRGeoAddressQualityUnknown;
  for (const auto& [prefix, level] : kCodes) {
    if (code->starts_with(prefix)) return geoQuality_ = level;
  }
  return ZRGeoAddressQualityUnknown;
}

std::optional<std::string> ZRGeoAddress::stringForGeoQuality(std::uint64_t level) {
  return level < kTexts.size() ? std::optional<std::string>(kTexts[level].written) : std::nullopt;
}

std::uint64_t ZRGeoAddress::geoQualityForString(std::string_view text) {
  for (const QualityText& row : kTexts) {
    if (!row.read.empty() && text::isSameInAnyCase(text, row.read)) return row.level;
  }
  return ZRGeoAddressQualityUnknown;
}

std::uint64_t ZRGeoAddress::zoomLevelForGeoQuality() const {
  const std::uint64_t level = geoQuality();
  return level < kZooms.size() ? kZooms[level] : kZoomOfOtherLevels;
}
