// SPDX-License-Identifier: Apache-2.0
#include "OutputFile.h"

#include <fcntl.h>
#include <owners/FileDescriptor.h>
#include <sys/random.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <utility>

#include "OutputError.h"

namespace trip {

namespace {

namespace fs = std::filesystem;

void writeTo(std::FILE* file, std::string_view bytes, const fs::path& path) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size()) throw OutputError::ofSystem(path, errno);
}

/// "" for the current folder becomes ".".
fs::path folderOf(const fs::path& file) { return file.has_parent_path() ? file.parent_path() : fs::path("."); }

/// A name beside `target` that nobody can have prepared a file or a link for.
fs::path partialNameFor(const fs::path& target) {
  constexpr std::size_t kMostOfName = 200;  // names of files end at 255 bytes
  std::uint64_t random = 0;
  if (::getrandom(&random, sizeof random, 0) != sizeof random) throw OutputError::ofSystem(target, errno);
  std::array<char, 17> digits{};
  std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(random));
  const std::string name = target.filename().string().substr(0, kMostOfName);
  return folderOf(target) / (name + '.' + digits.data() + ".partial");
}

/// Puts `partial` in the place of `target`, or fails if that has been taken meanwhile.
void moveIntoFreePlace(const fs::path& partial, const fs::path& target) {
  if (::link(partial.c_str(), target.c_str()) == 0) {  // unlike rename, this never replaces
    ::unlink(partial.c_str());
    return;
  }
  if (errno == EEXIST) throw OutputError::exists(target);
  requireFree(target, false);  // a file system without hard links
  if (std::rename(partial.c_str(), target.c_str()) != 0) throw OutputError::ofSystem(target, errno);
}

/// The error number that the disk gives; 0: everything is stored.
int storeAll(int descriptor) {
  const bool isStored = ::fsync(descriptor) == 0 || errno == EINVAL || errno == EROFS;  // some have no such call
  return isStored ? 0 : errno;
}

/// Until then a file's new name may be lost with the power.
void storeFolder(const fs::path& folder) {
  const FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!opened.isOpen()) return;  // one that may be written to but not read
  if (const int error = storeAll(opened.get())) throw OutputError::ofSystem(folder, error);
}

}  // namespace

void requireFree(const fs::path& target, bool force) {
  std::error_code ignored;  // what cannot even be asked fails with its cause when the file is opened
  if (!force && fs::exists(fs::symlink_status(target, ignored))) throw OutputError::exists(target);
  if (fs::is_other(fs::status(target, ignored))) throw OutputError::isNoFile(target);
}

bool hasRoomForRow(std::uint64_t bytes) {
  constexpr std::uint64_t kRowBytes = 8192;  // several times what the longest takes
  rlimit limit{};
  if (::getrlimit(RLIMIT_FSIZE, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return true;
  return bytes + kRowBytes <= limit.rlim_cur;
}

OutputFile::OutputFile(fs::path target, bool force) : target_(std::move(target)), force_(force) {
  requireFree(target_, force_);
  partial_ = partialNameFor(target_);
  const int descriptor = ::open(partial_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
  if (descriptor < 0) throw OutputError::ofSystem(target_, errno);
  file_.reset(::fdopen(descriptor, "w+b"));
  if (file_) return;
  const int error = errno;
  ::close(descriptor);
  ::unlink(partial_.c_str());
  throw OutputError::ofSystem(target_, error);
}

OutputFile::~OutputFile() {
  if (!isCommitted_) ::unlink(partial_.c_str());
}

void OutputFile::write(std::string_view bytes) {
  writeTo(file_.get(), bytes, target_);
  bytesWritten_ += bytes.size();
}

void OutputFile::store() {
  if (std::fflush(file_.get()) != 0) throw OutputError::ofSystem(target_, errno);
  if (const int error = storeAll(descriptor())) throw OutputError::ofSystem(target_, error);
}

void OutputFile::commit() {
  store();
  putInPlace();
  storeFolder(folderOf(target_));
}

void OutputFile::commitUnstored() {
  if (std::fflush(file_.get()) != 0) throw OutputError::ofSystem(target_, errno);
  putInPlace();
}

void OutputFile::putInPlace() {
  if (!force_) {
    moveIntoFreePlace(partial_, target_);
  } else if (std::rename(partial_.c_str(), target_.c_str()) != 0) {
    throw OutputError::ofSystem(target_, errno);
  }
  isCommitted_ = true;
}

ScratchFile::ScratchFile(const fs::path& beside) : folder_(folderOf(beside)) {
  std::string name = (folder_ / ".trip-XXXXXX").string();
  const int descriptor = ::mkostemp(name.data(), O_CLOEXEC);
  if (descriptor < 0) throw OutputError::ofSystem(folder_, errno);
  ::unlink(name.c_str());
  file_.reset(::fdopen(descriptor, "w+b"));
  if (!file_) {
    const int error = errno;
    ::close(descriptor);
    throw OutputError::ofSystem(folder_, error);
  }
}

void ScratchFile::write(std::string_view bytes) {
  writeTo(file_.get(), bytes, folder_);
  bytesWritten_ += bytes.size();
}

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
