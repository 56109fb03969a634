// SPDX-License-Identifier: Apache-2.0
#include "bus/SystemBus.h"

#include <owners/GLib.h>

#include <utility>

#include "loop/ContextScope.h"
#include "loop/FromC.h"

/// Shared with what is under way in the bus library, which ends after us.
struct SystemBus::State {
  owners::Ref<GMainContext> context;
  std::string address;
  owners::Ref<GCancellable> cancellable{g_cancellable_new()};
  owners::Ref<GDBusConnection> connection;
  gulong closedHandler = 0;
  std::vector<guint> subscriptions;
  guint serviceWatch = 0;
  Opened opened;
  Callback<> closed;
  Callback<bool> serviceChanged;
  bool isEnded = false;
};

namespace {

template <class Value>
void release(gpointer value) {
  delete static_cast<Value*>(value);
}

}  // namespace

SystemBus::SystemBus(GMainContext* context, std::string address) : state_(std::make_shared<State>()) {
  state_->context.reset(g_main_context_ref(context));
  state_->address = std::move(address);
}

SystemBus::~SystemBus() {
  State& state = *state_;
  state.isEnded = true;
  g_cancellable_cancel(state.cancellable.get());
  if (state.serviceWatch != 0) g_bus_unwatch_name(state.serviceWatch);
  if (!state.connection) return;
  unsubscribe();
  g_signal_handler_disconnect(state.connection.get(), state.closedHandler);
  const ContextScope scope(state.context.get());
  g_dbus_connection_close(state.connection.get(), nullptr, nullptr, nullptr);  // what was sent goes out before
  state.connection.reset();
}

void SystemBus::open(Opened opened, Callback<> closed) {
  state_->opened = std::move(opened);
  state_->closed = std::move(closed);
  // No address, no bus: an empty one fails below, with the library's own words.
  g_autofree gchar* found = state_->address.empty()
                                ? g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr)
                                : g_strdup(state_->address.c_str());
  constexpr auto kFinished = [](GObject*, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<std::shared_ptr<State>> state(static_cast<std::shared_ptr<State>*>(data));
    g_autoptr(GError) failure = nullptr;
    owners::Ref<GDBusConnection> made(g_dbus_connection_new_for_address_finish(result, &failure));
    State& self = **state;
    if (self.isEnded) return;
    if (made) {
      self.connection = std::move(made);
      GDBusConnection* const connection = self.connection.get();
      g_dbus_connection_set_exit_on_close(connection, FALSE);
      constexpr auto kOnClosed = [](GDBusConnection*, gboolean, GError*, gpointer closing) {
        const auto kept = *static_cast<std::shared_ptr<State>*>(closing);
        if (!kept->isEnded) kept->closed();
      };
      self.closedHandler = g_signal_connect_data(
          connection, "closed", G_CALLBACK(from_c::entry(kOnClosed)), new std::shared_ptr<State>(*state),
          [](gpointer closing, GClosure*) { release<std::shared_ptr<State>>(closing); }, GConnectFlags{});
    }
    self.opened(failure != nullptr ? failure->message : "");
  };
  const ContextScope scope(state_->context.get());
  const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                       G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  g_dbus_connection_new_for_address(found != nullptr ? found : "", flags, nullptr, state_->cancellable.get(),
                                    from_c::entry(kFinished), new std::shared_ptr<State>(state_));
}

void SystemBus::call(const std::string& service, const std::string& path, const char* interface, const char* method,
                     GVariant* parameters, Reply reply, double limitSeconds) {
  struct Call {
    std::shared_ptr<State> state;
    Reply reply;
  };
  constexpr auto kFinished = [](GObject* connection, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Call> call(static_cast<Call*>(data));
    g_autoptr(GError) error = nullptr;
    g_autoptr(GVariant) answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &error);
    if (!call->state->isEnded) call->reply(answer, error);
  };
  const ContextScope scope(state_->context.get());
  const int limit = limitSeconds > 0 ? static_cast<int>(limitSeconds * 1000.0) : G_MAXINT;
  g_dbus_connection_call(state_->connection.get(), service.c_str(), path.c_str(), interface, method, parameters,
                         nullptr, G_DBUS_CALL_FLAGS_ALLOW_INTERACTIVE_AUTHORIZATION, limit, state_->cancellable.get(),
                         from_c::entry(kFinished), new Call{state_, std::move(reply)});
}

void SystemBus::subscribe(const std::string& service, const std::string& path, const char* interface,
                          const char* signal, Signal heard) {
  struct Subscription {
    std::shared_ptr<State> state;
    Signal heard;
  };
  constexpr auto kOnSignal = [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
                                GVariant* parameters, gpointer data) {
    const auto& subscription = *static_cast<Subscription*>(data);
    const auto kept = subscription.state;
    if (!kept->isEnded) subscription.heard(parameters);
  };
  const ContextScope scope(state_->context.get());
  state_->subscriptions.push_back(g_dbus_connection_signal_subscribe(
      state_->connection.get(), service.c_str(), interface, signal, path.c_str(), nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
      from_c::entry(kOnSignal), new Subscription{state_, std::move(heard)}, release<Subscription>));
}

void SystemBus::unsubscribe() {
  for (const guint subscription : std::exchange(state_->subscriptions, {})) {
    g_dbus_connection_signal_unsubscribe(state_->connection.get(), subscription);
  }
}

void SystemBus::watchService(const std::string& service, Callback<bool> changed) {
  state_->serviceChanged = std::move(changed);
  static constexpr auto kTell = [](gpointer data, bool isThere) {
    const auto kept = *static_cast<std::shared_ptr<State>*>(data);
    if (!kept->isEnded) kept->serviceChanged(isThere);
  };
  const ContextScope scope(state_->context.get());
  state_->serviceWatch = g_bus_watch_name_on_connection(
      state_->connection.get(), service.c_str(), G_BUS_NAME_WATCHER_FLAGS_AUTO_START,
      from_c::entry([](GDBusConnection*, const gchar*, const gchar*, gpointer data) { kTell(data, true); }),
      from_c::entry([](GDBusConnection*, const gchar*, gpointer data) { kTell(data, false); }),
      new std::shared_ptr<State>(state_), release<std::shared_ptr<State>>);
}
