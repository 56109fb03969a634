// SPDX-License-Identifier: Apache-2.0
// How long a fix takes from the daemon's socket to a client's delegate, through the real location manager, with one
// report an instant and with two, counted from the last; how much memory a long stream costs; how often the loop wakes
// up once everything is stopped. positioning_latency [FIXES [IDLE_SECONDS]]
#include <ZRCore/ZRLinuxPlatform.h>
#include <ZRCore/ZRLocationManager.h>
#include <glib.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

class Client final : public ZRDidUpdateLocations {
 public:
  void locationManagerDidUpdateLocations(ZRLocationManager&, const ZRLocations& locations) override {
    arrived = Clock::now();
    fixes += locations.size();
  }
  Clock::time_point arrived;
  std::size_t fixes = 0;
};

/// @param speed  in metres per second
std::string report(std::size_t second, double speed) {
  char text[320];
  const int length = std::snprintf(
      text, sizeof text,
      "{\"class\":\"TPV\",\"device\":\"/dev/pts/0\",\"mode\":3,\"time\":\"2026-05-%02zuT%02zu:%02zu:%02zu.000Z\","
      "\"ept\":0.005,\"lat\":%.9f,\"lon\":13.400820000,\"altHAE\":74.0,\"altMSL\":34.0,\"alt\":34.0,\"epv\":25.3,"
      "\"track\":90.0,\"magtrack\":94.1,\"speed\":%.2f,\"climb\":0.0,\"eph\":19.0,\"sep\":28.5}\n",
      second / 86400 + 1, second / 3600 % 24, second / 60 % 60, second % 60, static_cast<double>(second) * 1e-5, speed);
  return {text, static_cast<std::size_t>(length)};
}

long residentKilobytes() {
  long size = 0, resident = 0;
  std::FILE* const file = std::fopen("/proc/self/statm", "r");
  if (file == nullptr || std::fscanf(file, "%ld %ld", &size, &resident) != 2) resident = 0;
  if (file != nullptr) std::fclose(file);
  return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

void say(int socket, const std::string& text) {
  if (::send(socket, text.data(), text.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(text.size())) std::abort();
}

}  // namespace

int main(int argc, char** argv) {
  const std::size_t fixes = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 86400;
  const double idleSeconds = argc > 2 ? std::strtod(argv[2], nullptr) : 60.0;

  char folder[] = "/tmp/zrcoreXXXXXX";
  if (::mkdtemp(folder) == nullptr) return 1;
  const std::string path = std::string(folder) + "/gpsd";
  const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
  if (::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return 1;
  ::listen(listener, 1);

  ZRLinuxOptions options;
  options.positioning = "gpsd:" + path;
  if (!ZRPlatformInstall(makeLinuxPlatform(options))) return 1;
  const auto client = std::make_shared<Client>();
  const auto manager = ZRLocationManager::init();
  manager->setDelegate(client);
  manager->startUpdatingLocation();
  for (int round = 0; round < 20; ++round) g_main_context_iteration(nullptr, FALSE);
  const int connection = ::accept(listener, nullptr, nullptr);
  say(connection,
      "{\"class\":\"VERSION\",\"release\":\"3.22\"}\n{\"class\":\"DEVICES\",\"devices\":[{\"path\":\"x\"}]}\n");

  std::vector<double> microseconds(fixes, 1.0);  // its pages are there before the memory is looked at
  long early = 0;
  for (const int reports : {1, 2}) {
    const std::size_t before = client->fixes;
    for (std::size_t fix = 1; fix <= fixes; ++fix) {
      if (reports == 2) {
        say(connection, report(before + fix, 93.28));  // derived by the daemon, until the receiver's own has come
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
      }
      const std::string last = report(before + fix, 13.89);
      const auto sent = Clock::now();
      say(connection, last);
      ZRRunLinuxLoopUntil([&] { return client->fixes == before + fix; });
      microseconds[fix - 1] = std::chrono::duration<double, std::micro>(client->arrived - sent).count();
      if (early == 0 && fix == fixes / 10) early = residentKilobytes();
    }
    std::sort(microseconds.begin(), microseconds.end());
    const auto quantile = [&](double part) {
      return microseconds[static_cast<std::size_t>(part * static_cast<double>(microseconds.size() - 1))];
    };
    std::printf(
        "%zu fixes of %d report(s), the last at the socket to the delegate: median %.1f us, 99th percentile %.1f us, "
        "most %.1f us\n",
        fixes, reports, quantile(0.5), quantile(0.99), microseconds.back());
  }
  const long late = residentKilobytes();
  std::printf("resident: %ld kB after a tenth, %ld kB at the end\n", early, late);

  manager->stopUpdatingLocation();
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
  bool isOver = false;
  GSource* const end = g_timeout_source_new(static_cast<guint>(idleSeconds * 1000.0));
  g_source_set_callback(
      end,
      [](gpointer over) -> gboolean {
        *static_cast<bool*>(over) = true;
        return G_SOURCE_REMOVE;
      },
      &isOver, nullptr);
  g_source_attach(end, nullptr);
  int iterations = 0;
  for (; !isOver; ++iterations) g_main_context_iteration(nullptr, TRUE);
  std::printf("stopped: %d loop iteration(s) in %.0f s, one of which ends the count\n", iterations, idleSeconds);
  g_source_unref(end);
  ::close(connection);
  ::close(listener);
  ::unlink(path.c_str());
  ::rmdir(folder);
}
