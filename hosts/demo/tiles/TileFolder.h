// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TILES_TILEFOLDER_H
#define ZRCORE_HOSTS_DEMO_TILES_TILEFOLDER_H

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "UseOrder.h"

namespace demo {

/// Answers of tile servers, kept in a folder of bounded size from which what was not used for longest goes first.
/// Several programs may share it. What cannot be read or written counts as not kept.
///
/// A file is named by a hash of the address and begins with the address itself, so that what was kept for another one
/// is never shown. When it was used last is the time of its last access, until when it is good that of its last change.
class TileFolder {
 public:
  static constexpr std::uint64_t kMostBytes = 100'000'000;
  static constexpr std::uint64_t kMostAnswerBytes = 4'000'000;  ///< a longer one is not kept

  /// Makes the folder, for this user alone, where there is none.
  /// @throws TileSourceError  when it is not this user's own, or cannot be made
  explicit TileFolder(std::filesystem::path folder, std::uint64_t mostBytes = kMostBytes);

  /// Whether an answer is kept that need not be asked for anew.
  bool isGood(const std::string& address, double now) const;
  /// What was answered, however long ago.
  std::optional<std::string> read(const std::string& address);
  /// @param goodUntil  seconds since 1970
  /// @return whether it is kept now
  bool keep(const std::string& address, std::string_view answer, double goodUntil);
  void forget(const std::string& address);

  std::uint64_t bytes() const { return order_.bytes(); }

 private:
  void lookThrough();
  void remove(const std::string& name);

  std::filesystem::path folder_;
  std::uint64_t mostBytes_;
  UseOrder<std::string> order_;              ///< of the files' names
  std::map<std::string, double> goodUntil_;  ///< by the file's name
};

}  // namespace demo

#endif
