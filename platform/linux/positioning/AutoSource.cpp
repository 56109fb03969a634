// SPDX-License-Identifier: Apache-2.0
#include "positioning/AutoSource.h"

#include <ZRCore/ZRPrintableText.h>
#include <policy/PositioningSource.h>

#include <utility>

using policy::PositioningFault;

AutoSource::AutoSource(Loop& loop, std::vector<Make> candidates) : loop_(loop), candidates_(std::move(candidates)) {}

AutoSource::~AutoSource() { AutoSource::stop(); }

std::string AutoSource::name() const { return isChosen_ && source_ ? source_->name() : policy::kNameOfAutomatic; }

void AutoSource::start(PositionSourceListener& listener) {
  listener_.begin(listener);
  tryNext();
}

void AutoSource::stop() {
  listener_.end();
  next_.reset();
  if (source_) source_->stop();
}

void AutoSource::tryNext() {
  source_ = candidates_[tried_++]();
  source_->start(*this);
}

void AutoSource::sourceAnswers() {
  isChosen_ = true;
  listener_->sourceAnswers();
}

void AutoSource::sourceFixes(const std::vector<ZRPositionFix>& fixes) { listener_->sourceFixes(fixes); }

void AutoSource::sourceHeading(const CLHeading& heading) { listener_->sourceHeading(heading); }

/// Before the choice, a source that is not there is passed over. Any other fault comes from one that is.
void AutoSource::sourceFails(PositioningFault fault, const std::string& detail) {
  if (isChosen_ || fault != PositioningFault::noDaemon) {
    const auto self = shared_from_this();  // the source that calls holds itself alone
    const bool isNew = !std::exchange(isChosen_, true);
    if (isNew) listener_->sourceAnswers();
    listener_->sourceFails(fault, detail);
    return;
  }
  if (!failures_.empty()) failures_ += "; ";
  failures_ += source_->name() + ": " + ZRPrintableText(detail, ZRLongestExcerpt);
  source_->stop();
  if (tried_ < candidates_.size()) {
    next_ = loop_.after(0.0, {this, &AutoSource::tryNext});
    return;
  }
  tried_ = 0;
  next_ = loop_.after(backOff_.nextSeconds(), {this, &AutoSource::tryNext});
  listener_->sourceFails(PositioningFault::noDaemon, std::exchange(failures_, {}));
}

void AutoSource::sourceAuthorization(CLAuthorizationStatus status) { listener_->sourceAuthorization(status); }

void AutoSource::sourceSays(const std::string& text) { listener_->sourceSays(text); }
