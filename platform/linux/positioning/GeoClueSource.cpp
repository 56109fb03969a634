// SPDX-License-Identifier: Apache-2.0
#include "positioning/GeoClueSource.h"

#include <readers/GeoClueFix.h>

#include <utility>

using policy::PositioningFault;

namespace {

constexpr const char* kService = "org.freedesktop.GeoClue2";
constexpr const char* kManagerPath = "/org/freedesktop/GeoClue2/Manager";
constexpr const char* kManager = "org.freedesktop.GeoClue2.Manager";
constexpr const char* kClient = "org.freedesktop.GeoClue2.Client";
constexpr const char* kLocation = "org.freedesktop.GeoClue2.Location";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";
constexpr guint32 kExactAccuracy = 8;

/// The object path that a reply or a signal holds at `index`; empty when it holds something else.
std::string pathAt(GVariant* parameters, gsize index) {
  std::string path;
  if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE_TUPLE) || g_variant_n_children(parameters) <= index) return path;
  GVariant* const child = g_variant_get_child_value(parameters, index);
  if (g_variant_is_of_type(child, G_VARIANT_TYPE_OBJECT_PATH)) path = g_variant_get_string(child, nullptr);
  g_variant_unref(child);
  return path;
}

policy::GeoClueLocation locationOf(GVariant* properties) {
  policy::GeoClueLocation location;
  const std::pair<const char*, double*> numbers[] = {
      {"Latitude", &location.latitude},          {"Longitude", &location.longitude},
      {"Accuracy", &location.accuracyMeters},    {"Altitude", &location.altitudeMeters},
      {"Speed", &location.speedMetersPerSecond}, {"Heading", &location.headingDegrees},
  };
  for (const auto& [name, value] : numbers) g_variant_lookup(properties, name, "d", value);
  guint64 seconds = 0, microseconds = 0;
  if (g_variant_lookup(properties, "Timestamp", "(tt)", &seconds, &microseconds)) {
    location.seconds = seconds;
    location.microseconds = microseconds;
  }
  return location;
}

}  // namespace

GeoClueSource::GeoClueSource(GLibLoop& loop, Options options) : loop_(loop), options_(std::move(options)) {}

GeoClueSource::~GeoClueSource() { GeoClueSource::stop(); }

void GeoClueSource::start(PositionSourceListener& listener) {
  listener_ = &listener;
  retry_ = loop_.after(0.0, [this] { connect(); });
}

/// The service drops a client whose connection ends.
void GeoClueSource::stop() {
  listener_ = nullptr;
  retry_.reset();
  watchdog_.reset();
  bus_.reset();
  forgetClient();
}

void GeoClueSource::connect() {
  retry_.reset();
  forgetClient();
  bus_ = std::make_unique<SystemBus>(loop_.context(), options_.busAddress);
  bus_->open([this](const std::string& failure) { opened(failure); },
             [this] {
               const auto self = shared_from_this();
               fails(PositioningFault::lost, "the message bus ended the connection");
               retry();
             });
}

void GeoClueSource::opened(const std::string& failure) {
  if (failure.empty()) return bus_->watchService(kService, [this](bool isThere) { serviceChanged(isThere); });
  const auto self = shared_from_this();
  fails(wasThere_ ? PositioningFault::lost : PositioningFault::noDaemon, failure);
  retry();
}

void GeoClueSource::serviceChanged(bool isThere) {
  const auto self = shared_from_this();
  forgetClient();
  watchdog_.reset();
  bus_->unsubscribe();
  if (!isThere) {
    if (isDenied_) return;  // it ends when it has nothing to do; started again it would only refuse again
    fails(wasThere_ ? PositioningFault::lost : PositioningFault::noDaemon, "the service is not on the bus");
    return retry();  // nobody else may start it again
  }
  retry_.reset();
  wasThere_ = true;
  askForClient();
}

void GeoClueSource::askForClient() {
  isDenied_ = false;
  watch(options_.answerSeconds, PositioningFault::noAgent);
  bus_->call(kService, kManagerPath, kManager, "GetClient", nullptr, [this](GVariant* reply, const GError* error) {
    if (error != nullptr) return failed(*error);
    client_ = pathAt(reply, 0);
    if (!client_.empty()) introduce();
  });
}

