// SPDX-License-Identifier: Apache-2.0
/// @file
/// A receiver on a serial line, made of a pseudo-terminal.
#ifndef ZRCORE_TESTS_SUPPORT_PTYRECEIVER_H
#define ZRCORE_TESTS_SUPPORT_PTYRECEIVER_H

#include <fcntl.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>

#include "loop/Loop.h"

/// Drives eastwards along the parallel of 52.5 degrees, one fix a second of its own time.
class PtyReceiver {
 public:
  explicit PtyReceiver(Loop& loop) : loop_(loop) {
    char name[128] = "";
    if (::openpty(&master_, &slave_, name, nullptr, nullptr) != 0) return;
    termios settings{};
    ::tcgetattr(slave_, &settings);
    ::cfmakeraw(&settings);
    ::tcsetattr(slave_, TCSANOW, &settings);
    ::fcntl(master_, F_SETFL, O_NONBLOCK);
    ::fcntl(master_, F_SETFD, FD_CLOEXEC);
    ::fcntl(slave_, F_SETFD, FD_CLOEXEC);
    path_ = name;
  }
  PtyReceiver(const PtyReceiver&) = delete;
  PtyReceiver& operator=(const PtyReceiver&) = delete;
  ~PtyReceiver() { unplug(); }

  const std::string& path() const { return path_; }

  /// Begins to send, a fix every `seconds`.
  void send(double seconds) {
    next_ = loop_.after(seconds, [this, seconds] {
      sendOne();
      send(seconds);
    });
  }

  void unplug() {
    next_.reset();
    for (int* end : {&master_, &slave_}) {
      if (*end >= 0) ::close(std::exchange(*end, -1));
    }
  }

  void sendOne() {
    const int second = sent_++;
    const double speed = 10.0 + 3.0 * std::sin(second / 5.0);
    longitude_ += speed / (111320.0 * 0.6087614290);
    const double minutes = (longitude_ - 13.0) * 60.0;
    char rmc[120], gga[120];
    std::snprintf(rmc, sizeof rmc, "GPRMC,09%02d%02d.00,A,5230.0000,N,013%07.4f,E,%.1f,90.0,090526,,,A", second / 60,
                  second % 60, minutes, speed / 0.514444);
    std::snprintf(gga, sizeof gga, "GPGGA,09%02d%02d.00,5230.0000,N,013%07.4f,E,1,08,1.0,34.0,M,40.0,M,,", second / 60,
                  second % 60, minutes);
    const std::string sentences =
        framed(rmc) + framed(gga) + framed("GPGSA,A,3,01,02,03,04,05,06,07,08,,,,,1.5,1.0,1.1");
    [[maybe_unused]] const auto written = ::write(master_, sentences.data(), sentences.size());
  }

 private:
  static std::string framed(const std::string& body) {
    unsigned sum = 0;
    for (const char c : body) sum ^= static_cast<unsigned char>(c);
    char checksum[8];
    std::snprintf(checksum, sizeof checksum, "*%02X\r\n", sum);
    return "$" + body + checksum;
  }

  Loop& loop_;
  int master_ = -1, slave_ = -1;  // the slave is held, so that the line stays up between two of its readers
  std::string path_;
  int sent_ = 0;
  double longitude_ = 13.4;
  std::unique_ptr<Loop::Wait> next_;
};

#endif
