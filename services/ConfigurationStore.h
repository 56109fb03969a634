// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_SERVICES_CONFIGURATIONSTORE_H
#define ZRCORE_SERVICES_CONFIGURATIONSTORE_H

#include <ZRCore/ZROHMValue.h>
#include <ZRCore/ZRPlatform.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

/// The base addresses of the kit's web services, as far as a document has them.
struct ConfigurationAddresses {
  std::optional<std::string> geofence, traffic, geocode, directions, guidance;
};

/// The addresses in an answer of the service, or in the packaged file; absent when there is no object for `type`.
std::shared_ptr<const ConfigurationAddresses> addressesFromDocument(const ZROHMValue& document, std::int64_t type);

/// The rules behind the class operations of ZRConfigurationBase, without statics. Must outlive the fetches that it
/// starts. Any thread; callbacks run without the lock, so that they may call anything here.
class ConfigurationStore {
 public:
  /// The same addresses are the same object.
  using Completion = std::function<void(const std::shared_ptr<const ConfigurationAddresses>& addresses)>;

  ConfigurationStore();
  void initialize();
  void setConfigurationService(std::int64_t service);
  std::int64_t configurationService() const;
  void setConfigType(std::int64_t type);
  std::int64_t configType() const;
  void setProductKey(std::optional<std::string> key);
  std::optional<std::string> productKey() const;
  std::string mapConfigUrl() const;
  void fetchWithId(const ZRPlatform& platform, Completion completion);

 private:
  void startFetch(const ZRPlatform& platform, Completion completion);
  /// Caches the addresses in `document`. @return the same, possibly absent.
  std::shared_ptr<const ConfigurationAddresses> take(const ZROHMValue& document);

  mutable std::mutex mutex_;
  std::string_view origin_;  ///< scheme and host, up to the path
  std::int64_t service_ = 1;
  std::int64_t type_ = 1;
  std::optional<std::string> productKey_;
  std::shared_ptr<const ConfigurationAddresses> addresses_;
  bool fetchedOnce_ = false;
};

#endif
