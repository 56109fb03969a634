// SPDX-License-Identifier: Apache-2.0
#include "settings/KeyFileDefaults.h"

#include <fcntl.h>
#include <glib.h>
#include <owners/FileDescriptor.h>
#include <platform/Callback.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <system_error>
#include <utility>
#include <variant>

namespace {

/// Keeps other processes from changing the file between reading and writing. On a file of its own, because the other is
/// replaced.
class FileLock {
 public:
  explicit FileLock(const std::filesystem::path& file)
      : descriptor_(open((file.native() + ".lock").c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600)) {
    while (!descriptor_.isOpen() || flock(descriptor_.get(), LOCK_EX) != 0) {
      if (descriptor_.isOpen() && errno == EINTR) continue;
      error_ = errno;
      break;
    }
  }

  /// An errno; 0 when the lock is held.
  int error() const { return error_; }

 private:
  FileDescriptor descriptor_;
  int error_ = 0;
};

std::string quoted(const std::filesystem::path& file) { return '"' + file.native() + '"'; }

/// A name beside the file's that nothing has yet.
std::filesystem::path freeName(const std::filesystem::path& file) {
  std::filesystem::path name = file.native() + ".damaged";
  std::error_code error;
  for (int number = 2; std::filesystem::exists(std::filesystem::symlink_status(name, error)); ++number) {
    name = file.native() + ".damaged-" + std::to_string(number);
  }
  return name;
}

/// A file that the user keeps elsewhere and links to is replaced there. Other users' links lead nowhere.
std::optional<std::filesystem::path> resolved(const std::optional<std::filesystem::path>& file) {
  if (!file) return std::nullopt;
  struct stat link {};
  const bool isLink = lstat(file->c_str(), &link) == 0 && S_ISLNK(link.st_mode);
  if (isLink && link.st_uid != geteuid() && link.st_uid != 0) return file;
  std::error_code error;
  auto target = std::filesystem::weakly_canonical(*file, error);
  return error ? *file : target;
}

struct Unreadable {
  std::string reason;
};

using Content = std::variant<Settings, SettingsDamage, Unreadable>;

/// What stands in the file; without a file, no settings.
Content settingsIn(const std::filesystem::path& file) {
  const auto unreadable = [&file](const char* reason) -> Content {
    return Unreadable{quoted(file) + " cannot be read: " + reason};
  };
  // Neither a link nor a pipe in the file's place is waited for.
  const FileDescriptor descriptor(open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!descriptor.isOpen()) return errno == ENOENT ? Content(Settings()) : unreadable(std::strerror(errno));
  struct stat status {};
  if (fstat(descriptor.get(), &status) != 0) return unreadable(std::strerror(errno));
  if (!S_ISREG(status.st_mode)) return unreadable("it is no regular file");
  std::string content;
  char block[16384];
  for (ssize_t count = 0; (count = read(descriptor.get(), block, sizeof block)) != 0;) {
    if (count < 0 && errno != EINTR) return unreadable(std::strerror(errno));
    if (count > 0) content.append(block, static_cast<std::size_t>(count));
  }
  auto settings = settingsFromText(content);
  if (auto* const damage = std::get_if<SettingsDamage>(&settings)) return *std::move(damage);
  return std::get<Settings>(std::move(settings));
}

}  // namespace

KeyFileDefaults::KeyFileDefaults(std::optional<std::filesystem::path> file, std::shared_ptr<ZRMainQueue> queue,
                                 std::shared_ptr<ZRLog> log)
    : file_(resolved(file)), queue_(std::move(queue)), log_(std::move(log)) {
  if (!file_) return;
  auto content = settingsIn(*file_);
  if (auto* const settings = std::get_if<Settings>(&content)) {
    stored_ = *std::move(settings);
    return;
  }
  const FileLock lock(*file_);
  if (reportUnless(lock.error() == 0, "locked", lock.error())) stored_ = readOwned().value_or(Settings());
}

