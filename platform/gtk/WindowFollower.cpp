// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGtkPlatform.h>
#include <gtk/gtk.h>
#include <owners/GLib.h>
#include <platform/Callback.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace {

/// A minimised window is visible to GTK, and to nobody else.
bool canBeSeen(GtkWindow* window) {
  GdkSurface* const surface = gtk_native_get_surface(GTK_NATIVE(window));
  const bool isMinimized = surface && (gdk_toplevel_get_state(GDK_TOPLEVEL(surface)) & GDK_TOPLEVEL_STATE_MINIMIZED);
  return gtk_window_is_active(window) || (gtk_widget_get_mapped(GTK_WIDGET(window)) && !isMinimized);
}

/// A signal's connection, which ends with its object.
class Connection {
 public:
  Connection(gpointer source, const char* signal, GCallback called, gpointer self)
      : source_(owners::refTo(G_OBJECT(source))), id_(g_signal_connect_swapped(source, signal, called, self)) {}
  Connection(Connection&&) noexcept = default;
  Connection& operator=(Connection&&) = delete;
  ~Connection() {
    if (source_) g_signal_handler_disconnect(source_.get(), id_);
  }

 private:
  owners::Ref<GObject> source_;
  gulong id_;
};

class WindowFollower {
 public:
  explicit WindowFollower(Callback<bool> seen) : seen_(std::move(seen)), windows_(gtk_window_get_toplevels()) {
    windowsChanged_.emplace(windows_, "items-changed", G_CALLBACK(+[](WindowFollower* self) { self->followAll(); }),
                            this);
    followAll();
  }
  WindowFollower(const WindowFollower&) = delete;
  WindowFollower& operator=(const WindowFollower&) = delete;

 private:
  void followAll() {
    std::map<GtkWindow*, std::vector<Connection>> followed;
    for (guint i = 0; i < g_list_model_get_n_items(windows_); ++i) {
      const owners::Ref<GtkWindow> window(static_cast<GtkWindow*>(g_list_model_get_item(windows_, i)));
      follow(window.get(), followed[window.get()]);
    }
    followed_ = std::move(followed);
    judge();
  }

  void follow(GtkWindow* window, std::vector<Connection>& connections) {
    const auto changed = G_CALLBACK(+[](WindowFollower* self) { self->judge(); });
    for (const char* signal : {"notify::is-active", "map", "unmap"}) {
      connections.emplace_back(window, signal, changed, this);
    }
    // The surface, which knows whether the window is minimised, comes and goes with the window's realisation.
    connections.emplace_back(window, "realize", G_CALLBACK(+[](WindowFollower* self) { self->followAll(); }), this);
    if (GdkSurface* const surface = gtk_native_get_surface(GTK_NATIVE(window))) {
      connections.emplace_back(surface, "notify::state", changed, this);
    }
  }

  void judge() {
    bool isSeen = false;
    for (const auto& [window, connections] : followed_) isSeen = isSeen || canBeSeen(window);
    if (std::exchange(wasSeen_, isSeen) == isSeen) return;
    seen_(isSeen);
  }

  Callback<bool> seen_;
  GListModel* windows_;                       ///< GTK's, for good
  std::optional<Connection> windowsChanged_;  ///< as windows open and close
  std::map<GtkWindow*, std::vector<Connection>> followed_;
  std::optional<bool> wasSeen_;
};

}  // namespace

std::shared_ptr<void> ZRGtkFollowWindows(std::function<void(bool isSeen)> seen) {
  return std::make_shared<WindowFollower>(std::move(seen));
}
