// SPDX-License-Identifier: Apache-2.0
/// @file
/// A message bus of a test's own, which starts the services described in the folder `services`.
#ifndef ZRCORE_TESTS_SUPPORT_PRIVATEBUS_H
#define ZRCORE_TESTS_SUPPORT_PRIVATEBUS_H

#include <gio/gio.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "ChildProcess.h"
#include "TemporaryFolder.h"

class PrivateBus {
 public:
  static bool isInstalled() { return ChildProcess::exists(kProgram); }

  explicit PrivateBus(const TemporaryFolder& folder) : config_(folder.at("bus.conf")), path_(folder.at("bus")) {
    std::filesystem::create_directory(folder.at("services"));
    std::ofstream(config_) << "<busconfig><servicedir>" << folder.at("services")
                           << "</servicedir><listen>unix:path=" << path_
                           << "</listen><auth>EXTERNAL</auth><policy context=\"default\"><allow send_destination=\"*\" "
                              "eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>";
    start();
  }

  void start() {
    daemon_.emplace(ChildProcess::Arguments{kProgram, "--nofork", "--nopidfile", "--config-file=" + config_});
  }
  void stop() {
    daemon_.reset();
    ::unlink(path_.c_str());
  }

  std::string address() const { return "unix:path=" + path_; }

  /// A connection for a service of the test; null while the bus is not up yet.
  GDBusConnection* connect() const {
    const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                         G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    return g_dbus_connection_new_for_address_sync(address().c_str(), flags, nullptr, nullptr, nullptr);
  }

 private:
  static constexpr const char* kProgram = "dbus-daemon";

  std::string config_, path_;
  std::optional<ChildProcess> daemon_;
};

#endif
