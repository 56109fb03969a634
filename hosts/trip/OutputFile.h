// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTFILE_H
#define ZRCORE_HOSTS_TRIP_OUTPUTFILE_H

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace trip {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

/// Throws OutputError when `target` is there and may not be overwritten. A dangling link counts as there.
void requireFree(const std::filesystem::path& target, bool force);

/// A file that appears under its name only when it is complete: until `commit()` it grows as NAME.partial, so a killed
/// run leaves no half file under the real name. Every failure is an OutputError.
class OutputFile {
 public:
  /// @param force whether `commit()` may replace a file of that name.
  OutputFile(std::filesystem::path target, bool force);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  void write(std::string_view bytes);
  void commit();

 private:
  std::filesystem::path target_;
  std::filesystem::path partial_;
  bool force_;
  FileHandle file_;
};

/// A nameless file in the folder of `beside` (the same disk, so the same room for the result); it goes with its object.
class ScratchFile {
 public:
  explicit ScratchFile(const std::filesystem::path& beside);

  void write(std::string_view bytes);
  /// Appends everything that was written so far.
  void copyTo(OutputFile& target);

 private:
  std::filesystem::path folder_;
  FileHandle file_;
};

}  // namespace trip

#endif
