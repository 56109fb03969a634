// SPDX-License-Identifier: Apache-2.0
#include "TileFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <trip/outputs/OutputError.h>
#include <trip/outputs/OutputFile.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iterator>
#include <system_error>
#include <tuple>
#include <utility>
#include <vector>

#include "TileTemplate.h"

namespace demo {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFirstLine = "ZRTile 1\n";

/// FNV-1a, 64 bits. That two addresses share a name costs an answer, no more.
std::string nameOf(const std::string& address) {
  std::uint64_t hash = 14695981039346656037U;
  for (const char letter : address) hash = (hash ^ static_cast<unsigned char>(letter)) * 1099511628211U;
  char name[24];
  std::snprintf(name, sizeof name, "%016llx.tile", static_cast<unsigned long long>(hash));
  return name;
}

/// What stands before the answer. Its length shows a file that lost its end with the power.
std::string headOf(const std::string& address, std::size_t answerBytes) {
  return std::string(kFirstLine) + address + '\n' + std::to_string(answerBytes) + '\n';
}

/// Sets when a file was used last and until when it is good, the latter unless it is UTIME_OMIT. The kernel's own
/// notion of now is a tick of the scheduler, in which many tiles are used.
void setTimes(const fs::path& file, timespec goodUntil) {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  const timespec times[]{now, goodUntil};
  ::utimensat(AT_FDCWD, file.c_str(), times, AT_SYMLINK_NOFOLLOW);
}

/// The folders above are made as the user's other folders are; the last is for this user alone.
void makeOwn(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder.parent_path(), error);
  const bool isMade = ::mkdir(folder.c_str(), 0700) == 0;
  const int reason = errno;
  struct stat facts {};
  const bool isThere = ::lstat(folder.c_str(), &facts) == 0;
  if (!isMade && !isThere) {
    throw TileSourceError("Tiles are not kept: " + folder.string() + ": " + std::generic_category().message(reason));
  }
  if (!S_ISDIR(facts.st_mode) || facts.st_uid != ::geteuid() || ::chmod(folder.c_str(), 0700) != 0) {
    throw TileSourceError("Tiles are not kept: " + folder.string() + " is no folder of this user's own");
  }
}

}  // namespace

TileFolder::TileFolder(fs::path folder, std::uint64_t mostBytes) : folder_(std::move(folder)), mostBytes_(mostBytes) {
  makeOwn(folder_);
  lookThrough();
}

/// What is there from earlier, files among them that a killed program left incomplete: those go with time, as all do.
void TileFolder::lookThrough() {
  struct Found {
    timespec lastUse;
    std::string name;
    std::uint64_t bytes;
    double goodUntil;
  };
  std::vector<Found> found;
  std::error_code error;
  for (fs::directory_iterator at(folder_, error), end; !error && at != end; at.increment(error)) {
    struct stat facts {};
    if (::lstat(at->path().c_str(), &facts) != 0 || !S_ISREG(facts.st_mode)) continue;
    found.push_back({facts.st_atim, at->path().filename().string(), static_cast<std::uint64_t>(facts.st_size),
                     static_cast<double>(facts.st_mtim.tv_sec)});
  }
  std::ranges::sort(found, {}, [](const Found& file) { return std::tie(file.lastUse.tv_sec, file.lastUse.tv_nsec); });
  for (const Found& file : found) {
    order_.use(file.name, file.bytes);
    goodUntil_[file.name] = file.goodUntil;
  }
}

bool TileFolder::isGood(const std::string& address, double now) const {
  const auto kept = goodUntil_.find(nameOf(address));
  return kept != goodUntil_.end() && now < kept->second;
}

std::optional<std::string> TileFolder::read(const std::string& address) {
  const std::string name = nameOf(address);
  const fs::path path = folder_ / name;
  std::error_code error;
  const std::uint64_t size = fs::file_size(path, error);
  const std::uint64_t mostBytes = kMostAnswerBytes + headOf(address, kMostAnswerBytes).size();
  if (error || size > mostBytes) {
    forget(address);
    return std::nullopt;
  }
  std::ifstream file(path, std::ios::binary);
  std::string content{std::istreambuf_iterator<char>(file), {}};
  const std::size_t headSize = std::string(kFirstLine).size() + address.size() + 1;
  const std::size_t headEnd = content.find('\n', std::min(headSize, content.size()));
  const std::size_t answerBytes = headEnd == std::string::npos ? 0 : content.size() - headEnd - 1;
  if (headEnd == std::string::npos || !content.starts_with(headOf(address, answerBytes))) {
    forget(address);
    return std::nullopt;
  }
  setTimes(path, {0, UTIME_OMIT});
  order_.use(name);
  return content.substr(headEnd + 1);
}

bool TileFolder::keep(const std::string& address, std::string_view answer, double goodUntil) {
  if (answer.size() > kMostAnswerBytes) return false;
  const std::string name = nameOf(address), head = headOf(address, answer.size());
  try {
    trip::OutputFile file(folder_ / name, true);
    file.write(head);
    file.write(answer);
    file.commitUnstored();
  } catch (const trip::OutputError&) {
    return false;
  }
  setTimes(folder_ / name, {static_cast<time_t>(goodUntil), 0});
  goodUntil_[name] = goodUntil;
  order_.use(name, head.size() + answer.size());
  for (const std::string& old : order_.shrink(mostBytes_, [](const std::string&) { return false; })) remove(old);
  return true;
}

void TileFolder::forget(const std::string& address) { remove(nameOf(address)); }

void TileFolder::remove(const std::string& name) {
  ::unlink((folder_ / name).c_str());
  order_.forget(name);
  goodUntil_.erase(name);
}

}  // namespace demo
