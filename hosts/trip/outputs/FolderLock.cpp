// SPDX-License-Identifier: Apache-2.0
#include "FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "OutputError.h"

namespace trip {

namespace {

/// Who holds the lock on an open file, as the system's table of locks reports: "process 1234". A holder in another
/// container stands there without its number, or not at all.
std::string holderOf(int descriptor) {
  const std::string somebody = "another process";
  struct stat status {};
  if (::fstat(descriptor, &status) != 0) return somebody;
  std::array<char, 64> place{};  // "08:01:1234", as proc_locks(5) has it
  std::snprintf(place.data(), place.size(), "%02x:%02x:%llu", ::major(status.st_dev), ::minor(status.st_dev),
                static_cast<unsigned long long>(status.st_ino));
  std::ifstream table("/proc/locks");
  for (std::string line; std::getline(table, line);) {
    std::istringstream words(line);
    std::string number, kind, mode, access, process, where;
    words >> number >> kind >> mode >> access >> process >> where;
    if (kind == "FLOCK" && where == place.data() && process.find_first_not_of("0") != std::string::npos) {
      return "process " + process;
    }
  }
  return somebody;
}

}  // namespace

FolderLock::FolderLock(const std::filesystem::path& folder)
    : folder_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  if (!folder_.isOpen()) {
    if (errno == EACCES) return;  // a folder that may be written to but not read
    throw OutputError::ofSystem(folder, errno);
  }
  if (::flock(folder_.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return;
  throw OutputError(folder, holderOf(folder_.get()) + " is writing into it",
                    "wait for its end or choose another folder");
}

}  // namespace trip
