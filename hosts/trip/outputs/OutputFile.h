// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_OUTPUTFILE_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_OUTPUTFILE_H

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace trip {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

/// Throws OutputError when `target` is there and may not be overwritten. A dangling link counts as there; a device or a
/// pipe is never overwritten, be it under a link's name.
void requireFree(const std::filesystem::path& target, bool force);

/// Whether a row, and what completes a file, surely fits behind so many bytes under the limit of a file's size
/// (RLIMIT_FSIZE) that this process has.
bool hasRoomForRow(std::uint64_t bytes);

/// A file that appears under its name only when it is complete: until `commit()` it grows beside it under a name that
/// nobody can guess, so a killed run leaves no half file under the real name, and nobody else's file or link is written
/// to. Every failure is an OutputError.
class OutputFile {
 public:
  /// @param force whether `commit()` may replace a file or a link of that name.
  OutputFile(std::filesystem::path target, bool force);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  const std::filesystem::path& target() const { return target_; }
  void write(std::string_view bytes);
  std::uint64_t bytesWritten() const { return bytesWritten_; }
  /// For those who write at places of their own; open for reading and writing until the object ends.
  int descriptor() const { return ::fileno(file_.get()); }

  /// Hands everything to the disk, so that it outlasts a failure of power.
  void store();
  /// Stores it, and puts it under its name.
  void commit();
  /// Puts it under its name without waiting for the disk: for what can be had again, and shows whether it is whole.
  void commitUnstored();

 private:
  void putInPlace();

  std::filesystem::path target_;
  std::filesystem::path partial_;
  bool force_;
  bool isCommitted_ = false;
  std::uint64_t bytesWritten_ = 0;
  FileHandle file_;
};

/// A nameless file in the folder of `beside` (the same disk, so the same room for the result); it goes with its object.
class ScratchFile {
 public:
  explicit ScratchFile(const std::filesystem::path& beside);

  void write(std::string_view bytes);
  std::uint64_t bytesWritten() const { return bytesWritten_; }
  /// Appends everything that was written so far.
  void copyTo(OutputFile& target);

 private:
  std::filesystem::path folder_;
  std::uint64_t bytesWritten_ = 0;
  FileHandle file_;
};

}  // namespace trip

#endif
