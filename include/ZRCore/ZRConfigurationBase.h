// SPDX-License-Identifier: Apache-2.0
/// @file
/// The remote configuration: the base addresses of the kit's web services.
#ifndef ZRCORE_ZRCONFIGURATIONBASE_H
#define ZRCORE_ZRCONFIGURATIONBASE_H

#include <ZRCore/NSObject.h>
#include <ZRCore/ZRExport.h>
#include <ZRCore/ZROHMValue.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

/// A notification for hosts to post and observe. The framework does neither.
ZR_EXPORT extern const char* const ZRConfigurationGeoTrackingOnChangedNotification;

/// An instance holds the addresses; the class operations fetch it, once for the process and service, from the
/// configuration host or, when that fails, from the file packaged with the framework. Class operations: any thread. An
/// instance: one thread, any.
class ZR_EXPORT ZRConfigurationBase : public NSObject {
 public:
  using Completion = std::function<void(const std::shared_ptr<ZRConfigurationBase>& configuration)>;

  ~ZRConfigurationBase() override;

  /// Chooses the production host and sets `configurationService` to 1, as at the first use of the class. What was
  /// fetched stays.
  static void initialize();

  /// 1 is the production host, 0 the integration host. Every other number is stored too, and changes nothing else. A
  /// change of host discards the cached configuration and lets the next fetch ask again; an answer that is still on its
  /// way from the former host is cached when it arrives.
  static void setConfigurationService(std::int64_t service);
  static std::int64_t configurationService();

  /// The variant to ask for, and to look for in the answer when it arrives. 1 at first. A change does not discard the
  /// cached configuration.
  static void setConfigType(std::int64_t type);
  static std::int64_t configType();

  /// The key sent with the request; absent at first.
  static void setProductKey(std::optional<std::string> key);
  static std::optional<std::string> productKey();
  /// The key as the value of a query parameter (`NSString_ZR::urlQueryParameterEscaped`).
  static std::optional<std::string> productKeyUrlEscaped();

  /// The address of the request: the host chosen, the type as a signed 32-bit number, the escaped key ("(null)" when
  /// there is none).
  static std::string mapConfigUrl();

  /// Fetches the configuration.
  ///
  /// Without a product key nothing happens. The first call (of the process, or after a change of host) asks the
  /// configuration host; `completion` is called on the main queue with what came of it: the configuration of the answer
  /// or, when the host is not reached or the answer is not JSON, of the packaged file; absent when that has none of the
  /// current type; and not at all when the packaged file is not JSON. A call while the first is under way is never
  /// called back. Once a configuration is cached, calls are called back at once, before they return, with it. After a
  /// failure nothing is asked again until the host changes.
  /// @param completion  may be empty. May call any of these operations.
  static void fetchWithId(Completion completion);
  /// The same.
  static void fetch(Completion completion);

  /// The configuration for the current type in an answer: {"mapconfig": {"1": {"geofence": {"sslurl": ...}, ...}}}.
  /// @return absent when there is no object for the type, be it that the document has another shape. A service that is
  ///         missing in it, or whose address is not a text, leaves its property absent.
  static std::shared_ptr<ZRConfigurationBase> configurationWithDictionary(const ZROHMValue& dictionary);

  const std::optional<std::string>& geofenceBaseURL() const { return geofenceBaseURL_; }
  const std::optional<std::string>& trafficBaseURL() const { return trafficBaseURL_; }
  const std::optional<std::string>& geocodeBaseURL() const { return geocodeBaseURL_; }
  const std::optional<std::string>& directionsBaseURL() const { return directionsBaseURL_; }
  const std::optional<std::string>& guidanceBaseURL() const { return guidanceBaseURL_; }
  void setGeofenceBaseURL(std::optional<std::string> url) { geofenceBaseURL_ = std::move(url); }
  void setTrafficBaseURL(std::optional<std::string> url) { trafficBaseURL_ = std::move(url); }
  void setGeocodeBaseURL(std::optional<std::string> url) { geocodeBaseURL_ = std::move(url); }
  void setDirectionsBaseURL(std::optional<std::string> url) { directionsBaseURL_ = std::move(url); }
  void setGuidanceBaseURL(std::optional<std::string> url) { guidanceBaseURL_ = std::move(url); }

 private:
  std::optional<std::string> geofenceBaseURL_;
  std::optional<std::string> trafficBaseURL_;
  std::optional<std::string> geocodeBaseURL_;
  std::optional<std::string> directionsBaseURL_;
  std::optional<std::string> guidanceBaseURL_;
};

#endif
