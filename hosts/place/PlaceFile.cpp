// SPDX-License-Identifier: Apache-2.0
#include "PlaceFile.h"

#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace place {

namespace {

struct CloseOwnFile {
  void operator()(std::FILE* file) const {
    if (file != stdin) std::fclose(file);
  }
};

}  // namespace

std::string readFile(const std::string& path) {
  const std::unique_ptr<std::FILE, CloseOwnFile> file(path == "-" ? stdin : std::fopen(path.c_str(), "rbe"));
  if (!file) {
    const int error = errno;
    throw FileError(std::string("cannot be opened: ") + std::strerror(error) +
                    (error == ENOENT ? "; check the name" : ""));
  }
  std::string content;
  struct stat status {};
  const bool isKnown = ::fstat(::fileno(file.get()), &status) == 0 && S_ISREG(status.st_mode);
  if (isKnown) {
    content.reserve(static_cast<std::size_t>(status.st_size));  // grown step by step it would take twice that
  }
  std::array<char, 65536> bytes;
  errno = 0;
  while (const std::size_t count = std::fread(bytes.data(), 1, bytes.size(), file.get())) {
    content.append(bytes.data(), count);
  }
  if (std::ferror(file.get()) != 0) {
    const int error = errno;
    if (error == EISDIR) throw FileError("is a folder; give a file in it");
    throw FileError(std::string("cannot be read on: ") + std::strerror(error));
  }
  return content;
}

}  // namespace place
