// SPDX-License-Identifier: Apache-2.0
#include "LiveReader.h"

#include <utility>

namespace readers {

LiveReader::LiveReader(Format format, Options options)
    : format_(format), options_(std::move(options)), intake_(options_.intake), reader_(makeReader(format)) {}

void LiveReader::beginConnection() {
  reader_ = makeReader(format_);
  remarks_ = 0;
  hasToldFix_ = false;
}

LiveEvents LiveReader::feed(std::string_view bytes) {
  reader_->feed(bytes, *this);
  if (options_.isRecording) return take();  // nobody waits, and what has been told early could not be added to
  const bool isComplete = reader_->held() == FixReader::Held::complete;
  if (isComplete || events_.receivers == 0) reader_->tellHeld(*this);  // who is gone adds nothing, either
  return take();
}

LiveEvents LiveReader::tellHeld() {
  reader_->tellHeld(*this);
  return take();
}

LiveEvents LiveReader::finish() {
  reader_->finish(*this);
  return take();
}

bool LiveReader::isHolding() const { return reader_->held() != FixReader::Held::nothing; }

void LiveReader::fix(const SourceFix& told) {
  SourceFix fix = told;
  if (!intake_.takes(fix)) return;
  // Within a connection the reader has put together what belongs together.
  const bool isLast =
      !hasToldFix_ && last_ && fix.secondsSince1970 && last_->secondsSince1970 == fix.secondsSince1970 &&
      last_->coordinate.latitude == fix.coordinate.latitude && last_->coordinate.longitude == fix.coordinate.longitude;
  if (isLast) return;
  hasToldFix_ = true;
  last_ = fix;
  std::optional<NSDate> cameAt;
  if (!options_.isRecording) {
    if (const auto remark = intake_.remarkOnDate(fix)) events_.oldDate = remark;
    if (options_.intake.now) cameAt = options_.intake.now();
  }
  events_.fixes.push_back(completion_.complete(fix, cameAt));
}

void LiveReader::remark(const Remark& remark) {
  if (++remarks_ > kMostRemarks) return;
  events_.remarks.push_back("line " + std::to_string(remark.line) + ": " + remark.text);
  if (remarks_ == kMostRemarks) events_.remarks.back() += "; further remarks about this connection are left out";
}

void LiveReader::status(const SourceStatus& status) {
  if (status.daemonRelease) events_.daemonRelease = status.daemonRelease;
  if (status.receivers) events_.receivers = status.receivers;
  if (!status.trueHeadingDegrees && !status.magneticHeadingDegrees) return;
  CLHeading heading;
  heading.trueHeading = status.trueHeadingDegrees.value_or(-1.0);
  heading.magneticHeading = status.magneticHeadingDegrees.value_or(-1.0);
  // How good it is, such sources do not say; negative would call the reading invalid.
  heading.headingAccuracy = 0.0;
  const bool isTimedHere = !status.headingSecondsSince1970 && !options_.isRecording && options_.intake.now;
  heading.timestamp = isTimedHere ? options_.intake.now() : NSDate{status.headingSecondsSince1970.value_or(0.0)};
  events_.headings.push_back(heading);
}

LiveEvents LiveReader::take() { return std::exchange(events_, {}); }

}  // namespace readers