void GeoClueSource::introduce() {
  bus_->subscribe(kService, client_, kClient, "LocationUpdated",
                  [this](GVariant* parameters) { locationUpdated(parameters); });
  const auto set = [this](const char* property, GVariant* value, SystemBus::Reply reply) {
    bus_->call(kService, client_, kProperties, "Set", g_variant_new("(ssv)", kClient, property, value),
               std::move(reply));
  };
  const auto tellFailure = [this](GVariant*, const GError* error) {
    if (error != nullptr) failed(*error);
  };
  set("DesktopId", g_variant_new_string(options_.desktopId.c_str()), tellFailure);
  set("RequestedAccuracyLevel", g_variant_new_uint32(kExactAccuracy), [this](GVariant*, const GError* error) {
    if (error != nullptr) return failed(*error);
    startClient();
  });
}

void GeoClueSource::startClient() {
  bus_->call(kService, client_, kClient, "Start", nullptr, [this](GVariant*, const GError* error) {
    if (error != nullptr) return failed(*error);
    const auto self = shared_from_this();
    listener_->sourceAuthorization(options_.granted);
    if (listener_ != nullptr) listener_->sourceAnswers();
    if (listener_ != nullptr) watch(options_.silenceSeconds, PositioningFault::noFix);
  });
}

void GeoClueSource::forgetClient() {
  client_.clear();
  asked_.clear();
  newest_.clear();
}

void GeoClueSource::locationUpdated(GVariant* parameters) {
  newest_ = pathAt(parameters, 1);  // the new location, after the old one
  askForLocation();
}

/// One at a time: of those that are announced meanwhile the last one is still there.
void GeoClueSource::askForLocation() {
  if (!asked_.empty() || newest_.size() < 2) return;
  asked_ = std::exchange(newest_, {});
  constexpr double limitSeconds = 10.0;
  const auto told = [this](GVariant* reply, const GError* error) {
    const auto self = shared_from_this();
    asked_.clear();
    // A location that has been replaced meanwhile is gone; the next one has been announced.
    if (error == nullptr && g_variant_is_of_type(reply, G_VARIANT_TYPE("(a{sv})"))) {
      GVariant* const properties = g_variant_get_child_value(reply, 0);
      deliver(properties);
      g_variant_unref(properties);
    }
    if (bus_) askForLocation();
  };
  bus_->call(kService, asked_, kProperties, "GetAll", g_variant_new("(s)", kLocation), told, limitSeconds);
}

void GeoClueSource::deliver(GVariant* properties) {
  const auto fix = policy::fixOf(locationOf(properties), options_.now());
  const auto self = shared_from_this();
  if (!fix) return listener_->sourceSays("a location that lies nowhere on the Earth is dropped");
  backOff_.reset();
  watchdog_.reset();  // from now on a silence means that nothing changes: the service tells no place twice
  listener_->sourceFixes({*fix});
}

/// An answer that is a refusal, or shows that the service went away.
void GeoClueSource::failed(const GError& error) {
  if (g_dbus_error_is_remote_error(&error) == FALSE) return;  // of a bus that is gone, its end tells
  const auto self = shared_from_this();
  gchar* const remote = g_dbus_error_get_remote_error(&error);
  const std::string name = remote != nullptr ? remote : "";
  g_free(remote);
  if (name == "org.freedesktop.DBus.Error.AccessDenied") {
    isDenied_ = true;
    watchdog_.reset();
    listener_->sourceAuthorization(CLAuthorizationStatus::denied);
    return fails(PositioningFault::denied, error.message);
  }
  // Of a service that left the bus, `serviceChanged` tells.
  if (name == "org.freedesktop.DBus.Error.NoReply" || name == "org.freedesktop.DBus.Error.ServiceUnknown") return;
  fails(PositioningFault::noDaemon, error.message);
  retry();
}

/// Connects anew after a while, which also starts the service if the bus can.
void GeoClueSource::retry() {
  if (listener_ == nullptr || retry_) return;
  watchdog_.reset();
  retry_ = loop_.after(backOff_.nextSeconds(), [this] { connect(); });
}

void GeoClueSource::fails(PositioningFault fault, const std::string& detail) {
  const auto self = shared_from_this();
  if (listener_ != nullptr) listener_->sourceFails(fault, detail);
}

void GeoClueSource::watch(double seconds, PositioningFault fault) {
  watchdog_ = loop_.after(seconds, [this, fault] { fails(fault, ""); });
}
