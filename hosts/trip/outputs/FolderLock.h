// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_FOLDERLOCK_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_FOLDERLOCK_H

#include <owners/FileDescriptor.h>

#include <filesystem>

namespace trip {

/// Holds a folder, so that no other run writes into it meanwhile. The lock is the folder's own and leaves no file; it
/// goes with its object, or with the process.
class FolderLock {
 public:
  /// On a file system that knows no such locks nothing is held.
  /// @throws OutputError when another process holds the folder, which it names; or when there is no such folder.
  explicit FolderLock(const std::filesystem::path& folder);

 private:
  FileDescriptor folder_;
};

}  // namespace trip

#endif
