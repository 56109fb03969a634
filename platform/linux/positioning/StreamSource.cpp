// SPDX-License-Identifier: Apache-2.0
#include "positioning/StreamSource.h"

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

using policy::PositioningFault;

StreamSource::StreamSource(Loop& loop, std::unique_ptr<Connector> connector, Options options)
    : loop_(loop),
      connector_(std::move(connector)),
      options_(std::move(options)),
      reader_(options_.format, {.intake = options_.intake}) {}

StreamSource::~StreamSource() { StreamSource::stop(); }

void StreamSource::start(PositionSourceListener& listener) {
  listener_.begin(listener);
  retry_ = loop_.after(0.0, {this, &StreamSource::connect});
}

void StreamSource::stop() {
  listener_.end();
  connector_->cancel();
  hangUp();
  retry_.reset();
}

void StreamSource::connect() {
  if (options_.greets) {
    const auto giveUp = [this] {
      connector_->cancel();  // a host that drops what is sent to it never refuses
      disconnected(PositioningFault::noDaemon, "nothing there greets as it should");
    };
    greeting_ = loop_.after(options_.greetingSeconds, {this, giveUp});
  }
  connector_->connect({this, &StreamSource::connected});
}

void StreamSource::connected(FileDescriptor descriptor, const std::string& failure) {
  if (!listener_.isThere()) return;
  if (!descriptor.isOpen()) return disconnected(PositioningFault::noDaemon, failure);
  descriptor_ = std::move(descriptor);
  const std::string& request = options_.request;  // so short that a new socket takes it whole
  if (!request.empty() && ::send(descriptor_.get(), request.data(), request.size(), MSG_NOSIGNAL) < 0) {
    return disconnected(PositioningFault::noDaemon, std::strerror(errno));
  }
  reader_.beginConnection();
  readable_ = loop_.watch(descriptor_.get(), {.canRead = true}, {this, [this](Loop::Readiness) { read(); }});
  watchSilence();
  if (!options_.greets) answers();
}

/// Whoever may open a receiver, may know the position.
void StreamSource::answers() {
  hasGreeted_ = true;
  greeting_.reset();
  listener_->sourceAuthorization(CLAuthorizationStatus::authorizedAlways);
  listener_->sourceAnswers();
}

void StreamSource::read() {
  std::array<char, 16384> bytes;
  const ssize_t count = ::read(descriptor_.get(), bytes.data(), bytes.size());
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (count > 0) return deliver(reader_.feed({bytes.data(), static_cast<std::size_t>(count)}));
  const std::string why = count == 0 ? "the connection ended" : std::strerror(errno);
  deliver(reader_.tellHeld());
  if (descriptor_.isOpen()) disconnected(hasGreeted_ ? PositioningFault::lost : PositioningFault::noDaemon, why);
}

/// Hands over what came. Each call may stop this run, and start another one.
void StreamSource::deliver(const readers::LiveEvents& events) {
  for (const auto& remark : events.remarks) listener_->sourceSays(remark);
  if (events.oldDate) listener_->sourceSays(*events.oldDate);
  if (options_.greets && !hasGreeted_) {
    if (!events.daemonRelease) return;  // whatever this is, it is not the daemon
    listener_->sourceSays("release " + *events.daemonRelease);
    answers();
  }
  for (const CLHeading& heading : events.headings) listener_->sourceHeading(heading);
  if (!events.fixes.empty()) {
    hasHeardFix_ = true;
    backOff_.reset();
    listener_->sourceFixes(events.fixes);
  }
  // After the fixes, which the receiver reported while it was there.
  if (events.receivers == 0) listener_->sourceFails(PositioningFault::noDevice, "");
  if (!listener_.isThere() || !descriptor_.isOpen()) return;
  quiet_.reset();
  if (!reader_.isHolding()) return;
  quiet_ = loop_.after(options_.quietSeconds, {this, [this] { deliver(reader_.tellHeld()); }});
}

void StreamSource::disconnected(PositioningFault fault, const std::string& detail) {
  hangUp();
  if (listener_.isThere()) retry_ = loop_.after(backOff_.nextSeconds(), {this, &StreamSource::connect});
  listener_->sourceFails(fault, detail);
}

void StreamSource::hangUp() {
  readable_.reset();
  greeting_.reset();
  quiet_.reset();
  silence_.reset();
  descriptor_.close();
  hasGreeted_ = false;
  hasHeardFix_ = false;
}

void StreamSource::watchSilence() {
  const auto judge = [this] {
    const bool isSilent = !std::exchange(hasHeardFix_, false);
    watchSilence();
    if (isSilent) listener_->sourceFails(PositioningFault::noFix, "");
  };
  silence_ = loop_.after(options_.silenceSeconds, {this, judge});
}
