// SPDX-License-Identifier: Apache-2.0
#include "log/LinuxLog.h"

#include <ZRCore/ZRPrintableText.h>
#include <glib.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

/// In one call, so that lines of several threads do not mix.
void writeToStandardError(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(STDERR_FILENO, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return;  // there is nobody left to tell
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

}  // namespace

bool isStandardErrorTheJournal() {
  const char* const stream = g_getenv("JOURNAL_STREAM");
  struct stat status {};
  if (!stream || fstat(STDERR_FILENO, &status) != 0) return false;
  return std::to_string(status.st_dev) + ':' + std::to_string(status.st_ino) == stream;
}

LinuxLog::LinuxLog(std::optional<std::string> journalSocket) {
  if (!journalSocket || journalSocket->size() >= sizeof journal_.sun_path) return;
  journal_.sun_family = AF_UNIX;
  journalSocket->copy(journal_.sun_path, journalSocket->size());
  socket_ = FileDescriptor(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

void LinuxLog::writeLine(std::string_view line) {
  const std::string printable = ZRPrintableText(line);
  if (socket_.isOpen()) {
    std::string fields = "PRIORITY=6\nMESSAGE=" + printable + '\n';
    if (const char* const program = g_get_prgname()) fields += "SYSLOG_IDENTIFIER=" + ZRPrintableText(program) + '\n';
    // To the name each time and not to a connection, which would end with a restart of the journal.
    const auto* const address = reinterpret_cast<const sockaddr*>(&journal_);
    if (sendto(socket_.get(), fields.data(), fields.size(), MSG_NOSIGNAL, address, sizeof journal_) >= 0) return;
  }
  writeToStandardError(printable + '\n');
}
