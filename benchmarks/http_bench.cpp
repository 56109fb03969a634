// SPDX-License-Identifier: Apache-2.0
// What a request costs: small ones, one after the other on a kept connection, against libcurl alone, in one run; then
// what the process holds after many. http_bench [REQUESTS]
#include <ZRCore/NSURLSession_ZR.h>
#include <ZRCore/ZRLinuxPlatform.h>
#include <curl/curl.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "HTTPTestServer.h"

namespace {

// Short rounds in turn, so that what else the machine does hits both.
constexpr int kRounds = 101;
constexpr int kRequestsPerRound = 100;

/// Client and server on one processor. On two that are idle otherwise, waking the other one costs more than the
/// request, and the scheduler's choice decides the ratio (we have seen 0.3 and 4).
void stayOnOneProcessor() {
  cpu_set_t processors;
  CPU_ZERO(&processors);
  CPU_SET(::sched_getcpu(), &processors);
  ::sched_setaffinity(0, sizeof processors, &processors);
}

/// A server in a process of its own, so that it counts neither as memory nor as descriptors.
class ServerProcess {
 public:
  ServerProcess() {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) std::abort();
    process_ = ::fork();
    if (process_ == 0) {
      ::close(ends[0]);
      HTTPTestServer server;
      server.on("/", HTTPTestServer::answering(200, R"({"mapconfig":{"1":{}}})"));
      const std::string url = server.url("/") + "\n";
      if (::write(ends[1], url.data(), url.size()) < 0) std::abort();
      ::close(ends[1]);
      for (;;) ::pause();
    }
    ::close(ends[1]);
    for (char c = 0; ::read(ends[0], &c, 1) == 1 && c != '\n';) url_ += c;
    ::close(ends[0]);
  }
  ServerProcess(const ServerProcess&) = delete;
  ServerProcess& operator=(const ServerProcess&) = delete;
  ~ServerProcess() {
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
  }
  const std::string& url() const { return url_; }

 private:
  pid_t process_ = -1;
  std::string url_;
};

std::size_t discard(char*, std::size_t, std::size_t count, void* sum) {
  *static_cast<std::size_t*>(sum) += count;
  return count;
}

class PlainLibcurl {
 public:
  explicit PlainLibcurl(const std::string& url) : easy_(curl_easy_init()) {
    curl_easy_setopt(easy_, CURLOPT_URL, url.c_str());
    curl_easy_setopt(easy_, CURLOPT_WRITEFUNCTION, discard);
    curl_easy_setopt(easy_, CURLOPT_WRITEDATA, &bytes_);
  }
  PlainLibcurl(const PlainLibcurl&) = delete;
  PlainLibcurl& operator=(const PlainLibcurl&) = delete;
  ~PlainLibcurl() { curl_easy_cleanup(easy_); }
  void operator()(int requests) {
    for (int i = 0; i < requests; ++i) {
      if (curl_easy_perform(easy_) != CURLE_OK) std::abort();
    }
  }

 private:
  CURL* easy_;
  std::size_t bytes_ = 0;
};

/// As users of the kit ask: data tasks of the shared session, answered on the main queue, each asked for when the one
/// before has been answered.
class Session {
 public:
  explicit Session(NSURL url) : url_(std::move(url)) {}

  void operator()(int requests) {
    left_ = requests;
    ask();
    ZRRunLinuxLoopUntil([this] { return left_ == 0; });
  }

 private:
  void ask() {
    NSURLSession_ZR::dataTaskWithRequestSuccessFailure(
        {.URL = url_},
        [this](const auto&, const auto&) {
          if (--left_ > 0) ask();
        },
        [](const auto&, const auto& error) {
          std::fprintf(stderr, "%s\n", error->localizedDescription().c_str());
          std::exit(1);
        })
        ->resume();
  }

  NSURL url_;
  int left_ = 0;
};

struct Cost {
  double microseconds;     ///< a request
  double cpuMicroseconds;  ///< of this process
};

double cpuMicroseconds() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  const auto of = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_usec);
  };
  return of(usage.ru_utime) + of(usage.ru_stime);
}

template <class Ask>
Cost costOf(Ask& ask) {
  const double cpuBefore = cpuMicroseconds();
  const auto begin = std::chrono::steady_clock::now();
  ask(kRequestsPerRound);
  const std::chrono::duration<double, std::micro> taken = std::chrono::steady_clock::now() - begin;
  return {taken.count() / kRequestsPerRound, (cpuMicroseconds() - cpuBefore) / kRequestsPerRound};
}

/// Of the rounds, by one of their two figures.
double median(std::vector<Cost> costs, double Cost::*figure) {
  std::ranges::nth_element(costs, costs.begin() + kRounds / 2, {}, figure);
  return costs[kRounds / 2].*figure;
}

std::ptrdiff_t openDescriptors() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
}

long residentKilobytes() {
  std::ifstream statm("/proc/self/statm");
  long total = 0, resident = 0;
  statm >> total >> resident;
  return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

}  // namespace

int main(int argc, char** argv) {
  stayOnOneProcessor();
  constexpr int kParts = 5;
  const int many = std::max(kParts, argc > 1 ? std::atoi(argv[1]) : 50000);
  const ServerProcess server;
  if (!ZRPlatformInstall(makeLinuxPlatform())) return 1;
  PlainLibcurl plain(server.url());
  Session session(*NSURL::URLWithString(server.url()));

  std::vector<Cost> plainCosts, sessionCosts;
  for (int round = 0; round < kRounds; ++round) {
    plainCosts.push_back(costOf(plain));
    sessionCosts.push_back(costOf(session));
  }
  std::printf("Sequential requests, a request in the median of %d rounds of %d:\n", kRounds, kRequestsPerRound);
  for (const auto& [name, figure] : {std::pair("elapsed", &Cost::microseconds), {"cpu", &Cost::cpuMicroseconds}}) {
    const double ofPlain = median(plainCosts, figure), ofSession = median(sessionCosts, figure);
    std::printf("  %s: libcurl alone %.1f us, session %.1f us, ratio %.2f\n", name, ofPlain, ofSession,
                ofSession / ofPlain);
  }

  const auto tell = [](const char* when) {
    std::printf("%s: %td descriptors, %ld kB resident\n", when, openDescriptors(), residentKilobytes());
  };
  tell("before");
  for (int part = 1; part <= kParts; ++part) {
    session(many / kParts);
    tell(("after " + std::to_string(part * (many / kParts))).c_str());
  }
}
