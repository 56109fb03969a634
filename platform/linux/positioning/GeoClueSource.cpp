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
  g_autoptr(GVariant) child = g_variant_get_child_value(parameters, index);
  if (g_variant_is_of_type(child, G_VARIANT_TYPE_OBJECT_PATH)) path = g_variant_get_string(child, nullptr);
  return path;
}

readers::GeoClueLocation locationOf(GVariant* properties) {
  readers::GeoClueLocation location;
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
  listener_.begin(listener);
  retry_ = loop_.after(0.0, {this, &GeoClueSource::connect});
}

/// The service drops a client whose connection ends.
void GeoClueSource::stop() {
  listener_.end();
  retry_.reset();
  watchdog_.reset();
  bus_.reset();
  forgetClient();
}

void GeoClueSource::connect() {
  retry_.reset();
  forgetClient();
  bus_ = std::make_unique<SystemBus>(loop_.context(), options_.busAddress);
  const auto closed = [this] {
    fails(PositioningFault::lost, "the message bus ended the connection");
    retry();
  };
  bus_->open({this, &GeoClueSource::opened}, {this, closed});
}

void GeoClueSource::opened(const std::string& failure) {
  if (failure.empty()) return bus_->watchService(kService, {this, &GeoClueSource::serviceChanged});
  fails(wasThere_ ? PositioningFault::lost : PositioningFault::noDaemon, failure);
  retry();
}

void GeoClueSource::serviceChanged(bool isThere) {
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
  const auto answered = [this](GVariant* reply, const GError* error) {
    if (error != nullptr) return failed(*error);
    client_ = pathAt(reply, 0);
    if (!client_.empty()) introduce();
  };
  bus_->call(kService, kManagerPath, kManager, "GetClient", nullptr, {this, answered});
}

void GeoClueSource::introduce() {
  bus_->subscribe(kService, client_, kClient, "LocationUpdated", {this, &GeoClueSource::locationUpdated});
  const auto set = [this](const char* property, GVariant* value, SystemBus::Reply reply) {
    bus_->call(kService, client_, kProperties, "Set", g_variant_new("(ssv)", kClient, property, value),
               std::move(reply));
  };
  const auto tellFailure = [this](GVariant*, const GError* error) {
    if (error != nullptr) failed(*error);
  };
  const auto start = [this](GVariant*, const GError* error) {
    if (error != nullptr) return failed(*error);
    startClient();
  };
  set("DesktopId", g_variant_new_string(options_.desktopId.c_str()), {this, tellFailure});
  set("RequestedAccuracyLevel", g_variant_new_uint32(kExactAccuracy), {this, start});
}

void GeoClueSource::startClient() {
  const auto started = [this](GVariant*, const GError* error) {
    if (error != nullptr) return failed(*error);
    listener_->sourceAuthorization(options_.granted);
    listener_->sourceAnswers();
    if (listener_.isThere()) watch(options_.silenceSeconds, PositioningFault::noFix);
  };
  bus_->call(kService, client_, kClient, "Start", nullptr, {this, started});
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
  constexpr double kLimitSeconds = 10.0;
  const auto answered = [this](GVariant* reply, const GError* error) {
    asked_.clear();
    // A location that has been replaced meanwhile is gone; the next one has been announced.
    if (error == nullptr && g_variant_is_of_type(reply, G_VARIANT_TYPE("(a{sv})"))) {
      g_autoptr(GVariant) properties = g_variant_get_child_value(reply, 0);
      deliver(properties);
    }
    if (bus_) askForLocation();
  };
  bus_->call(kService, asked_, kProperties, "GetAll", g_variant_new("(s)", kLocation), {this, answered}, kLimitSeconds);
}

void GeoClueSource::deliver(GVariant* properties) {
  const auto fix = readers::fixOf(locationOf(properties), options_.now());
  if (!fix) return listener_->sourceSays("a location that lies nowhere on the Earth is dropped");
  backOff_.reset();
  watchdog_.reset();  // from now on a silence means that nothing changes: the service reports no place twice
  listener_->sourceFixes({*fix});
}

/// An answer that is a refusal, or shows that the service went away.
void GeoClueSource::failed(const GError& error) {
  if (g_dbus_error_is_remote_error(&error) == FALSE) return;  // of a bus that is gone, its end tells
  g_autofree gchar* remote = g_dbus_error_get_remote_error(&error);
  const std::string name = remote != nullptr ? remote : "";
  if (name == "org.freedesktop.DBus.Error.AccessDenied") {
    isDenied_ = true;
    watchdog_.reset();
    listener_->sourceAuthorization(CLAuthorizationStatus::denied);
    return fails(PositioningFault::denied, error.message);
  }
  // The service has left the bus: `serviceChanged` handles that.
  if (name == "org.freedesktop.DBus.Error.NoReply" || name == "org.freedesktop.DBus.Error.ServiceUnknown") return;
  fails(PositioningFault::noDaemon, error.message);
  retry();
}

/// Connects anew after a while, which also starts the service if the bus can.
void GeoClueSource::retry() {
  if (!listener_.isThere() || retry_) return;
  watchdog_.reset();
  retry_ = loop_.after(backOff_.nextSeconds(), {this, &GeoClueSource::connect});
}

void GeoClueSource::fails(PositioningFault fault, const std::string& detail) { listener_->sourceFails(fault, detail); }

void GeoClueSource::watch(double seconds, PositioningFault fault) {
  watchdog_ = loop_.after(seconds, {this, [this, fault] { fails(fault, ""); }});
}
