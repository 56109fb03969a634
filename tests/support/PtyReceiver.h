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
#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "loop/Loop.h"

/// Drives eastwards along the parallel of 52.5 degrees, one fix a second of its own time.
class PtyReceiver {
 public:
  enum class Manner {
    plain,
    /// GGA and GNS come before the speed, which is a tenth of what the places say. Without a fix at first, so that the
    /// daemon takes GNS for the end of an instant.
    modem,
  };

  explicit PtyReceiver(Loop& loop, Manner manner = Manner::plain) : loop_(loop), manner_(manner) {
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
    sentence_.reset();
    for (int* end : {&master_, &slave_}) {
      if (*end >= 0) ::close(std::exchange(*end, -1));
    }
  }

  void sendOne() {
    const int second = sent_++;
    const double speed = 10.0 + 3.0 * std::sin(second / 5.0);
    longitude_ += speed / (111320.0 * 0.6087614290);
    char time[20], place[40], knots[20];
    std::snprintf(time, sizeof time, "09%02d%02d.00", second / 60, second % 60);
    std::snprintf(place, sizeof place, "5230.0000,N,013%07.4f,E", (longitude_ - 13.0) * 60.0);
    std::snprintf(knots, sizeof knots, "%.1f", toldSpeed(speed) / 0.514444);
    say(manner_ == Manner::plain ? plainWords(time, place, knots) : modemWords(time, place, knots, second));
  }

  /// In metres per second, what it says of its speed.
  double toldSpeed(double speed) const { return manner_ == Manner::modem ? speed / 10.0 : speed; }

 private:
  using Sentences = std::vector<std::string>;

  static Sentences plainWords(const std::string& time, const std::string& place, const std::string& knots) {
    return {"GPRMC," + time + ",A," + place + "," + knots + ",90.0,090526,,,A",
            "GPGGA," + time + "," + place + ",1,08,1.0,34.0,M,40.0,M,,",
            "GPGSA,A,3,01,02,03,04,05,06,07,08,,,,,1.5,1.0,1.1"};
  }

  static Sentences modemWords(const std::string& time, const std::string& place, const std::string& knots, int second) {
    constexpr int kSecondsWithoutFix = 6;
    if (second < kSecondsWithoutFix) {
      return {"GNGNS," + time + ",,,,,NNN,,,,,,", "GPVTG,,T,,M,,N,,K,N", "GPGSA,A,1,,,,,,,,,,,,,,,",
              "GPGGA,,,,,,0,,,,,,,,", "GPRMC,,V,,,,,,,,,,N"};
    }
    return {"GPGGA," + time + "," + place + ",1,08,1.0,34.0,M,40.0,M,,",
            "GNGNS," + time + "," + place + ",AAN,08,1.0,34.0,40.0,,,V", "GPVTG,90.0,T,,M," + knots + ",N,,K,A",
            "GPRMC," + time + ",A," + place + "," + knots + ",90.0,090526,,,A",
            "GPGSA,A,3,01,02,03,04,05,06,07,08,,,,,1.5,1.0,1.1"};
  }

  /// A modem's line is slow: its sentences come one by one.
  void say(const Sentences& bodies) {
    if (manner_ == Manner::plain) {
      std::string sentences;
      for (const std::string& body : bodies) sentences += framed(body);
      return write(sentences);
    }
    waiting_.insert(waiting_.end(), bodies.begin(), bodies.end());
    sayNext();
  }

  void sayNext() {
    if (waiting_.empty()) return;
    write(framed(waiting_.front()));
    waiting_.pop_front();
    const double secondsBetween = 0.01;
    sentence_ = loop_.after(secondsBetween, [this] { sayNext(); });
  }

  void write(const std::string& bytes) {
    [[maybe_unused]] const auto written = ::write(master_, bytes.data(), bytes.size());
  }

  static std::string framed(const std::string& body) {
    unsigned sum = 0;
    for (const char c : body) sum ^= static_cast<unsigned char>(c);
    char checksum[8];
    std::snprintf(checksum, sizeof checksum, "*%02X\r\n", sum);
    return "$" + body + checksum;
  }

  Loop& loop_;
  Manner manner_;
  int master_ = -1, slave_ = -1;  // the slave is held, so that the line stays up between two of its readers
  std::string path_;
  int sent_ = 0;
  double longitude_ = 13.4;
  std::deque<std::string> waiting_;
  std::unique_ptr<Loop::Wait> next_, sentence_;
};

#endif
