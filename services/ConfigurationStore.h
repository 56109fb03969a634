// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_SERVICES_CONFIGURATIONSTORE_H
#define ZRCORE_SERVICES_CONFIGURATIONSTORE_H

#include <ZRCore/ZRConfigurationBase.h>
#include <ZRCore/ZRPlatform.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

/// The configuration in an answer of the service, or in the packaged file; absent when there is no object for `type`.
std::shared_ptr<ZRConfigurationBase> configurationFromDocument(const ZROHMValue& document, std::int64_t type);

/// The rules behind the class operations of ZRConfigurationBase, without statics. Must outlive the fetches that it
/// starts. Any thread; callbacks run without the lock, so that they may call anything here.
class ConfigurationStore {
 public:
  ConfigurationStore();
  void initialize();
  void setConfigurationService(std::int64_t service);
  std::int64_t configurationService() const;
  void setConfigType(std::int64_t type);
  std::int64_t configType() const;
  void setProductKey(std::optional<std::string> key);
  std::optional<std::string> productKey() const;
  std::string mapConfigUrl() const;
  void fetchWithId(const ZRPlatform& platform, ZRConfigurationBase::Completion completion);

 private:
  void startFetch(const ZRPlatform& platform, ZRConfigurationBase::Completion completion);
  /// Caches the configuration of `document`. @return the same, possibly absent.
  std::shared_ptr<ZRConfigurationBase> take(const ZROHMValue& document);

  mutable std::mutex mutex_;
  std::string_view origin_;  ///< scheme and host, up to the path
  std::int64_t service_ = 1;
  std::int64_t type_ = 1;
  std::optional<std::string> productKey_;
  std::shared_ptr<ZRConfigurationBase> configuration_;
  bool fetchedOnce_ = false;
};

#endif
