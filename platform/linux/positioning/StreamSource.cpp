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
  listener_ = &listener;
  retry_ = loop_.after(0.0, [this] { connect(); });
}

void StreamSource::stop() {
  listener_ = nullptr;
  connector_->cancel();
  hangUp();
  retry_.reset();
}

void StreamSource::connect() {
  const auto self = shared_from_this();
  if (options_.greets) {
    greeting_ = loop_.after(options_.greetingSeconds, [this] {
      connector_->cancel();  // a host that drops what is sent to it never refuses
      disconnected(PositioningFault::noDaemon, "nothing there greets as it should");
    });
  }
  // Not a shared pointer to ourselves: an attempt that is given up must not keep us.
  connector_->connect([weak = weak_from_this()](Descriptor descriptor, const std::string& failure) {
    if (const auto source = weak.lock()) source->connected(std::move(descriptor), failure);
  });
}

void StreamSource::connected(Descriptor descriptor, const std::string& failure) {
  if (listener_ == nullptr) return;
  if (!descriptor.isOpen()) return disconnected(PositioningFault::noDaemon, failure);
  descriptor_ = std::move(descriptor);
  const std::string& request = options_.request;  // so short that a new socket takes it whole
  if (!request.empty() && ::send(descriptor_.number(), request.data(), request.size(), MSG_NOSIGNAL) < 0) {
    return disconnected(PositioningFault::noDaemon, std::strerror(errno));
  }
  reader_.beginConnection();
  readable_ = loop_.watch(descriptor_.number(), {.canRead = true}, [this](Loop::Readiness) { read(); });
  watchSilence();
  if (!options_.greets) answers();
}

/// Whoever may open a receiver, may know the position.
void StreamSource::answers() {
  const auto self = shared_from_this();
  hasGreeted_ = true;
  greeting_.reset();
  if (listener_ != nullptr) listener_->sourceAuthorization(CLAuthorizationStatus::authorizedAlways);
  if (listener_ != nullptr) listener_->sourceAnswers();
}

void StreamSource::read() {
  const auto self = shared_from_this();
  std::array<char, 16384> bytes;
  const ssize_t count = ::read(descriptor_.number(), bytes.data(), bytes.size());
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (count > 0) return deliver(reader_.feed({bytes.data(), static_cast<std::size_t>(count)}));
  const std::string why = count == 0 ? "the connection ended" : std::strerror(errno);
  deliver(reader_.tellHeld());
  if (descriptor_.isOpen()) {
    disconnected(hasGreeted_ ? PositioningFault::lost : PositioningFault::noDaemon, why);
  }
}

/// Hands over what came. Each call may stop this run, and start another one.
void StreamSource::deliver(const policy::LiveEvents& events) {
  const auto self = shared_from_this();
  const auto tell = [this](auto&& what) {
    if (listener_ != nullptr) what(*listener_);
  };
  for (const auto& remark : events.remarks) tell([&](auto& listener) { listener.sourceSays(remark); });
  if (events.oldDate) tell([&](auto& listener) { listener.sourceSays(*events.oldDate); });
  if (options_.greets && !hasGreeted_) {
    if (!events.daemonRelease) return;  // whatever this is, it is not the daemon
    tell([&](auto& listener) { listener.sourceSays("release " + *events.daemonRelease); });
    answers();
  }
  for (const CLHeading& heading : events.headings) tell([&](auto& listener) { listener.sourceHeading(heading); });
  if (!events.fixes.empty()) {
    hasHeardFix_ = true;
    backOff_.reset();
    tell([&](auto& listener) { listener.sourceFixes(events.fixes); });
  }
  // After the fixes, which the receiver told while it was there.
  if (events.receivers == 0) {
    tell([](auto& listener) { listener.sourceFails(PositioningFault::noDevice, ""); });
  }
  if (listener_ == nullptr || !descriptor_.isOpen()) return;
  quiet_.reset();
  if (!reader_.isHolding()) return;
  quiet_ = loop_.after(options_.quietSeconds, [this] { deliver(reader_.tellHeld()); });
}

void StreamSource::disconnected(PositioningFault fault, const std::string& detail) {
  const auto self = shared_from_this();
  hangUp();
  if (listener_ != nullptr) retry_ = loop_.after(backOff_.nextSeconds(), [this] { connect(); });
  if (listener_ != nullptr) listener_->sourceFails(fault, detail);
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
  silence_ = loop_.after(options_.silenceSeconds, [this] {
    const auto self = shared_from_this();
    const bool isSilent = !std::exchange(hasHeardFix_, false);
    watchSilence();
    if (isSilent) listener_->sourceFails(PositioningFault::noFix, "");
  });
}
