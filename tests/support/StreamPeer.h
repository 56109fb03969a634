// SPDX-License-Identifier: Apache-2.0
/// @file
/// The other end of a UNIX socket, as a test wants it.
#ifndef ZRCORE_TESTS_SUPPORT_STREAMPEER_H
#define ZRCORE_TESTS_SUPPORT_STREAMPEER_H

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "loop/Loop.h"

/// Listens at a path, takes one connection after the other, and says what the test says.
class StreamPeer {
 public:
  StreamPeer(Loop& loop, std::string path) : loop_(loop), path_(std::move(path)) { listen(); }
  StreamPeer(const StreamPeer&) = delete;
  StreamPeer& operator=(const StreamPeer&) = delete;
  ~StreamPeer() {
    hangUp();
    disappear();
  }

  void listen() {
    listener_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path_.c_str(), sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0) << path_;
    ASSERT_EQ(::listen(listener_, 8), 0);
    accepting_ = loop_.watch(listener_, {.canRead = true}, [this](Loop::Readiness) {
      hangUp();
      connection_ = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
      ++connections;
    });
  }

  /// Ends the connection; the next one is taken.
  void hangUp() {
    if (connection_ >= 0) ::close(std::exchange(connection_, -1));
  }

  /// Nothing answers any more.
  void disappear() {
    if (listener_ < 0) return;
    accepting_.reset();
    ::close(std::exchange(listener_, -1));
    ::unlink(path_.c_str());
  }

  bool isConnected() const { return connection_ >= 0; }

  /// Sends something short.
  void say(std::string_view bytes) const { EXPECT_EQ(saySome(bytes), bytes.size()); }

  /// Sends as much as fits now. @return how many bytes that was.
  std::size_t saySome(std::string_view bytes) const {
    const ssize_t sent = ::send(connection_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    return sent > 0 ? static_cast<std::size_t>(sent) : 0;
  }

  /// Whether the other side has closed the connection. Takes what it said.
  bool isLeft() const {
    char bytes[256];
    ssize_t count = 0;
    do count = ::recv(connection_, bytes, sizeof bytes, MSG_DONTWAIT);
    while (count > 0);
    return count == 0 || (count < 0 && errno == ECONNRESET);
  }

  int connections = 0;

 private:
  Loop& loop_;
  std::string path_;
  int listener_ = -1, connection_ = -1;
  std::unique_ptr<Loop::Wait> accepting_;
};

#endif
