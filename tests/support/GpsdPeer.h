// SPDX-License-Identifier: Apache-2.0
/// @file
/// gpsd as a test wants it: its words, and a socket that says them.
#ifndef ZRCORE_TESTS_SUPPORT_GPSDPEER_H
#define ZRCORE_TESTS_SUPPORT_GPSDPEER_H

#include <cstdio>
#include <string>

#include "LivePositioning.h"
#include "StreamPeer.h"

inline constexpr const char* kGreeting =
    "{\"class\":\"VERSION\",\"release\":\"3.22\",\"proto_major\":3,\"proto_minor\":14}\n"
    "{\"class\":\"DEVICES\",\"devices\":[{\"class\":\"DEVICE\",\"path\":\"/dev/pts/0\"}]}\n";

/// A report with all that a daemon can say.
inline std::string report(int second, const char* more = ",\"track\":90,\"speed\":13.9") {
  char text[300];
  std::snprintf(text, sizeof text,
                "{\"class\":\"TPV\",\"mode\":3,\"time\":\"2026-05-09T%02d:%02d:%02d.000Z\",\"lat\":%.6f,\"lon\":13.4,"
                "\"altMSL\":34,\"epv\":25.5,\"eph\":19%s}\n",
                second / 3600, second / 60 % 60, second % 60, second * 1e-4, more);
  return text;
}

/// A client whose receiver is a gpsd of the test's own.
class WithGpsdPeer : public LivePositioning {
 protected:
  void begin(double silenceSeconds = 10) {
    install({.source = "gpsd:" + folder.at("gpsd"), .silenceSeconds = silenceSeconds});
    client = startClient();
  }
  void greet(int connection = 1) {
    runUntil([&] { return peer.connections == connection; });
    peer.say(kGreeting);
  }

  StreamPeer peer{*loop, folder.at("gpsd")};
  std::shared_ptr<Client> client;
};

#endif
