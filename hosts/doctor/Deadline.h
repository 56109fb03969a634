// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DOCTOR_DEADLINE_H
#define ZRCORE_HOSTS_DOCTOR_DEADLINE_H

#include <poll.h>

#include <algorithm>
#include <chrono>
#include <string>

namespace doctor {

/// A moment after which nothing is waited for any more.
class Deadline {
 public:
  explicit Deadline(double seconds)
      : end_(std::chrono::steady_clock::now() +
             std::chrono::duration_cast<std::chrono::steady_clock::duration>(std::chrono::duration<double>(seconds))) {}

  int millisecondsLeft() const {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end_ - std::chrono::steady_clock::now());
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
  }

  /// Waits until a descriptor is ready. False when time ran out before.
  bool wait(int descriptor, short events) const {
    pollfd polled{descriptor, events, 0};
    return ::poll(&polled, 1, millisecondsLeft()) > 0;
  }

 private:
  std::chrono::steady_clock::time_point end_;
};

/// What a program said on its standard output.
struct ProgramRun {
  bool isFound = false;
  bool isLate = false;  ///< it was ended
  int exitCode = -1;    ///< -1: killed by a signal
  std::string output;
};

ProgramRun runProgram(const std::string& program, const std::string& argument, const Deadline& deadline);

}  // namespace doctor

#endif
