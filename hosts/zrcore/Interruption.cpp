// SPDX-License-Identifier: Apache-2.0
#include "Interruption.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <initializer_list>

namespace {

/// timeout(1) sends its signal to the process and to its group: both are one wish. No hand is as fast.
constexpr std::int64_t kNanosecondsOfOneWish = 100'000'000;

std::atomic<int> received = 0;
std::atomic<std::int64_t> receivedAt = 0;  // nanoseconds
std::atomic<int> wakeUp = -1;
std::atomic<void (*)()> lastAct = nullptr;

std::int64_t now() {
  timespec time{};
  ::clock_gettime(CLOCK_MONOTONIC, &time);
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

void remember(int number) {
  receivedAt = now();
  received = number;
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = ::write(wakeUp, &one, sizeof one);  // nothing can be done about a failure
}

/// A terminal that closes sends SIGHUP, and so does its shell; and after the limit of a file's size has been met the
/// other files are still to be completed. Neither is impatience.
bool isImpatient(int number) {
  return number != SIGHUP && number != SIGXFSZ && now() - receivedAt > kNanosecondsOfOneWish;
}

void endAtOnce(int number) {
  if (const auto act = lastAct.load()) act();
  std::signal(number, SIG_DFL);
  std::raise(number);  // it takes effect on the handler's return
}

extern "C" void handle(int number) {
  const int error = errno;
  if (received == 0) {
    remember(number);
  } else if (isImpatient(number)) {
    endAtOnce(number);
  }
  errno = error;
}

bool isIgnored(int number) {
  struct sigaction action {};
  return ::sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

void interruption::listen() {
  if (wakeUp >= 0) return;
  wakeUp = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  struct sigaction action {};
  action.sa_handler = handle;  // without SA_RESTART: a read that waits for input must come back
  const auto ends = {SIGINT, SIGTERM, SIGQUIT, SIGHUP, SIGXFSZ};
  for (const int number : ends) ::sigaddset(&action.sa_mask, number);
  for (const int number : ends) {
    if (number != SIGHUP || !isIgnored(number)) ::sigaction(number, &action, nullptr);
  }
}

int interruption::signal() { return received; }

int interruption::exitCode() { return 128 + signal(); }

int interruption::descriptor() { return wakeUp; }

void interruption::beforeSuddenEnd(void (*act)()) { lastAct = act; }
