// SPDX-License-Identifier: Apache-2.0
/// @file
/// A failure of a service, as a value.
#ifndef ZRCORE_NSERROR_H
#define ZRCORE_NSERROR_H

#include <map>
#include <string>

/// The key in `userInfo` under which a failure keeps its sentence for people.
inline constexpr const char* NSLocalizedDescriptionKey = "NSLocalizedDescription";

/// A failure of a service. A plain value.
struct NSError {
  std::string domain;                           ///< who reports it
  long code = 0;                                ///< what it is, within the domain
  std::map<std::string, std::string> userInfo;  ///< further facts

  /// The failure in one sentence: the one in `userInfo`, or domain and code.
  std::string localizedDescription() const {
    const auto found = userInfo.find(NSLocalizedDescriptionKey);
    return found != userInfo.end() ? found->second : domain + " error " + std::to_string(code);
  }

  friend bool operator==(const NSError&, const NSError&) = default;
};

#endif
