// SPDX-License-Identifier: Apache-2.0
#include "sound/DuckFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace {

constexpr const char* kNamesBegin = "ducked-";
constexpr std::size_t kLongestNote = 1 << 20;

std::string sessionFolder() {
  const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
  const std::string user = std::to_string(::getuid());
  return runtime != nullptr && *runtime == '/' ? std::string(runtime) + "/zrcore" : "/tmp/zrcore-" + user;
}

/// Whether the folder is ours alone: one in /tmp could be somebody else's.
bool isOwnFolder(const std::string& folder) {
  std::error_code error;
  std::filesystem::create_directories(std::filesystem::path(folder).parent_path(), error);
  ::mkdir(folder.c_str(), 0700);
  struct stat facts {};
  return ::lstat(folder.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) && facts.st_uid == ::getuid();
}

std::string contentOf(int descriptor) {
  std::string content;
  std::array<char, 4096> bytes;
  for (ssize_t count = 0;
       content.size() < kLongestNote && (count = ::read(descriptor, bytes.data(), bytes.size())) > 0;) {
    content.append(bytes.data(), static_cast<std::size_t>(count));
  }
  return content;
}

}  // namespace

DuckFile::DuckFile(std::string folder) : folder_(folder.empty() ? sessionFolder() : std::move(folder)) {}

FileDescriptor DuckFile::lock() const {
  constexpr int kMostTries = 20;
  if (!isOwnFolder(folder_)) return {};
  FileDescriptor folder(::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  for (int tries = 0; folder.isOpen() && tries < kMostTries && ::flock(folder.get(), LOCK_EX | LOCK_NB) != 0; ++tries)
    ::usleep(1000);
  return folder;
}

void DuckFile::create() {
  if (own_.descriptor.isOpen() || !isOwnFolder(folder_)) return;
  // Locked before it has its name: nobody can take it for a dead one's in between.
  std::string path = folder_ + "/new-XXXXXX";
  FileDescriptor file(::mkostemp(path.data(), O_CLOEXEC));
  if (!file.isOpen() || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0) return;
  const std::string name = folder_ + "/" + kNamesBegin + path.substr(path.size() - 6);
  if (::rename(path.c_str(), name.c_str()) == 0) own_ = {std::move(file), name};
}

void DuckFile::write(const std::string& text) {
  if (text == noted_) return;
  if (text.empty()) {
    ::unlink(own_.path.c_str());
    own_ = File();
    noted_.clear();
    return;
  }
  create();
  if (!own_.descriptor.isOpen()) return;
  // One write over the old text, then the cut: at no moment is a line lost that is in both.
  if (::pwrite(own_.descriptor.get(), text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()) &&
      ::ftruncate(own_.descriptor.get(), static_cast<off_t>(text.size())) == 0) {
    noted_ = text;
  }
}

std::vector<std::string> DuckFile::pathsOfOthers() const {
  std::vector<std::string> paths;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder_, error)) {
    const bool isNote = entry.path().filename().string().starts_with(kNamesBegin);
    if (isNote && entry.path() != own_.path) paths.push_back(entry.path());
  }
  return paths;
}

bool DuckFile::hasNotesOfOthers() const { return !pathsOfOthers().empty(); }

std::vector<DuckFile::Note> DuckFile::notesOfOthers() {
  std::vector<Note> notes;
  if (!isOwnFolder(folder_)) return notes;
  for (const std::string& path : pathsOfOthers()) {
    FileDescriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!file.isOpen()) continue;
    const bool isOfLiving = ::flock(file.get(), LOCK_EX | LOCK_NB) != 0;
    notes.push_back({contentOf(file.get()), isOfLiving});
    if (!isOfLiving) dead_.push_back({std::move(file), path});
  }
  return notes;
}

void DuckFile::removeOfDead() {
  for (const File& file : std::exchange(dead_, {})) ::unlink(file.path.c_str());
}
