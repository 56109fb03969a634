// SPDX-License-Identifier: Apache-2.0
#include <gio/gunixsocketaddress.h>
#include <readers/LiveReader.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <optional>

#include "Probes.h"
#include "Waiting.h"

namespace doctor {
namespace {

constexpr const char* kStart = "sudo apt-get install gpsd && sudo systemctl start gpsd.socket";
constexpr const char* kAddReceiver = "sudo gpsdctl add /dev/ttyUSB0";

/// A receiver with a fix tells it once a second, as a rule.
constexpr double kFixSeconds = 1.5;

NSDate presentTime() {
  return {std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count()};
}

struct Answer {
  std::string failure;
  std::optional<std::string> release;
  std::optional<std::size_t> receivers;
  bool hasFix = false;
  std::string oldDate;

  void take(const readers::LiveEvents& events) {
    if (events.daemonRelease) release = events.daemonRelease;
    if (events.receivers) receivers = events.receivers;
    hasFix = hasFix || !events.fixes.empty();
    if (events.oldDate) oldDate = *events.oldDate;
  }
};

/// Takes what the daemon says until that is enough, or the time is up.
void listen(GSocket* socket, readers::LiveReader& reader, Answer& answer, double seconds,
            bool (*isEnough)(const Answer&)) {
  const TimeLimit limit(seconds);
  std::array<char, 4096> bytes;
  while (!isEnough(answer)) {
    const gssize count = g_socket_receive(socket, bytes.data(), bytes.size(), limit.cancellable(), nullptr);
    if (count <= 0) return;
    answer.take(reader.feed({bytes.data(), static_cast<std::size_t>(count)}));
  }
}

/// Connects and reads until the daemon has said what it is and what it has, and perhaps where that is.
Answer ask(const policy::PositioningSource& source, double answerSeconds) {
  Answer answer;
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
  constexpr std::string_view kRequest = "?DEVICES;\n?WATCH={\"enable\":true,\"json\":true};\n";
  g_socket_send(socket, kRequest.data(), kRequest.size(), nullptr, nullptr);
  readers::LiveReader reader(readers::Format::gpsdJson, {.intake = {.now = presentTime}});
  listen(socket, reader, answer, answerSeconds, [](const Answer& so) { return so.receivers.has_value(); });
  if (answer.receivers.value_or(0) > 0) {
    listen(socket, reader, answer, std::min(answerSeconds, kFixSeconds), [](const Answer& so) { return so.hasFix; });
    answer.take(reader.tellHeld());
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
  const std::string date = answer.oldDate.empty() ? "" : "; " + answer.oldDate;
  return {"gpsd", State::usable, what + ", receivers: " + std::to_string(*answer.receivers) + date, ""};
}

}  // namespace doctor
