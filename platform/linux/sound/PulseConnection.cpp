// SPDX-License-Identifier: Apache-2.0
#include "sound/PulseConnection.h"

#include <algorithm>
#include <utility>

#include "loop/FromC.h"

PulseConnection::PulseConnection(std::shared_ptr<GLibLoop> loop)
    : loop_(std::move(loop)), mainloop_(::pa_glib_mainloop_new(loop_->context())) {}

PulseConnection::~PulseConnection() {
  drop();
  ::pa_glib_mainloop_free(mainloop_);
}

void PulseConnection::connect() {
  if (context_ != nullptr || deadline_) return;
  context_ = ::pa_context_new(::pa_glib_mainloop_get_api(mainloop_), "ZRCore");
  const auto changed =
      from_c::entry([](pa_context*, void* self) { static_cast<PulseConnection*>(self)->stateChanged(); });
  if (::pa_context_connect(context_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
    const std::string why = ::pa_strerror(::pa_context_errno(context_));
    deadline_ = loop_->after(0.0, [this, why] { lose(why); });
    return;
  }
  ::pa_context_set_state_callback(context_, changed, this);
  deadline_ = loop_->after(kPatienceSeconds, [this] { lose("it does not answer"); });
}

void PulseConnection::stateChanged() {
  const pa_context_state_t state = ::pa_context_get_state(context_);
  if (state == PA_CONTEXT_READY) {
    deadline_.reset();
    isReady_ = true;
    tell([](PulseListener& listener) { listener.serverIsReady(); });
  } else if (!PA_CONTEXT_IS_GOOD(state)) {
    lose(::pa_strerror(::pa_context_errno(context_)));
  }
}

void PulseConnection::drop() {
  deadline_.reset();
  isReady_ = false;
  if (context_ == nullptr) return;
  ::pa_context_set_state_callback(context_, nullptr, nullptr);
  ::pa_context_set_subscribe_callback(context_, nullptr, nullptr);
  ::pa_context_disconnect(context_);
  ::pa_context_unref(std::exchange(context_, nullptr));
}

void PulseConnection::lose(const std::string& why) {
  const std::string fault = "no sound server: " + why;
  drop();  // before it is reported: a listener may want to connect again at once
  tell([&fault](PulseListener& listener) { listener.serverIsLost(fault); });
}

void PulseConnection::tell(const std::function<void(PulseListener&)>& what) {
  for (PulseListener* const listener : std::vector(listeners_)) {
    if (std::find(listeners_.begin(), listeners_.end(), listener) != listeners_.end()) what(*listener);
  }
}

void PulseConnection::remove(PulseListener& listener) { std::erase(listeners_, &listener); }
