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

/// Enough to tell the format by, and little enough to keep the loop going.
constexpr std::size_t kReadBytes = std::size_t{64} * 1024;

}  // namespace

FileSource::FileSource(Loop& loop, std::string path, std::function<double()> monotonicSeconds)
    : loop_(loop), path_(std::move(path)), monotonicSeconds_(std::move(monotonicSeconds)) {}

FileSource::~FileSource() { FileSource::stop(); }

std::string FileSource::name() const { return "the recording " + path_; }

void FileSource::start(PositionSourceListener& listener) {
  listener_ = &listener;
  due_ = loop_.after(0.0, [this] { open(); });
}

void FileSource::stop() {
  listener_ = nullptr;
  due_.reset();
  file_.close();
  waiting_.clear();
}

void FileSource::open() {
  file_ = Descriptor(::open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file_.isOpen()) return fail(PositioningFault::badSource, std::strerror(errno));
  const auto self = shared_from_this();
  if (!readMore()) return;
  listener_->sourceAnswers();
  if (listener_ != nullptr) next();
}

/// Reads the next piece. False when there is none, which has been told, or when the run has ended.
bool FileSource::readMore() {
  const auto self = shared_from_this();
  if (!file_.isOpen()) {
    fail(PositioningFault::lost, "the recording is over");
    return false;
  }
  std::array<char, kReadBytes> bytes;
  const ssize_t count = ::read(file_.number(), bytes.data(), bytes.size());
  if (count < 0) {
    fail(PositioningFault::badSource, std::strerror(errno));
    return false;
  }
  const std::string_view piece(bytes.data(), static_cast<std::size_t>(count));
  if (!reader_) {
    const auto format = readers::detectFormat(piece);
    if (!format) {
      fail(PositioningFault::badSource, "it is neither GPX, NMEA 0183, gpsd JSON lines nor CSV with a header");
      return false;
    }
    reader_ = std::make_unique<policy::LiveReader>(*format);
  }
  const policy::LiveEvents events = count > 0 ? reader_->feed(piece) : reader_->finish();
  waiting_.insert(waiting_.end(), events.fixes.begin(), events.fixes.end());
  if (count == 0) file_.close();
  for (const auto& remark : events.remarks) {
    if (listener_ != nullptr) listener_->sourceSays(remark);
  }
  return listener_ != nullptr;
}

/// Tells what is due and waits for the rest.
void FileSource::next() {
  const auto self = shared_from_this();
  if (waiting_.empty()) {
    if (readMore()) due_ = loop_.after(0.0, [this] { next(); });
    return;
  }
  if (!startSeconds_) startSeconds_ = monotonicSeconds_();
  const double due = *startSeconds_ + pace_.secondsAfterFirst(waiting_.front().timestamp.secondsSince1970);
  due_ = loop_.after(due - monotonicSeconds_(), [this] {
    const auto kept = shared_from_this();
    const ZRPositionFix fix = waiting_.front();
    waiting_.pop_front();
    listener_->sourceFixes({fix});
    if (listener_ != nullptr) next();
  });
}

void FileSource::fail(PositioningFault fault, const std::string& detail) {
  PositionSourceListener* const listener = listener_;
  stop();
  if (listener != nullptr) listener->sourceFails(fault, detail);
}
