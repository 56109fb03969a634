// SPDX-License-Identifier: Apache-2.0
#include "Probes.h"
#include "Waiting.h"

namespace doctor {
namespace {

constexpr const char* kService = "org.freedesktop.GeoClue2";

std::string reasonOf(const GError& error) {
  return g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_CANCELLED) ? "it does not answer" : error.message;
}

}  // namespace

Finding GeoClueProbe::look() {
  constexpr const char* kInstall = "sudo apt-get install geoclue-2.0";
  constexpr const char* kRestart = "sudo systemctl restart geoclue";
  const TimeLimit limit(answerSeconds_);
  g_autoptr(GError) error = nullptr;
  // No address, no bus: an empty one fails below, with the library's own words.
  g_autofree gchar* bus = busAddress_.empty() ? g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr)
                                              : g_strdup(busAddress_.c_str());
  constexpr auto kFlags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                            G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  g_autoptr(GDBusConnection) connection =
      g_dbus_connection_new_for_address_sync(bus != nullptr ? bus : "", kFlags, nullptr, limit.cancellable(), &error);
  if (connection == nullptr) {
    return {"GeoClue", State::missing, "there is no message bus: " + reasonOf(*error), "sudo systemctl start dbus"};
  }
  g_autoptr(GVariant) reply = g_dbus_connection_call_sync(
      connection, kService, "/org/freedesktop/GeoClue2/Manager", "org.freedesktop.DBus.Properties", "Get",
      g_variant_new("(ss)", "org.freedesktop.GeoClue2.Manager", "AvailableAccuracyLevel"), nullptr,
      G_DBUS_CALL_FLAGS_NONE, -1, limit.cancellable(), &error);
  g_dbus_connection_close_sync(connection, nullptr, nullptr);
  if (reply == nullptr) {
    const bool isAbsent = g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) ||
                          g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER);
    if (isAbsent) return {"GeoClue", State::missing, "the service is not installed", kInstall};
    return {"GeoClue", State::broken, reasonOf(*error), kRestart};
  }
  g_autoptr(GVariant) value = nullptr;
  guint32 level = 0;
  if (g_variant_is_of_type(reply, G_VARIANT_TYPE("(v)"))) g_variant_get(reply, "(v)", &value);
  if (value != nullptr && g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32)) level = g_variant_get_uint32(value);
  if (level == 0) {
    return {"GeoClue", State::broken, "the service knows no way to find a position, or is switched off",
            "gsettings set org.gnome.system.location enabled true"};
  }
  return {"GeoClue", State::usable, "accuracy level " + std::to_string(level), ""};
}

}  // namespace doctor
