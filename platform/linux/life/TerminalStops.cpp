// SPDX-License-Identifier: Apache-2.0
#include "life/TerminalStops.h"

#include <fcntl.h>
#include <owners/FileDescriptor.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <utility>

namespace {

/// From the signals' handler to the loop: one byte a signal.
FileDescriptor readEnd, writeEnd;
struct sigaction formerStop, formerContinue;

extern "C" void passOn(int number) {
  const int error = errno;
  const char byte = number == SIGTSTP ? 's' : 'c';
  [[maybe_unused]] const auto written = ::write(writeEnd.get(), &byte, 1);
  errno = error;
}

}  // namespace

TerminalStops::TerminalStops(Loop& loop, std::function<void()> stopping, std::function<void()> continued)
    : loop_(loop), stopping_(std::move(stopping)), continued_(std::move(continued)) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;  // no descriptors left: the stop key stops, as ever
  readEnd = FileDescriptor(ends[0]);
  writeEnd = FileDescriptor(ends[1]);
  readable_ = loop.watch(readEnd.get(), {.canRead = true}, [this](Loop::Readiness) { read(); });
  struct sigaction action {};
  action.sa_handler = passOn;
  action.sa_flags = SA_RESTART;
  ::sigaction(SIGTSTP, &action, &formerStop);
  ::sigaction(SIGCONT, &action, &formerContinue);
}

TerminalStops::~TerminalStops() {
  if (!readable_) return;
  ::sigaction(SIGTSTP, &formerStop, nullptr);
  ::sigaction(SIGCONT, &formerContinue, nullptr);
  readable_.reset();
  readEnd.close();
  writeEnd.close();
}

void TerminalStops::read() {
  char byte = 0;
  if (::read(readEnd.get(), &byte, 1) != 1) return;
  if (byte == 'c') {
    stop_.reset();
    return continued_();
  }
  // SIGTSTP is ours, so its stop is ours to make. What has been let go ends on the loop, before.
  constexpr double kSecondsToEnd = 0.1;
  stop_ = loop_.after(kSecondsToEnd, [] { ::raise(SIGSTOP); });
  stopping_();  // last: who hears of it may end the following, and with it the stop
}
