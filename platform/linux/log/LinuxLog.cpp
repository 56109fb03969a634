// SPDX-License-Identifier: Apache-2.0
#include "log/LinuxLog.h"

#include <glib.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

/// The length of the printable character that `text` begins with; 0 when it begins with none.
std::size_t printableLength(std::string_view text) {
  const gunichar character = g_utf8_get_char_validated(text.data(), static_cast<gssize>(text.size()));
  constexpr gunichar notUTF8 = 0xFFFFFFFD;  // and above
  if (character >= notUTF8 || (g_unichar_iscntrl(character) && character != '\t')) return 0;
  const GUnicodeType type = g_unichar_type(character);
  if (type == G_UNICODE_LINE_SEPARATOR || type == G_UNICODE_PARAGRAPH_SEPARATOR) return 0;
  return static_cast<std::size_t>(g_unichar_to_utf8(character, nullptr));
}

/// In one call, so that lines of several threads do not mix.
void writeToStandardError(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(STDERR_FILENO, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return;  // there is nobody left to tell
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

}  // namespace

std::string printableLine(std::string_view text) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string line;
  while (!text.empty()) {
    const std::size_t length = printableLength(text);
    if (length > 0) {
      line.append(text.substr(0, length));
      text.remove_prefix(length);
    } else {
      const auto byte = static_cast<unsigned char>(text.front());
      line.append("\\x").append(1, digits[byte >> 4U]).append(1, digits[byte & 0xFU]);
      text.remove_prefix(1);
    }
  }
  return line;
}

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
  socket_ = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

LinuxLog::~LinuxLog() {
  if (socket_ >= 0) close(socket_);
}

void LinuxLog::writeLine(std::string_view line) {
  const std::string printable = printableLine(line);
  if (socket_ >= 0) {
    std::string fields = "PRIORITY=6\nMESSAGE=" + printable + '\n';
    if (const char* const program = g_get_prgname()) fields += "SYSLOG_IDENTIFIER=" + printableLine(program) + '\n';
    // To the name each time and not to a connection, which would end with a restart of the journal.
    const auto* const address = reinterpret_cast<const sockaddr*>(&journal_);
    if (sendto(socket_, fields.data(), fields.size(), MSG_NOSIGNAL, address, sizeof journal_) >= 0) return;
  }
  writeToStandardError(printable + '\n');
}
