// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_OUTPUTERROR_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_OUTPUTERROR_H

#include <filesystem>
#include <stdexcept>
#include <string>

namespace trip {

/// A file of the trip could not be written. `what()` reads "PATH: cause; remedy".
class OutputError : public std::runtime_error {
 public:
  OutputError(std::filesystem::path path, std::string cause, std::string remedy);

  /// The failure of a system call on `path`, with the remedy that fits `errorNumber`.
  static OutputError ofSystem(std::filesystem::path path, int errorNumber);
  /// `path` is taken and was not to be overwritten.
  static OutputError exists(std::filesystem::path path);
  /// `path` is a device or a pipe.
  static OutputError isNoFile(std::filesystem::path path);

  /// Whether another path, or the wish to overwrite, is all that is needed; otherwise the system refuses.
  bool isOfPath() const { return isOfPath_; }

  const std::filesystem::path& path() const { return path_; }
  const std::string& cause() const { return cause_; }
  const std::string& remedy() const { return remedy_; }

 private:
  std::filesystem::path path_;
  std::string cause_;
  std::string remedy_;
  bool isOfPath_ = false;
};

}  // namespace trip

#endif
