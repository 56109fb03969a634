// SPDX-License-Identifier: Apache-2.0
// Load for as long as is wished (ZRCORE_SOAK_SECONDS a row, else 10): requests of every fate at once, two writers of
// settings, a receiver that reports a hundred times a second and is often damaged.
#include <ZRCore/ZRPlatformFake.h>
#include <dirent.h>
#include <fcntl.h>
#include <glib.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "HTTPTestServer.h"
#include "RunTool.h"
#include "TemporaryFolder.h"
#include "http/CurlSession.h"
#include "loop/GLibLoop.h"
#include "settings/KeyFileDefaults.h"

namespace {

using Clock = std::chrono::steady_clock;

Clock::time_point endOfRow() {
  const char* const seconds = std::getenv("ZRCORE_SOAK_SECONDS");
  return Clock::now() + std::chrono::seconds(seconds != nullptr ? std::atoi(seconds) : 10);
}

/// For the table of scripts/soak.
void tell(const char* row, std::size_t count, const char* what) { std::printf("soak\t%s\t%zu %s\n", row, count, what); }

long residentKilobytes() {
  long size = 0, resident = 0;
  std::FILE* const file = std::fopen("/proc/self/statm", "r");
  if (std::fscanf(file, "%ld %ld", &size, &resident) != 2) resident = 0;
  std::fclose(file);
  return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

std::string sentence(const std::string& body) {
  unsigned sum = 0;
  for (const char c : body) sum ^= static_cast<unsigned char>(c);
  char end[8];
  std::snprintf(end, sizeof end, "*%02X\r\n", sum);
  return "$" + body + end;
}

// First: a child's peak begins with the size of this process.
TEST(Soak, WatchTellsEachFixOfADamagedStreamAtAHundredASecond) {
  int master = -1, slave = -1;
  char name[128] = "";
  ASSERT_EQ(::openpty(&master, &slave, name, nullptr, nullptr), 0);
  termios settings{};
  ::tcgetattr(slave, &settings);
  ::cfmakeraw(&settings);
  ::tcsetattr(slave, TCSANOW, &settings);

  const ToolFolder folder;
  const std::string record = folder.path("record.gpx");
  const pid_t tool = startTool({"watch", std::string("nmea:") + name, "--json", "--record", record},
                               {"/dev/null", "/dev/null", folder.path("messages")});
  const std::array<std::string, 6> faults{"",
                                          "rubbish \xFF\x01\n",
                                          "$GPRMC,000000.00,A,5230.0,N,01324.0,E,,,090526,,,A*00\r\n",
                                          "$GPGGA,1$GPGSV,1\n",
                                          std::string(70'000, 'x') + "\n",
                                          "{\"class\":\"TPV\",\"mode\":3,\"lat\":NaN,\"lon\":1}\n"};
  std::size_t sent = 0;
  auto due = Clock::now() + std::chrono::seconds(1);  // the tool opens the line
  for (const auto end = endOfRow(); Clock::now() < end; ++sent) {
    std::this_thread::sleep_until(due);
    due += std::chrono::milliseconds(10);
    const int hundredths = static_cast<int>(sent % 8'640'000);
    char body[100];
    std::snprintf(body, sizeof body, "GPRMC,%02d%02d%02d.%02d,A,5230.0000,N,013%07.4f,E,10.0,90.0,090526,,,A",
                  hundredths / 360'000, hundredths / 6'000 % 60, hundredths / 100 % 60, hundredths % 100,
                  20.0 + static_cast<double>(sent % 100'000) * 1e-4);
    const std::string& fault = faults[sent % 7 == 0 ? sent / 7 % faults.size() : 0];
    const std::string said = fault + sentence(body);
    for (std::size_t at = 0; at < said.size();) {
      const ssize_t count = ::write(master, said.data() + at, said.size() - at);
      ASSERT_GT(count, 0);
      at += static_cast<std::size_t>(count);
    }
  }
  std::this_thread::sleep_for(std::chrono::seconds(1));  // a quiet moment, after which the last one is told
  ::kill(tool, SIGTERM);
  const ToolRun run = waitForTool(tool);
  ::close(master);
  ::close(slave);
  EXPECT_EQ(run.exitCode, 128 + SIGTERM);
  EXPECT_LT(run.peakKilobytes, 100'000);
  const std::string recorded = textOfFile(record);
  std::size_t points = 0;
  for (std::size_t at = recorded.find("<trkpt"); at != recorded.npos; at = recorded.find("<trkpt", at + 1)) ++points;
  EXPECT_EQ(points, sent);
  tell("watch at 100 Hz with faults", points, "fixes told, each that was sent");
}

TEST(Soak, RequestsOfEveryFateCompleteOnceEachAndLeaveNothing) {
  HTTPTestServer server;
  const std::string head = "HTTP/1.1 200 OK\r\n";
  const std::array<HTTPTestServer::Handler, 8> fates{
      HTTPTestServer::answering(200, std::string(3000, 'x')),
      HTTPTestServer::answering(404, "no"),
      HTTPTestServer::redirecting("/0"),
      HTTPTestServer::sending(head + "Content-Length: 9\r\n\r\nhel"),
      HTTPTestServer::sending("\x16\x03garbage\r\n\r\n"),
      HTTPTestServer::sending(head + "Content-Encoding: gzip\r\n\r\nno gzip"),
      HTTPTestServer::sending(""),
      [](const auto&, auto& connection) { connection.reset(); },
  };
  for (std::size_t i = 0; i < fates.size(); ++i) server.on("/" + std::to_string(i), fates[i]);

  const auto loop = std::make_shared<GLibLoop>();
  const auto session = std::make_shared<CurlSession>(loop, std::make_shared<ZRFakeClock>(), TransferOptions{});
  constexpr std::size_t kAtOnce = 50;
  std::size_t asked = 0, completed = 0, errors = 0;
  const auto ask = [&] {
    const std::size_t number = asked++;
    const auto answered = [&, number, times = 0](const auto&, const auto&, const auto& error) mutable {
      EXPECT_EQ(++times, 1);
      const bool shouldFail = number % fates.size() >= 3;
      EXPECT_EQ(error.has_value(), shouldFail) << number % fates.size();
      ++completed;
      errors += error.has_value();
    };
    session
        ->dataTaskWithRequest({.URL = NSURL::URLWithString(server.url("/" + std::to_string(number % fates.size())))},
                              answered)
        ->resume();
  };
  long early = 0;
  for (const auto end = endOfRow(); Clock::now() < end;) {
    const std::size_t last = asked + 2000;
    while (completed < last) {
      while (asked < last && asked < completed + kAtOnce) ask();
      g_main_context_iteration(loop->context(), TRUE);
    }
    server.stop();  // which ends its threads
    server.start();
    if (early == 0) early = residentKilobytes();
  }
  EXPECT_EQ(completed, asked);
  const long serversNotes = static_cast<long>(completed / 2);  // kilobytes: what it was asked
  EXPECT_LT(residentKilobytes(), early + serversNotes + 20'000);
  tell("requests on loopback", completed, "answered once each");
}

TEST(Soak, TwoWritersOfSettingsLoseNothing) {
  const TemporaryFolder folder;
  const auto file = folder.path / "settings.keyfile";
  const auto end = endOfRow();
  constexpr int kKeys = 50;
  const auto open = [&] {
    return std::make_shared<KeyFileDefaults>(file, std::make_shared<ZRFakeMainQueue>(), std::make_shared<ZRFakeLog>());
  };
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  for (const char* const writer : {"a", "b"}) {
    if (::fork() != 0) continue;
    const auto defaults = open();
    int count = 0;
    for (; Clock::now() < end; ++count) {
      defaults->setStringForKey(std::to_string(count), writer + std::to_string(count % kKeys));
      if (!defaults->synchronize()) ::_exit(1);
    }
    const std::array<int, 2> told{*writer, count};
    ::_exit(::write(ends[1], told.data(), sizeof told) == sizeof told ? 0 : 1);
  }
  int status = 0;
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(::wait(&status) > 0 && status == 0);
  const auto defaults = open();
  std::size_t all = 0;
  for (int i = 0; i < 2; ++i) {
    std::array<int, 2> told{};
    ASSERT_EQ(::read(ends[0], told.data(), sizeof told), static_cast<ssize_t>(sizeof told));
    for (int count = std::max(0, told[1] - kKeys); count < told[1]; ++count) {
      const std::string key = static_cast<char>(told[0]) + std::to_string(count % kKeys);
      EXPECT_EQ(defaults->stringForKey(key), std::to_string(count));
    }
    all += static_cast<std::size_t>(told[1]);
  }
  tell("two writers of settings", all, "settings stored, none lost");
}

}  // namespace
