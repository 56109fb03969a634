// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_KEYFILEDEFAULTS_H
#define ZRCORE_LINUX_KEYFILEDEFAULTS_H

#include <ZRCore/ZRMainQueue.h>
#include <ZRCore/ZRPlatform.h>
#include <ZRCore/ZRUserDefaults.h>

#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "settings/SettingsText.h"

/// Settings in one key file, which is replaced whole: at every moment it holds the old settings or the new. What is set
/// reaches it with `synchronize`, or with a turn of the main queue. Several processes may share the file: each brings
/// in what it has set and takes over the rest. A damaged file is moved aside and reported to the log; one that cannot
/// be read is left as it is, and nothing stored.
class KeyFileDefaults final : public ZRUserDefaults, public std::enable_shared_from_this<KeyFileDefaults> {
 public:
  /// @param file  absent: the settings last as long as the process, and are never stored.
  KeyFileDefaults(std::optional<std::filesystem::path> file, std::shared_ptr<ZRMainQueue> queue,
                  std::shared_ptr<ZRLog> log);

  std::optional<std::string> stringForKey(std::string_view key) const override;
  void setStringForKey(std::string_view value, std::string_view key) override;
  bool synchronize() override;

 private:
  std::optional<Settings> readOwned();
  bool moveAside(const std::string& reason);
  bool reportUnless(bool succeeded, const char* what, int error);
  void report(const std::string& sentence);

  const std::optional<std::filesystem::path> file_;
  const std::shared_ptr<ZRMainQueue> queue_;
  const std::shared_ptr<ZRLog> log_;
  mutable std::mutex mutex_;
  Settings stored_;   ///< as last seen in the file
  Settings changes_;  ///< set since
  bool isStorePosted_ = false;
  std::string lastReport_;  ///< which is not repeated
};

/// The file of an application's settings in `folder`: its identifier, made safe as a name.
std::filesystem::path settingsFile(const std::filesystem::path& folder, const std::string& application);

#endif
