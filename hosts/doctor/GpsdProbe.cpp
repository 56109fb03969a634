// SPDX-License-Identifier: Apache-2.0
#include <gio/gunixsocketaddress.h>
#include <readers/LiveReader.h>

#include <array>
#include <optional>

#include "Probes.h"
#include "Waiting.h"

namespace doctor {
namespace {

constexpr const char* kStart = "sudo apt-get install gpsd && sudo systemctl start gpsd.socket";
constexpr const char* kAddReceiver = "sudo gpsdctl add /dev/ttyUSB0";

/// Connects and reads until the daemon has said what it is and what it has.
struct Answer {
  std::string failure;
  std::optional<std::string> release;
  std::optional<std::size_t> receivers;
};

Answer ask(const policy::PositioningSource& source, double answerSeconds) {
  Answer answer;
  const TimeLimit limit(answerSeconds);
  g_autoptr(GSocketConnectable) address = source.path.empty()
                                              ? g_network_address_new(source.host.c_str(), source.port)
                                              : G_SOCKET_CONNECTABLE(g_unix_socket_address_new(source.path.c_str()));
  g_autoptr(GError) error = nullptr;
  const auto connection = reach(*address, answerSeconds, &error);
  if (!connection) {
    answer.failure = error->message;
    return answer;
  }
  GSocket* const socket = g_socket_connection_get_socket(connection.get());
  constexpr std::string_view kRequest = "?DEVICES;\n";
  g_socket_send(socket, kRequest.data(), kRequest.size(), nullptr, nullptr);
  readers::LiveReader reader(readers::Format::gpsdJson);
  std::array<char, 4096> bytes;
  while (!answer.receivers) {
    const gssize count = g_socket_receive(socket, bytes.data(), bytes.size(), limit.cancellable(), nullptr);
    if (count <= 0) break;
    const auto events = reader.feed({bytes.data(), static_cast<std::size_t>(count)});
    if (events.daemonRelease) answer.release = events.daemonRelease;
    if (events.receivers) answer.receivers = events.receivers;
  }
  return answer;
}

}  // namespace

Finding GpsdProbe::look() {
  const std::string name = source_.name();
  const Answer answer = ask(source_, answerSeconds_);
  if (!answer.failure.empty()) return {"gpsd", State::missing, name + ": " + answer.failure, kStart};
  if (!answer.release) {
    return {"gpsd", State::broken, name + ": what answers there is no gpsd, or a dead one",
            "sudo systemctl restart gpsd"};
  }
  const std::string what = name + ", release " + *answer.release;
  if (answer.receivers.value_or(0) == 0) return {"gpsd", State::broken, what + ": it has no receiver", kAddReceiver};
  return {"gpsd", State::usable, what + ", receivers: " + std::to_string(*answer.receivers), ""};
}

}  // namespace doctor
