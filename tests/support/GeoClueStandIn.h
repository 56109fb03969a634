// SPDX-License-Identifier: Apache-2.0
/// @file
/// A location service on a test's own bus that does what the test wants.
#ifndef ZRCORE_TESTS_SUPPORT_GEOCLUESTANDIN_H
#define ZRCORE_TESTS_SUPPORT_GEOCLUESTANDIN_H

#include <gio/gio.h>

#include <atomic>
#include <map>
#include <string>
#include <vector>

#include "loop/ContextScope.h"

class GeoClueStandIn {
 public:
  enum class Answer { yes, denied, never };

  /// @param connection  to the bus; taken
  GeoClueStandIn(GMainContext* context, GDBusConnection* connection) : context_(context), connection_(connection) {
    publish("/org/freedesktop/GeoClue2/Manager", 0);
    publish(kClientPath, 1);
    g_bus_own_name_on_connection(connection_, "org.freedesktop.GeoClue2", G_BUS_NAME_OWNER_FLAGS_NONE, nullptr, nullptr,
                                 nullptr, nullptr);
  }
  GeoClueStandIn(const GeoClueStandIn&) = delete;
  GeoClueStandIn& operator=(const GeoClueStandIn&) = delete;
  ~GeoClueStandIn() {
    for (GDBusMethodInvocation* const held : held_) g_object_unref(held);
    g_dbus_connection_close_sync(connection_, nullptr, nullptr);
    g_object_unref(connection_);
    g_dbus_node_info_unref(info_);
  }

  void setAnswer(Answer answer) { answer_ = answer; }
  bool isHolding() const { return !held_.empty(); }

  /// Answers the starts that were held back.
  void answerHeld() {
    for (GDBusMethodInvocation* const held : held_) g_dbus_method_invocation_return_value(held, nullptr);
    held_.clear();
  }

  /// A new location, with the values given; the others are "unknown".
  void say(std::map<std::string, double> values) {
    const std::string path = "/org/freedesktop/GeoClue2/Location/" + std::to_string(values_.size() + 1);
    values_[path] = std::move(values);
    publish(path.c_str(), 2);
    g_dbus_connection_emit_signal(connection_, nullptr, kClientPath, "org.freedesktop.GeoClue2.Client",
                                  "LocationUpdated", g_variant_new("(oo)", "/", path.c_str()), nullptr);
  }

  std::string desktopId;
  guint accuracyLevel = 0;                        ///< asked for
  std::atomic<guint> availableAccuracyLevel = 8;  ///< 0: switched off. A test may have another thread than the stand-in
  int starts = 0;
  int askedForLocations = 0;

 private:
  static constexpr const char* kClientPath = "/org/freedesktop/GeoClue2/Client/1";
  static constexpr const char* kInterfaces = R"xml(<node>
    <interface name="org.freedesktop.GeoClue2.Manager"><method name="GetClient"><arg type="o" direction="out"/></method>
      <property name="AvailableAccuracyLevel" type="u" access="read"/>
    </interface>
    <interface name="org.freedesktop.GeoClue2.Client"><method name="Start"/><method name="Stop"/>
      <property name="DesktopId" type="s" access="readwrite"/>
      <property name="RequestedAccuracyLevel" type="u" access="readwrite"/>
      <signal name="LocationUpdated"><arg type="o"/><arg type="o"/></signal></interface>
    <interface name="org.freedesktop.GeoClue2.Location">
      <property name="Latitude" type="d" access="read"/><property name="Longitude" type="d" access="read"/>
      <property name="Accuracy" type="d" access="read"/><property name="Altitude" type="d" access="read"/>
      <property name="Speed" type="d" access="read"/><property name="Heading" type="d" access="read"/>
      <property name="Timestamp" type="(tt)" access="read"/></interface></node>)xml";

  void publish(const char* path, int interface) {
    const ContextScope scope(context_);  // calls are answered there
    static const GDBusInterfaceVTable table = {onCall, onGet, onSet, {}};
    g_dbus_connection_register_object(connection_, path, info_->interfaces[interface], &table, this, nullptr, nullptr);
  }

  static void onCall(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* method, GVariant*,
                     GDBusMethodInvocation* invocation, gpointer data) {
    auto& self = *static_cast<GeoClueStandIn*>(data);
    const std::string name = method;
    if (name == "GetClient") {
      g_dbus_method_invocation_return_value(invocation, g_variant_new("(o)", kClientPath));
    } else if (name == "Start" && self.answer_ == Answer::denied) {
      g_dbus_method_invocation_return_dbus_error(invocation, "org.freedesktop.DBus.Error.AccessDenied", "not you");
    } else if (name == "Start" && self.answer_ == Answer::never) {
      self.held_.push_back(invocation);
    } else {
      self.starts += name == "Start" ? 1 : 0;
      g_dbus_method_invocation_return_value(invocation, nullptr);
    }
  }

  static GVariant* onGet(GDBusConnection*, const gchar*, const gchar* path, const gchar*, const gchar* property,
                         GError**, gpointer data) {
    auto& self = *static_cast<GeoClueStandIn*>(data);
    const auto& values = self.values_[path];
    const std::string name = property;
    if (name == "AvailableAccuracyLevel") return g_variant_new_uint32(self.availableAccuracyLevel);
    if (name == "Timestamp") return g_variant_new("(tt)", guint64{1778319000}, guint64{500000});
    self.askedForLocations += name == "Latitude" ? 1 : 0;
    const auto found = values.find(name);
    if (found != values.end()) return g_variant_new_double(found->second);
    return g_variant_new_double(name == "Altitude" ? -G_MAXDOUBLE : -1.0);
  }

  static gboolean onSet(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* property,
                        GVariant* value, GError**, gpointer data) {
    auto& self = *static_cast<GeoClueStandIn*>(data);
    if (std::string(property) == "DesktopId") self.desktopId = g_variant_get_string(value, nullptr);
    if (std::string(property) == "RequestedAccuracyLevel") self.accuracyLevel = g_variant_get_uint32(value);
    return TRUE;
  }

  GMainContext* context_;
  GDBusConnection* connection_;
  GDBusNodeInfo* info_ = g_dbus_node_info_new_for_xml(kInterfaces, nullptr);
  Answer answer_ = Answer::yes;
  std::vector<GDBusMethodInvocation*> held_;
  std::map<std::string, std::map<std::string, double>> values_;  // of each location, by its path
};

#endif
