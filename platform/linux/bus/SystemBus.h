// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SYSTEMBUS_H
#define ZRCORE_LINUX_SYSTEMBUS_H

#include <gio/gio.h>
#include <platform/Callback.h>

#include <memory>
#include <string>
#include <vector>

/// A connection of our own to the system's message bus. All calls are asynchronous, and what they bring comes on the
/// loop's thread; after the object is gone nothing comes any more. (The bus library reads and writes in a thread of its
/// own.)
class SystemBus {
 public:
  using Opened = Callback<const std::string&>;  ///< why it failed; empty: it is open
  /// @param reply  null when the call failed; then `error` is not
  using Reply = Callback<GVariant*, const GError*>;
  using Signal = Callback<GVariant*>;

  /// @param context  whose thread is the loop's
  /// @param address  empty: the system's
  SystemBus(GMainContext* context, std::string address);
  SystemBus(const SystemBus&) = delete;
  SystemBus& operator=(const SystemBus&) = delete;
  ~SystemBus();

  /// Connects. `opened` is called once; `closed` once, when the bus ends a connection that was open.
  void open(Opened opened, Callback<> closed);

  /// Calls a method. A floating `parameters` is taken.
  /// @param limitSeconds  after which the call has failed; 0: never, for some answers wait for a person.
  void call(const std::string& service, const std::string& path, const char* interface, const char* method,
            GVariant* parameters, Reply reply, double limitSeconds = 0.0);

  /// Hears a signal from now on.
  void subscribe(const std::string& service, const std::string& path, const char* interface, const char* signal,
                 Signal heard);
  /// Hears none of the signals any more.
  void unsubscribe();

  /// Hears whether a service is there; starts it if the bus can. The first answer comes soon, whatever it is.
  void watchService(const std::string& service, Callback<bool> changed);

 private:
  struct State;
  std::shared_ptr<State> state_;
};

#endif
