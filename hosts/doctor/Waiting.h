// SPDX-License-Identifier: Apache-2.0
/// @file
/// What is waited for, but not for ever.
#ifndef ZRCORE_HOSTS_DOCTOR_WAITING_H
#define ZRCORE_HOSTS_DOCTOR_WAITING_H

#include <gio/gio.h>
#include <owners/GLib.h>

#include <string>
#include <thread>

namespace doctor {

/// Cancels what is given its `cancellable` when time has run out.
class TimeLimit {
 public:
  explicit TimeLimit(double seconds);
  GCancellable* cancellable() const { return cancellable_.get(); }

 private:
  owners::Ref<GCancellable> cancellable_{g_cancellable_new()};
  std::jthread timer_;
};

/// Connects to a server.
/// @param error  gets what the system says about a failure
/// @return null when there is no connection after `seconds`, rounded up.
owners::Ref<GSocketConnection> reach(GSocketConnectable& address, double seconds, GError** error);

/// What a program said on its standard output.
struct ProgramRun {
  bool isFound = false;
  bool isLate = false;  ///< it was ended
  int exitCode = -1;    ///< -1: killed by a signal
  std::string output;
};

ProgramRun runProgram(const std::string& program, const char* argument, double seconds);

}  // namespace doctor

#endif
