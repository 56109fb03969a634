// SPDX-License-Identifier: Apache-2.0
#include "ConfigurationStore.h"

#include <ZRCore/NSString_ZR.h>

#include <utility>
#include <variant>

#include "DataTasks.h"
#include "Deployment.h"

namespace {

/// The entry of an object; absent when `document` is not an object or has none.
const ZROHMValue* entry(const ZROHMValue* document, std::string_view key) {
  const ZROHMDictionary* const object = document ? document->dictionary() : nullptr;
  return object ? object->find(key) : nullptr;
}

std::optional<std::string> textAt(const ZROHMValue& services, std::string_view service, std::string_view field) {
  const ZROHMValue* const url = entry(entry(&services, service), field);
  const std::string* const text = url ? url->string() : nullptr;
  return text ? std::optional(*text) : std::nullopt;
}

/// What the packaged file holds: null when there is no such file, nothing when it is not JSON.
std::optional<ZROHMValue> packagedDocument(const ZRBundle& bundle, const ZRJSONService& json) {
  const auto bytes = bundle.frameworkResource("tile_config", "json");
  if (!bytes) return ZROHMValue();
  auto parsed = json.valueFromJSON(*bytes, ZRJSONFragments::refused);
  if (std::holds_alternative<NSError>(parsed)) return std::nullopt;
  return std::get<ZROHMValue>(std::move(parsed));
}

}  // namespace

std::shared_ptr<const ConfigurationAddresses> addressesFromDocument(const ZROHMValue& document, std::int64_t type) {
  // As an unsigned number of 64 bits, though the request writes a signed one of 32: the service has it so.
  const std::string key = std::to_string(static_cast<std::uint64_t>(type));
  const ZROHMValue* const services = entry(entry(&document, "mapconfig"), key);
  if (!services || !services->dictionary()) return nullptr;
  // Directions and guidance are taken from their plain entry, as the service's answers have it.
  return std::make_shared<const ConfigurationAddresses>(
      ConfigurationAddresses{.geofence = textAt(*services, "geofence", "sslurl"),
                             .traffic = textAt(*services, "traffic", "sslurl"),
                             .geocode = textAt(*services, "geocode", "sslurl"),
                             .directions = textAt(*services, "directions", "url"),
                             .guidance = textAt(*services, "guidance", "url")});
}

ConfigurationStore::ConfigurationStore() { initialize(); }

void ConfigurationStore::initialize() {
  const std::lock_guard lock(mutex_);
  origin_ = deployment::kProductionOrigin;
  service_ = 1;
}

void ConfigurationStore::setConfigurationService(std::int64_t service) {
  const std::lock_guard lock(mutex_);
  service_ = service;
  if (service != 0 && service != 1) return;
  const std::string_view origin = service == 1 ? deployment::kProductionOrigin : deployment::kIntegrationOrigin;
  if (origin == origin_) return;
  origin_ = origin;
  addresses_ = nullptr;
  fetchedOnce_ = false;
}

std::int64_t ConfigurationStore::configurationService() const {
  const std::lock_guard lock(mutex_);
  return service_;
}

void ConfigurationStore::setConfigType(std::int64_t type) {
  const std::lock_guard lock(mutex_);
  type_ = type;
}

std::int64_t ConfigurationStore::configType() const {
  const std::lock_guard lock(mutex_);
  return type_;
}

void ConfigurationStore::setProductKey(std::optional<std::string> key) {
  const std::lock_guard lock(mutex_);
  productKey_ = std::move(key);
}

std::optional<std::string> ConfigurationStore::productKey() const {
  const std::lock_guard lock(mutex_);
  return productKey_;
}

std::string ConfigurationStore::mapConfigUrl() const {
  const std::lock_guard lock(mutex_);
  std::string url(origin_);
  url += "/mapconfig?version=4&config=" + std::to_string(static_cast<std::int32_t>(type_));
  url += "&key=" + NSString_ZR::urlQueryParameterEscaped(productKey_).value_or("(null)");
  return url;
}

void ConfigurationStore::fetchWithId(const ZRPlatform& platform, Completion completion) {
  bool isFirst = false;
  {
    const std::lock_guard lock(mutex_);
    if (!productKey_) return;
    isFirst = !std::exchange(fetchedOnce_, true);
  }
  if (isFirst) startFetch(platform, completion);
  std::shared_ptr<const ConfigurationAddresses> cached;
  {
    const std::lock_guard lock(mutex_);
    cached = addresses_;
  }
  if (completion && cached) completion(cached);
}

void ConfigurationStore::startFetch(const ZRPlatform& platform, Completion completion) {
  // A key that makes no address (a stray "%") leaves the request without one: the session then reports a failure.
  NSMutableURLRequest request{.URL = NSURL::URLWithString(mapConfigUrl()), .timeoutSeconds = 30.0};
  auto success = [this, log = platform.log, completion](const auto&, const ZROHMValue& document) {
    const auto addresses = take(document);
    if (!addresses) {
      log->writeLine(
          "VELMARIS ERROR:There is an issue with the configuration returned. Please make sure that your product key is "
          "correct.");
    }
    if (completion) completion(addresses);
  };
  auto failure = [this, bundle = platform.bundle, json = platform.json, completion](const auto&, const auto&) {
    const auto document = packagedDocument(*bundle, *json);
    if (!document) return;  // no call: the cache stays, and so does what the caller knows
    const auto addresses = take(*document);
    if (completion) completion(addresses);
  };
  const auto task =
      DataTasks(platform).json(platform.httpSession, std::move(request), std::move(success), std::move(failure));
  task->resume();
}

std::shared_ptr<const ConfigurationAddresses> ConfigurationStore::take(const ZROHMValue& document) {
  const std::lock_guard lock(mutex_);
  addresses_ = addressesFromDocument(document, type_);
  return addresses_;
}
