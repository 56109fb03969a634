// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_PLACE_PLACEDOCUMENT_H
#define ZRCORE_HOSTS_PLACE_PLACEDOCUMENT_H

#include <ZRCore/ZRGeoAddressDialects.h>
#include <ZRCore/ZRPlace.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace place {

/// One place of a service's answer.
struct Result {
  std::uint64_t number = 0;  ///< its position in the answer, from 1
  std::shared_ptr<ZRPlace> place;
};

/// What could not be used.
struct Fault {
  std::uint64_t number = 0;  ///< of the result; 0: the answer as a whole
  std::string text;
};

/// What became of a service's answer beside its places. Its size does not grow with the answer's.
struct Account {
  static constexpr std::size_t kMostFaults = 20;
  static constexpr std::size_t kMostKeys = 1000;

  std::vector<Fault> faults;  ///< the first kMostFaults, and after them what is wrong with the answer as a whole
  std::uint64_t faultCount = 0;
  std::map<std::string, std::uint64_t> unknownKeys;  ///< key paths that no part of a place is made from, and how often;
                                                     ///< the first kMostKeys
  std::uint64_t unknownCount = 0;                    ///< of entries, under whatever key
};

/// Reads an answer, a place at a time: one result, a list of them, or an object with results in it, however deep. The
/// lists under "results", "features", "addresses", "places" and "locations" (in any case) come before all else in an
/// object. Never fails: what is damaged is among the faults, and the rest is read.
/// @param dialect  nothing: each result's dialect is told by its keys.
/// @param take     gets the places in their order
Account readDocument(std::string_view bytes, std::optional<ZRGeoAddressDialect> dialect,
                     const std::function<void(Result)>& take);

/// The dialect of that name; nothing for other names.
std::optional<ZRGeoAddressDialect> dialectNamed(std::string_view name);

}  // namespace place

#endif
