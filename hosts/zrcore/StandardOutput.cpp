// SPDX-License-Identifier: Apache-2.0
#include "StandardOutput.h"

#include <poll.h>
#include <trip/outputs/OutputError.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "Interruption.h"

StandardOutput::StandardOutput() { std::signal(SIGPIPE, SIG_IGN); }

void StandardOutput::write(std::string_view bytes) {
  constexpr std::size_t kMostBuffered = 65536;
  if (isClosed_) return;
  buffer_ += bytes;
  if (buffer_.size() >= kMostBuffered) flush();
}

void StandardOutput::flush() {
  std::string_view rest = buffer_;
  while (!rest.empty() && !isClosed_) {
    const ssize_t written = ::write(STDOUT_FILENO, rest.data(), rest.size());
    if (written < 0) {
      failed(errno);
    } else {
      rest.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  buffer_.clear();
}

/// Returns when writing can go on, or is over.
void StandardOutput::failed(int error) {
  if (error == EAGAIN) {  // somebody else has made the terminal or the pipe so
    pollfd room{STDOUT_FILENO, POLLOUT, 0};
    if (::poll(&room, 1, -1) > 0) return;
    error = EINTR;
  }
  if (error == EINTR && interruption::signal() == 0) return;
  isClosed_ = true;
  const bool isToldBySignal = error == EINTR || (error == EFBIG && interruption::signal() != 0);
  if (error != EPIPE && !isToldBySignal) throw trip::OutputError::ofSystem("standard output", error);
}
