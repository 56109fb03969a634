// SPDX-License-Identifier: Apache-2.0
#include "sound/DuckFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <utility>

#include "sound/SoundOwner.h"

namespace {

constexpr const char* kNamesBegin = "ducked-";
constexpr std::size_t kLongestNote = 1 << 20;

std::string sessionFolder() {
  const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
  const std::string user = std::to_string(::getuid());
  return runtime != nullptr && *runtime == '/' ? std::string(runtime) + "/zrcore" : "/tmp/zrcore-" + user;
}

void make(const std::string& folder) {
  std::error_code error;
  std::filesystem::create_directories(std::filesystem::path(folder).parent_path(), error);
  ::mkdir(folder.c_str(), 0700);
}

/// Whether the folder is ours alone: one in /tmp could be somebody else's.
bool isOwnFolder(const std::string& folder) {
  struct stat facts {};
  return ::lstat(folder.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) && facts.st_uid == ::getuid() &&
         (facts.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

bool isOwnFile(int descriptor) {
  struct stat facts {};
  return ::fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode) && facts.st_uid == ::getuid();
}

/// The notes of this process, for its end.
struct OwnNotes {
  std::mutex mutex;
  std::vector<std::string> folders;  ///< of each note
  std::atomic<std::size_t> count = 0;

  static OwnNotes& shared() {
    static auto* const notes = new OwnNotes;
    return *notes;
  }
  void add(const std::string& folder) {
    const std::lock_guard lock(mutex);
    folders.push_back(folder);
    count = folders.size();
  }
  void remove(const std::string& folder) {
    const std::lock_guard lock(mutex);
    if (const auto found = std::find(folders.begin(), folders.end(), folder); found != folders.end()) {
      folders.erase(found);
    }
    count = folders.size();
  }
};
static_assert(std::atomic<std::size_t>::is_always_lock_free);

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

DuckFile::DuckFile(std::string folder, std::string endingOwner)
    : folder_(folder.empty() ? sessionFolder() : std::move(folder)), endingOwner_(std::move(endingOwner)) {}

DuckFile::~DuckFile() {
  if (own_.descriptor.isOpen()) OwnNotes::shared().remove(folder_);  // by now it is a dead process's
}

std::vector<std::string> DuckFile::foldersWithNotes() {
  OwnNotes& notes = OwnNotes::shared();
  const std::lock_guard lock(notes.mutex);
  return notes.folders;
}

bool DuckFile::hasNotes() { return OwnNotes::shared().count > 0; }

FileDescriptor DuckFile::lock() const {
  constexpr int kMostTries = 20;
  make(folder_);
  if (!isOwnFolder(folder_)) return {};
  FileDescriptor folder(::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  for (int tries = 0; folder.isOpen() && tries < kMostTries && ::flock(folder.get(), LOCK_EX | LOCK_NB) != 0; ++tries) {
    ::usleep(1000);
  }
  return folder;
}

void DuckFile::create() {
  if (own_.descriptor.isOpen()) return;
  make(folder_);
  if (!isOwnFolder(folder_)) return;
  // Locked before it has its name: nobody can take it for a dead one's in between.
  std::string path = folder_ + "/new-XXXXXX";
  FileDescriptor file(::mkostemp(path.data(), O_CLOEXEC));
  if (!file.isOpen() || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0) return;
  const std::string name = folder_ + "/" + kNamesBegin + soundOwner() + path.substr(path.size() - 7);
  if (::rename(path.c_str(), name.c_str()) != 0) return;
  own_ = {std::move(file), name};
  OwnNotes::shared().add(folder_);
}

void DuckFile::remove() {
  ::unlink(own_.path.c_str());
  if (own_.descriptor.isOpen()) OwnNotes::shared().remove(folder_);
  own_ = File();
  noted_.clear();
}

bool DuckFile::write(const std::string& text) {
  if (text == noted_) return true;
  if (text.empty()) {
    remove();
    return true;
  }
  create();
  if (!own_.descriptor.isOpen()) return false;
  // One write over the old text, then the cut: at no moment is a line lost that is in both.
  const bool isWritten =
      ::pwrite(own_.descriptor.get(), text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()) &&
      ::ftruncate(own_.descriptor.get(), static_cast<off_t>(text.size())) == 0;
  if (isWritten) noted_ = text;
  return isWritten;
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

bool DuckFile::isOfEnding(const std::string& path) const {
  return !endingOwner_.empty() && path.starts_with(folder_ + "/" + kNamesBegin + endingOwner_ + "-");
}

bool DuckFile::hasNotesOfDead() {
  const std::vector<Note> notes = notesOfOthers();
  dead_.clear();
  return std::any_of(notes.begin(), notes.end(), [](const Note& note) { return !note.isOfLiving; });
}

std::vector<DuckFile::Note> DuckFile::notesOfOthers() {
  std::vector<Note> notes;
  if (!isOwnFolder(folder_)) return notes;
  for (const std::string& path : pathsOfOthers()) {
    FileDescriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!file.isOpen() || !isOwnFile(file.get())) continue;
    const bool isOfLiving = ::flock(file.get(), LOCK_EX | LOCK_NB) != 0 && !isOfEnding(path);
    notes.push_back({contentOf(file.get()), isOfLiving});
    if (!isOfLiving) dead_.push_back({std::move(file), path});
  }
  return notes;
}

void DuckFile::removeOfDead() {
  for (const File& file : std::exchange(dead_, {})) ::unlink(file.path.c_str());
}
