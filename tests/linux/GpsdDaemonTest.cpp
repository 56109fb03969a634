// SPDX-License-Identifier: Apache-2.0
// Against the real gpsd, on a pseudo-terminal for a receiver.
#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <netinet/in.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>

#include "ChildProcess.h"
#include "LivePositioning.h"
#include "PtyReceiver.h"

using nlohmann::json;
using testing::ElementsAre;

namespace {

constexpr const char* kProgram = "/usr/sbin/gpsd";  // a folder that not every user has on the path
constexpr double kSecondsBetweenFixes = 0.1;

int freePort() {
  const int probe = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  ::bind(probe, reinterpret_cast<const sockaddr*>(&address), size);
  ::getsockname(probe, reinterpret_cast<sockaddr*>(&address), &size);
  ::close(probe);
  return ntohs(address.sin_port);
}

/// Keeps what a daemon says to a client of its own.
class Capture {
 public:
  Capture(Loop& loop, int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socket_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return;
    constexpr std::string_view kWatch = "?WATCH={\"enable\":true,\"json\":true};\n";
    isConnected = ::send(socket_, kWatch.data(), kWatch.size(), MSG_NOSIGNAL) > 0;
    readable_ = loop.watch(socket_, {.canRead = true}, [this](Loop::Readiness) {
      char bytes[4096];
      const auto count = ::recv(socket_, bytes, sizeof bytes, MSG_DONTWAIT);
      if (count > 0) text.append(bytes, static_cast<std::size_t>(count));
      if (count == 0) readable_.reset();
    });
  }
  ~Capture() {
    readable_.reset();
    ::close(socket_);
  }

  std::string text;
  bool isConnected = false;

 private:
  int socket_ = -1;
  std::unique_ptr<Loop::Wait> readable_;
};

class GpsdDaemon : public LivePositioning {
 protected:
  void SetUp() override {
    if (!ChildProcess::exists(kProgram)) GTEST_SKIP() << "gpsd is not installed";
    std::filesystem::permissions(folder.path, std::filesystem::perms(0755));  // the daemon becomes another user
    ASSERT_FALSE(receiver.path().empty());
  }

  /// Starts clients and waits until the daemon's greeting shows that it listens.
  void startClients() {
    install({.source = "gpsd:127.0.0.1:" + std::to_string(port), .silenceSeconds = 10});
    first = startClient();
    second = startClient();
    runUntil([&] { return !log.empty() && log.back().find("positions come from") != std::string::npos; });
  }

