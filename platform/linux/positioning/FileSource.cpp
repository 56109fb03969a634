// SPDX-License-Identifier: Apache-2.0
#include "positioning/FileSource.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

using policy::PositioningFault;

namespace {

/// Enough to tell the format by, unpacked, and little enough to keep the loop going.
constexpr std::size_t kReadBytes = std::size_t{64} * 1024;

}  // namespace

FileSource::FileSource(Loop& loop, std::string path, std::function<double()> monotonicSeconds,
                       readers::FixIntake::Options intake)
    : loop_(loop), path_(std::move(path)), monotonicSeconds_(std::move(monotonicSeconds)), intake_(std::move(intake)) {}

FileSource::~FileSource() { FileSource::stop(); }

std::string FileSource::name() const { return "the recording " + path_; }

void FileSource::start(PositionSourceListener& listener) {
  listener_.begin(listener);
  due_ = loop_.after(0.0, {this, &FileSource::open});
}

void FileSource::stop() {
  listener_.end();
  due_.reset();
  file_.close();
  waiting_.clear();
}

void FileSource::open() {
  file_ = FileDescriptor(::open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file_.isOpen()) return fail(PositioningFault::badSource, std::strerror(errno));
  unpacking_.emplace();
  piece_.clear();
  reader_.reset();
  while (!reader_) {
    if (!readMore()) return;
  }
  listener_->sourceAnswers();
  if (listener_.isThere()) next();
}

/// Reads the next piece. False when there is none, which has been reported, or when the run has ended.
bool FileSource::readMore() {
  if (!file_.isOpen()) {
    fail(PositioningFault::lost, "the recording is over");
    return false;
  }
  std::array<char, kReadBytes> bytes;
  const ssize_t count = ::read(file_.get(), bytes.data(), unpacking_->nextBytes(kReadBytes));
  if (count < 0) {
    fail(PositioningFault::badSource, std::strerror(errno));
    return false;
  }
  std::string damage;
  if (!unpacking_->feed({bytes.data(), static_cast<std::size_t>(count)}, piece_)) {
    damage = "the gzip file is damaged";
  } else if (count == 0 && !unpacking_->isWhole()) {
    damage = "the gzip file breaks off";
  }
  const bool isLast = count == 0 || !damage.empty();
  if (isLast) file_.close();
  if (!reader_ && !makeReader(isLast)) return listener_.isThere();
  if (!piece_.empty()) tell(reader_->feed(std::exchange(piece_, {})));
  if (isLast) tell(reader_->finish());
  if (!damage.empty()) listener_->sourceSays(damage);
  return listener_.isThere();
}

/// False when the recording's format cannot be told yet; or never, which is reported.
bool FileSource::makeReader(bool isLast) {
  if (!isLast && piece_.size() < kReadBytes) return false;
  if (const auto format = readers::detectFormat(piece_)) {
    reader_ = std::make_unique<readers::LiveReader>(
        *format, readers::LiveReader::Options{.intake = intake_, .isRecording = true});
  } else {
    fail(PositioningFault::badSource, piece_.empty() ? "it is empty" : "it " + readers::whyUnreadable(piece_));
  }
  return reader_ != nullptr;
}

void FileSource::tell(const readers::LiveEvents& events) {
  waiting_.insert(waiting_.end(), events.fixes.begin(), events.fixes.end());
  for (const auto& remark : events.remarks) listener_->sourceSays(remark);
}

/// Tells what is due and waits for the rest.
void FileSource::next() {
  if (waiting_.empty()) {
    if (readMore()) due_ = loop_.after(0.0, {this, &FileSource::next});
    return;
  }
  if (!startSeconds_) startSeconds_ = monotonicSeconds_();
  const double reported = waiting_.front().timestamp.secondsSince1970;
  const auto seconds = reported != 0.0 ? std::optional(reported) : std::nullopt;
  const double due = *startSeconds_ + pace_.secondsAfterFirst(seconds);
  const auto tellFirst = [this] {
    const ZRPositionFix fix = waiting_.front();
    waiting_.pop_front();
    try {
      listener_->sourceFixes({fix});
    } catch (...) {  // a client's, which is not the end of the recording
      if (listener_.isThere()) due_ = loop_.after(0.0, {this, &FileSource::next});
      throw;
    }
    if (listener_.isThere()) next();
  };
  due_ = loop_.after(due - monotonicSeconds_(), {this, tellFirst});
}

void FileSource::fail(PositioningFault fault, const std::string& detail) {
  PositionSourceListener& told = listener_.end();
  stop();
  told.sourceFails(fault, detail);
}
