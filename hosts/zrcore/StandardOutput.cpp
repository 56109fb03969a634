// SPDX-License-Identifier: Apache-2.0
#include "StandardOutput.h"

#include <trip/OutputError.h>

#include <cerrno>
#include <csignal>
#include <cstdio>

StandardOutput::StandardOutput() { std::signal(SIGPIPE, SIG_IGN); }

void StandardOutput::write(std::string_view bytes) {
  if (isClosed_) return;
  if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size()) failed();
}

void StandardOutput::flush() {
  if (isClosed_) return;
  if (std::fflush(stdout) != 0) failed();
}

void StandardOutput::failed() {
  const int error = errno;
  isClosed_ = true;
  if (error != EPIPE) throw trip::OutputError::ofSystem("standard output", error);
}