std::optional<std::string> KeyFileDefaults::stringForKey(std::string_view key) const {
  const std::lock_guard guard(mutex_);
  for (const Settings* const settings : {&changes_, &stored_}) {
    if (const auto found = settings->find(key); found != settings->end()) return found->second;
  }
  return std::nullopt;
}

void KeyFileDefaults::setStringForKey(std::string_view value, std::string_view key) {
  {
    const std::lock_guard guard(mutex_);
    changes_.insert_or_assign(std::string(key), value);
    if (std::exchange(isStorePosted_, true)) return;
  }
  queue_->post(Callback(this, [this] {
    {
      const std::lock_guard guard(mutex_);
      isStorePosted_ = false;
    }
    synchronize();
  }));
}

bool KeyFileDefaults::synchronize() {
  const std::lock_guard guard(mutex_);
  if (!file_) {
    report("settings are not stored: the application has no identifier (CFBundleIdentifier in its information file)");
    return false;
  }
  if (changes_.empty()) return true;
  const bool hasFolder = g_mkdir_with_parents(file_->parent_path().c_str(), 0700) == 0;
  if (!reportUnless(hasFolder, "given its folder", errno)) return false;
  const FileLock lock(*file_);
  if (!reportUnless(lock.error() == 0, "locked", lock.error())) return false;
  auto settings = readOwned();
  if (!settings) return false;
  for (const auto& [key, value] : changes_) settings->insert_or_assign(key, value);
  const std::string text = textFromSettings(*settings);
  constexpr auto kWhole =
      static_cast<GFileSetContentsFlags>(G_FILE_SET_CONTENTS_CONSISTENT | G_FILE_SET_CONTENTS_DURABLE);
  g_autoptr(GError) error = nullptr;
  if (!g_file_set_contents_full(file_->c_str(), text.data(), static_cast<gssize>(text.size()), kWhole, 0600, &error)) {
    report(std::string("settings are not stored: ") + error->message);
    return false;
  }
  stored_ = *std::move(settings);
  changes_.clear();
  lastReport_.clear();
  return true;
}

/// Reads while the lock is held, so that what is found may be moved. @return nothing when the file must stay as it is.
std::optional<Settings> KeyFileDefaults::readOwned() {
  auto content = settingsIn(*file_);
  if (auto* const settings = std::get_if<Settings>(&content)) return *std::move(settings);
  if (const auto* const damage = std::get_if<SettingsDamage>(&content)) {
    return moveAside(damage->reason) ? std::optional(Settings()) : std::nullopt;
  }
  report("settings are neither known nor stored until this is mended: " + std::get<Unreadable>(content).reason);
  return std::nullopt;
}

bool KeyFileDefaults::moveAside(const std::string& reason) {
  const auto aside = freeName(*file_);
  const bool isMoved = std::rename(file_->c_str(), aside.c_str()) == 0;
  const std::string outcome =
      isMoved ? "it is kept as " + quoted(aside) + ", and the settings begin anew"
              : "it cannot be moved to " + quoted(aside) + " (" + std::strerror(errno) + "), so that nothing is stored";
  report("the settings in " + quoted(*file_) + " are damaged (" + reason + "); " + outcome);
  return isMoved;
}

bool KeyFileDefaults::reportUnless(bool succeeded, const char* what, int error) {
  if (!succeeded) {
    report("settings are not stored: " + quoted(*file_) + " cannot be " + what + ": " + std::strerror(error));
  }
  return succeeded;
}

void KeyFileDefaults::report(const std::string& sentence) {
  if (std::exchange(lastReport_, sentence) != sentence) log_->writeLine("ZRCore: " + sentence);
}

std::filesystem::path settingsFile(const std::filesystem::path& folder, const std::string& application) {
  g_autofree char* name = g_uri_escape_string(application.c_str(), nullptr, FALSE);
  return folder / (std::string(name) + ".keyfile");
}
