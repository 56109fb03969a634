// SPDX-License-Identifier: Apache-2.0
#include "OutputFile.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <utility>

#include "OutputError.h"

namespace trip {

namespace {
void writeTo(std::FILE* file, std::string_view bytes, const std::filesystem::path& path) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size()) throw OutputError::ofSystem(path, errno);
}

/// Puts `partial` in the place of `target`, or fails if that has been taken meanwhile.
void moveIntoFreePlace(const std::filesystem::path& partial, const std::filesystem::path& target) {
  if (::link(partial.c_str(), target.c_str()) == 0) {  // unlike rename, this never replaces
    ::unlink(partial.c_str());
    return;
  }
  if (errno == EEXIST) throw OutputError::exists(target);
  requireFree(target, false);  // a file system without hard links
  if (std::rename(partial.c_str(), target.c_str()) != 0) throw OutputError::ofSystem(target, errno);
}
}  // namespace

void requireFree(const std::filesystem::path& target, bool force) {
  std::error_code ignored;  // what cannot even be asked fails with its cause when the file is opened
  if (!force && std::filesystem::exists(std::filesystem::symlink_status(target, ignored))) {
    throw OutputError::exists(target);
  }
}

OutputFile::OutputFile(std::filesystem::path target, bool force)
    : target_(std::move(target)), partial_(target_.string() + ".partial"), force_(force) {
  requireFree(target_, force_);
  file_.reset(std::fopen(partial_.c_str(), "wb"));
  if (!file_) throw OutputError::ofSystem(partial_, errno);
}

OutputFile::~OutputFile() {
  if (!file_) return;
  file_.reset();
  ::unlink(partial_.c_str());
}

void OutputFile::write(std::string_view bytes) { writeTo(file_.get(), bytes, target_); }

void OutputFile::commit() {
  // The last bytes may find the disk full only now; the handle stays open, so that the destructor clears the partial
  // file.
  if (std::fflush(file_.get()) != 0) throw OutputError::ofSystem(target_, errno);
  if (!force_) {
    moveIntoFreePlace(partial_, target_);
  } else if (std::rename(partial_.c_str(), target_.c_str()) != 0) {
    throw OutputError::ofSystem(target_, errno);
  }
  file_.reset();
}

ScratchFile::ScratchFile(const std::filesystem::path& beside) : folder_(beside.parent_path()) {
  std::string name = (folder_ / ".trip-XXXXXX").string();
  const int descriptor = ::mkstemp(name.data());
  if (descriptor < 0) throw OutputError::ofSystem(folder_, errno);
  ::unlink(name.c_str());
  file_.reset(::fdopen(descriptor, "w+b"));
  if (!file_) {
    const int error = errno;
    ::close(descriptor);
    throw OutputError::ofSystem(folder_, error);
  }
}

void ScratchFile::write(std::string_view bytes) { writeTo(file_.get(), bytes, folder_); }

void ScratchFile::copyTo(OutputFile& target) {
  if (std::fseek(file_.get(), 0, SEEK_SET) != 0) throw OutputError::ofSystem(folder_, errno);
  std::array<char, 65536> block;
  while (const std::size_t count = std::fread(block.data(), 1, block.size(), file_.get())) {
    target.write({block.data(), count});
  }
  if (std::ferror(file_.get()) != 0) throw OutputError::ofSystem(folder_, errno);
  std::fseek(file_.get(), 0, SEEK_END);
}

}  // namespace trip
