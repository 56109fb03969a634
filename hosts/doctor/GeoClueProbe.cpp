// SPDX-License-Identifier: Apache-2.0
#include <gio/gio.h>

#include <functional>

#include "Probes.h"

namespace doctor {
namespace {

constexpr const char* kService = "org.freedesktop.GeoClue2";

/// Calls on a message bus that are waited for, but not for ever.
class BusTalk {
 public:
  BusTalk(const std::string& address, double answerSeconds) {
    g_main_context_push_thread_default(context_);
    deadline_ = g_timeout_source_new(static_cast<guint>(answerSeconds * 1000.0));
    const auto tooLate = [](gpointer cancellable) -> gboolean {
      g_cancellable_cancel(G_CANCELLABLE(cancellable));
      return G_SOURCE_REMOVE;
    };
    g_source_set_callback(deadline_, tooLate, cancellable_, nullptr);
    g_source_attach(deadline_, context_);

    GError* error = nullptr;
    gchar* const system = address.empty() ? g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr)
                                          : g_strdup(address.c_str());
    const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                         G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GAsyncResult* const result = await([&](GAsyncReadyCallback callback, gpointer data) {
      g_dbus_connection_new_for_address(system != nullptr ? system : "", flags, nullptr, cancellable_, callback, data);
    });
    g_free(system);
    connection_ = g_dbus_connection_new_for_address_finish(result, &error);
    g_object_unref(result);
    take(error);
  }
  BusTalk(const BusTalk&) = delete;
  BusTalk& operator=(const BusTalk&) = delete;
  ~BusTalk() {
    if (connection_ != nullptr) {
      g_dbus_connection_close_sync(connection_, nullptr, nullptr);
      g_object_unref(connection_);
    }
    g_source_destroy(deadline_);
    g_source_unref(deadline_);
    g_object_unref(cancellable_);
    while (g_main_context_iteration(context_, FALSE)) {
    }
    g_main_context_pop_thread_default(context_);
    g_main_context_unref(context_);
  }

  bool isOpen() const { return connection_ != nullptr; }
  const std::string& failure() const { return failure_; }

  /// @return the reply, to be released; null when there is none.
  GVariant* call(const char* service, const char* path, const char* interface, const char* method,
                 GVariant* parameters) {
    GAsyncResult* const result = await([&](GAsyncReadyCallback callback, gpointer data) {
      g_dbus_connection_call(connection_, service, path, interface, method, parameters, nullptr, G_DBUS_CALL_FLAGS_NONE,
                             -1, cancellable_, callback, data);
    });
    GError* error = nullptr;
    GVariant* const reply = g_dbus_connection_call_finish(connection_, result, &error);
    g_object_unref(result);
    take(error);
    return reply;
  }

 private:
  GAsyncResult* await(const std::function<void(GAsyncReadyCallback, gpointer)>& begin) {
    GAsyncResult* result = nullptr;
    begin([](GObject*, GAsyncResult* ready,
             gpointer into) { *static_cast<GAsyncResult**>(into) = G_ASYNC_RESULT(g_object_ref(ready)); },
          &result);
    while (result == nullptr) g_main_context_iteration(context_, TRUE);
    return result;
  }

  void take(GError* error) {
    if (error == nullptr) return;
    const bool isLate = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED) != FALSE;
    failure_ = isLate ? "it does not answer" : error->message;
    g_error_free(error);
  }

  GMainContext* context_ = g_main_context_new();
  GCancellable* cancellable_ = g_cancellable_new();
  GSource* deadline_ = nullptr;
  GDBusConnection* connection_ = nullptr;
  std::string failure_;
};

}  // namespace

Finding GeoClueProbe::look() {
  constexpr const char* kInstall = "sudo apt-get install geoclue-2.0";
  constexpr const char* kRestart = "sudo systemctl restart geoclue";
  BusTalk bus(busAddress_, answerSeconds_);
  if (!bus.isOpen()) {
    return {"GeoClue", State::missing, "there is no message bus: " + bus.failure(), "sudo systemctl start dbus"};
  }
  GVariant* const reply =
      bus.call(kService, "/org/freedesktop/GeoClue2/Manager", "org.freedesktop.DBus.Properties", "Get",
               g_variant_new("(ss)", "org.freedesktop.GeoClue2.Manager", "AvailableAccuracyLevel"));
  if (reply == nullptr) {
    const bool isAbsent = bus.failure().find("ServiceUnknown") != std::string::npos ||
                          bus.failure().find("NameHasNoOwner") != std::string::npos;
    if (isAbsent) return {"GeoClue", State::missing, "the service is not installed", kInstall};
    return {"GeoClue", State::broken, bus.failure(), kRestart};
  }
  GVariant* value = nullptr;
  guint32 level = 0;
  if (g_variant_is_of_type(reply, G_VARIANT_TYPE("(v)"))) g_variant_get(reply, "(v)", &value);
  if (value != nullptr && g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32)) level = g_variant_get_uint32(value);
  if (value != nullptr) g_variant_unref(value);
  g_variant_unref(reply);
  if (level == 0) {
    return {"GeoClue", State::broken, "the service knows no way to find a position, or is switched off",
            "gsettings set org.gnome.system.location enabled true"};
  }
  return {"GeoClue", State::usable, "accuracy level " + std::to_string(level), ""};
}

}  // namespace doctor