  PtyReceiver receiver{*loop};
  int port = freePort();
  std::shared_ptr<Client> first, second;
};

TEST_F(GpsdDaemon, TwoClientsGetWhatATripOfTheDaemonsOwnWordsGives) {
  receiver.send(kSecondsBetweenFixes);
  const ChildProcess daemon(
      {kProgram, "-N", "-n", "-S", std::to_string(port), "-F", folder.at("control"), receiver.path()});
  std::unique_ptr<Capture> capture;
  std::unique_ptr<Loop::Wait> again;
  runUntil([&] {
    again = loop->after(0.05, [] {});
    capture = std::make_unique<Capture>(*loop, port);
    return capture->isConnected;
  });
  runUntil([&] { return capture->text.find("\"TPV\"") != std::string::npos; });
  startClients();
  constexpr std::size_t kCompared = 30;
  runUntil([&] { return fixesOf(*first) >= kCompared + 5; });  // the capture has the last compared one whole, then
  stopClients();

  // The clients came later than the capture: what was said before does not count.
  const CLLocationCoordinate2D start = first->batches[0][0]->coordinate();
  std::ofstream file(folder.at("capture.json"));
  bool hasBegun = false;
  std::istringstream lines(capture->text);
  for (std::string line; std::getline(lines, line);) {
    const json report = json::parse(line, nullptr, false);
    hasBegun = hasBegun || (report.is_object() && report.value("lon", 0.0) == start.longitude);
    if (hasBegun) file << line << '\n';
  }
  file.close();
  const auto trip =
      ChildProcess::output({ZRCORE_TOOL, "trip", folder.at("capture.json"), "--filter", "documented", "--json"});
  ASSERT_TRUE(trip);
  std::vector<json> rows;
  std::istringstream written(*trip);
  for (std::string line; std::getline(written, line);) rows.push_back(json::parse(line, nullptr, false));
  std::size_t index = 0;
  for (const auto& batch : first->batches) {
    for (const auto& location : batch) {
      if (index == kCompared) break;
      SCOPED_TRACE(index);
      const json& row = rows.at(index++);
      EXPECT_EQ(location->coordinate().latitude, row["latitude"]);
      EXPECT_EQ(location->coordinate().longitude, row["longitude"]);
      EXPECT_EQ(location->fix().horizontalAccuracy, row["accuracyMeters"]);
      EXPECT_EQ(location->fix().speed, row["speedMetersPerSecond"]);
      EXPECT_EQ(location->fix().course, row["courseDegrees"]);
      EXPECT_EQ(location->smoothCourse(), row["smoothCourseDegrees"]);
      EXPECT_EQ(location->smoothSpeed(), row["smoothSpeedMetersPerSecond"]);
      EXPECT_EQ(location->significantChange(), row["significant"]);
    }
  }
  EXPECT_EQ(index, kCompared);
  EXPECT_EQ(first->batches, second->batches) << "both get the very same records";
}

/// Until the sentence with the speed has come, the daemon tells what it derives from the places.
TEST_F(GpsdDaemon, TheToolShowsTheSpeedThatTheReceiverTellsAfterItsPlace) {
  using std::chrono::milliseconds;
  PtyReceiver modem(*loop, PtyReceiver::Manner::modem);
  const ChildProcess daemon(
      {kProgram, "-N", "-n", "-S", std::to_string(port), "-F", folder.at("control"), modem.path()});
  modem.send(2 * kSecondsBetweenFixes);
  ChildProcess tool({ZRCORE_TOOL, "watch", "gpsd:127.0.0.1:" + std::to_string(port), "--json", "--for", "8"});
  std::unique_ptr<Loop::Wait> again;
  runUntil([&] {
    again = loop->after(0.05, [] {});
    return tool.exitCode(milliseconds(0)).has_value();
  });
  int shown = 0;
  for (auto line = tool.readLine(milliseconds(0)); line; line = tool.readLine(milliseconds(0))) {
    const json row = json::parse(*line, nullptr, false);
    if (row.contains("summary")) break;
    EXPECT_LE(row["speedMetersPerSecond"], modem.toldSpeed(13.1)) << *line;
    ++shown;
  }
  EXPECT_GE(shown, 10);
}

class NmeaReceiver : public LivePositioning {
 protected:
  void begin(const std::string& path) {
    install({.source = "nmea:" + path, .silenceSeconds = 10});
    client = startClient();
  }
  std::shared_ptr<Client> client;
};

TEST_F(NmeaReceiver, ASerialLineGivesEachFixWithoutWaitingForTheNext) {
  PtyReceiver receiver(*loop);
  begin(receiver.path());
  runUntil([&] { return !log.empty(); });
  receiver.sendOne();
  runUntil([&] { return fixesOf(*client) == 1; });
  const ZRPositionFix& fix = client->batches[0][0]->fix();
  EXPECT_EQ(fix.altitude, 34.0) << "the sentences of one instant were put together";
  EXPECT_NEAR(fix.speed, 10.0, 0.1);
  receiver.unplug();
  runUntil([&] { return !client->errors.empty(); });
  stopClients();
  EXPECT_THAT(faultsOf(*client), ElementsAre("lost"));
  EXPECT_EQ(wakeUps(), std::pair(0, false));
}

TEST_F(NmeaReceiver, ARegularFileIsSentToTheFileSource) {
  std::ofstream(folder.at("log.nmea")) << "$GPRMC,,V,,,,,,,,,,N*53\n";
  begin(folder.at("log.nmea"));
  runUntil([&] { return !client->errors.empty(); });
  EXPECT_THAT(client->errors[0].localizedDescription(), testing::HasSubstr("file:PATH"));
  stopClients();
}

}  // namespace
