// SPDX-License-Identifier: Apache-2.0
#include "Recording.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

namespace trip {

namespace {

constexpr std::size_t kReadBytes = std::size_t{64} * 1024;
constexpr std::uint64_t kStepsPerRecording = 256;

FileDescriptor opened(const std::string& path) {
  FileDescriptor file(path == "-" ? ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                                  : ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
  if (file.isOpen()) return file;
  const int error = errno;
  throw RecordingError(std::string("cannot be opened: ") + std::strerror(error) +
                       (error == ENOENT ? "; check the name" : ""));
}

}  // namespace

Recording::Recording(const std::string& path, std::function<bool()> isInterrupted)
    : isInterrupted_(std::move(isInterrupted)), file_(opened(path)) {
  struct stat status {};
  if (::fstat(file_.get(), &status) != 0) throw RecordingError(std::strerror(errno));
  if (S_ISDIR(status.st_mode)) throw RecordingError("is a folder; give a recording in it");
  if (S_ISREG(status.st_mode)) size_ = static_cast<std::uint64_t>(status.st_size);
  format_ = detect();
}

std::optional<double> Recording::progress() const {
  if (!size_ || *size_ == 0) return std::nullopt;
  return std::min(1.0, handedOver_ / static_cast<double>(*size_));
}

/// Appends what the file has next to the buffer. False at its end, be that whole or not.
bool Recording::readMore() {
  std::array<char, kReadBytes> bytes;
  const std::size_t most = unpacking_.nextBytes(kReadBytes);
  while (fault_.empty()) {
    const ssize_t count = ::read(file_.get(), bytes.data(), most);
    if (count > 0) {
      const std::string_view piece(bytes.data(), static_cast<std::size_t>(count));
      taken_ += piece.size();
      if (!unpacking_.feed(piece, buffer_)) fault_ = "cannot be unpacked on: the gzip file is damaged";
      return true;
    }
    if (count == 0) {
      if (!unpacking_.isWhole()) fault_ = "cannot be unpacked on: the gzip file breaks off";
      return false;
    }
    if (errno == EAGAIN) {  // another process has made the terminal or the pipe so
      pollfd input{file_.get(), POLLIN, 0};
      if (::poll(&input, 1, -1) > 0) continue;
    }
    if (errno != EINTR) throw RecordingError(std::string("cannot be read on: ") + std::strerror(errno));
    if (isInterrupted_()) return false;
  }
  return false;
}

readers::Format Recording::detect() {
  bool more = true;
  while (more && buffer_.size() < kReadBytes) {
    more = readMore();
    // A stream may give a few bytes at a time, and its format is recognised as soon as possible: the next ones may take
    // long.
    if (!unpacking_.isPlain()) continue;
    if (const auto format = readers::detectFormat(buffer_)) return *format;
  }
  if (const auto format = readers::detectFormat(buffer_)) return *format;
  if (!fault_.empty()) throw RecordingError(fault_);
  if (buffer_.empty()) throw RecordingError("is empty; nothing was recorded");
  throw RecordingError(readers::whyUnreadable(buffer_));
}

void Recording::feed(readers::FixReader& reader, readers::Listener& listener, const std::function<void()>& afterStep) {
  // Bytes of the file that a byte of the buffer stands for: with packed ones, a part of one.
  const double share =
      buffer_.empty() ? 1.0 : static_cast<double>(std::exchange(taken_, 0)) / static_cast<double>(buffer_.size());
  const double stepOfFile = size_ ? static_cast<double>(*size_) / kStepsPerRecording : kReadBytes;
  const auto step = static_cast<std::size_t>(std::clamp(stepOfFile / share, 1.0, static_cast<double>(kReadBytes)));
  std::string_view rest = buffer_;
  while (!rest.empty() && !isInterrupted_()) {
    const std::string_view bytes = rest.substr(0, step);
    rest.remove_prefix(bytes.size());
    reader.feed(bytes, listener);
    handedOver_ += static_cast<double>(bytes.size()) * share;
    afterStep();
  }
  buffer_.clear();
}

void Recording::read(readers::Listener& listener, const std::function<void()>& afterStep) {
  const auto reader = readers::makeReader(format_);
  do {
    feed(*reader, listener, afterStep);
  } while (!isInterrupted_() && readMore());
  if (isInterrupted_()) return;  // the end that is missing now is not a fault of the recording
  reader->finish(listener);
  afterStep();
  if (!fault_.empty()) throw RecordingError(fault_);
}

}  // namespace trip
