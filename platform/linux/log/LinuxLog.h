// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_LINUXLOG_H
#define ZRCORE_LINUX_LINUXLOG_H

#include <ZRCore/ZRPlatform.h>
#include <owners/FileDescriptor.h>
#include <sys/un.h>

#include <optional>
#include <string>
#include <string_view>

/// Whether the standard error stream leads to the journal, as the service manager says in JOURNAL_STREAM.
bool isStandardErrorTheJournal();

/// Writes lines, made printable, to the standard error stream, or to the journal, as datagrams of its own protocol;
/// those that it does not take go to the standard error stream.
class LinuxLog final : public ZRLog {
 public:
  /// @param journalSocket  where the journal listens; absent: the standard error stream alone.
  explicit LinuxLog(std::optional<std::string> journalSocket);

  void writeLine(std::string_view line) override;

 private:
  sockaddr_un journal_{};
  FileDescriptor socket_;
};

#endif
