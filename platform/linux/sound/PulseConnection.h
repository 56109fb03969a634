// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_PULSECONNECTION_H
#define ZRCORE_LINUX_SOUND_PULSECONNECTION_H

#include <pulse/glib-mainloop.h>
#include <pulse/pulseaudio.h>

#include <string>
#include <vector>

#include "loop/GLibLoop.h"

/// Is called when a connection is ready or lost. It may remove itself and drop any object in either call.
class PulseListener {
 public:
  virtual ~PulseListener() = default;
  virtual void serverIsReady() = 0;
  virtual void serverIsLost(const std::string& why) = 0;
};

/// The connection to the sound server. `connect` makes it; after a loss it stays down until the next `connect`. No
/// server is started.
class PulseConnection {
 public:
  static constexpr double kPatienceSeconds = 2.0;  ///< for the server's first answer

  explicit PulseConnection(std::shared_ptr<GLibLoop> loop);
  PulseConnection(const PulseConnection&) = delete;
  PulseConnection& operator=(const PulseConnection&) = delete;
  ~PulseConnection();

  /// Begins to connect, unless that has been done. Nothing is reported inside this call.
  void connect();
  bool isReady() const { return isReady_; }
  bool isConnecting() const { return context_ != nullptr && !isReady_; }
  /// Null while there is no connection.
  pa_context* context() const { return context_; }
  Loop& loop() { return *loop_; }

  void add(PulseListener& listener) { listeners_.push_back(&listener); }
  void remove(PulseListener& listener);

 private:
  void stateChanged();
  void lose(const std::string& why);
  void drop();
  void tell(const std::function<void(PulseListener&)>& what);

  std::shared_ptr<GLibLoop> loop_;
  pa_glib_mainloop* mainloop_;
  pa_context* context_ = nullptr;
  bool isReady_ = false;
  std::unique_ptr<Loop::Wait> deadline_;
  std::vector<PulseListener*> listeners_;
};

#endif
