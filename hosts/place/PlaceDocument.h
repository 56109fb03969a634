// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_PLACE_PLACEDOCUMENT_H
#define ZRCORE_HOSTS_PLACE_PLACEDOCUMENT_H

#include <ZRCore/ZRGeoAddressDialects.h>
#include <ZRCore/ZRJSONService.h>
#include <ZRCore/ZRPlace.h>

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace place {

/// One place of a service's answer.
struct Result {
  std::size_t number = 0;  ///< its position in the answer, from 1
  std::shared_ptr<ZRPlace> place;
};

/// What could not be used.
struct Fault {
  std::size_t number = 0;  ///< of the result; 0: the answer as a whole
  std::string text;
};

/// A service's answer.
struct Document {
  std::vector<Result> results;
  std::vector<Fault> faults;
  std::map<std::string, std::size_t> unknownKeys;  ///< key paths that no part of a place is made from, and how often
};

/// The dialect that a result looks like; documented when it looks like none.
ZRGeoAddressDialect detectDialect(const ZROHMValue& result);

/// Reads an answer: one result, an array of them, or an object with a list of them under "results" or "features". Never
/// fails: what is damaged is among the faults, and the rest is read.
/// @param dialect  nothing: each result's dialect is told by what it looks like.
Document readDocument(const ZRJSONService& json, std::string_view bytes, std::optional<ZRGeoAddressDialect> dialect);

/// The dialects' names for people, and back; nothing for other names.
std::string_view nameOfDialect(ZRGeoAddressDialect dialect);
std::optional<ZRGeoAddressDialect> dialectNamed(std::string_view name);

}  // namespace place

#endif
