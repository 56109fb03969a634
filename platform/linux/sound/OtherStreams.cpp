// SPDX-License-Identifier: Apache-2.0
#include "sound/OtherStreams.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

void release(pa_operation* operation) {
  if (operation != nullptr) ::pa_operation_unref(operation);
}

bool anyAudible(const std::vector<policy::OtherStream>& streams) {
  return std::any_of(streams.begin(), streams.end(), [](const auto& stream) { return stream.isAudible; });
}

}  // namespace

policy::OtherStream otherStream(const pa_sink_input_info& info) {
  const char* const process = ::pa_proplist_gets(info.proplist, PA_PROP_APPLICATION_PROCESS_ID);
  const bool isOurs = process != nullptr && process == std::to_string(::getpid());
  const char* const key = ::pa_proplist_gets(info.proplist, "module-stream-restore.id");
  return policy::OtherStream{.index = info.index,
                             .key = key != nullptr ? key : "",
                             .volumes = {info.volume.values, info.volume.values + info.volume.channels},
                             .isAudible = info.corked == 0 && info.mute == 0 && !isOurs,
                             .canBeChanged = info.has_volume != 0 && info.volume_writable != 0,
                             .mayBeLowered = !isOurs && ::pa_proplist_contains(info.proplist, kPromptProperty) == 0};
}

OtherStreams::OtherStreams(PulseConnection& connection, std::string stateFolder, std::function<void(bool)> changed)
    : connection_(connection), file_(std::move(stateFolder)), changed_(std::move(changed)) {
  connection_.add(*this);
}

OtherStreams::~OtherStreams() { connection_.remove(*this); }

bool OtherStreams::arePlaying() const { return arePlaying_ ? *arePlaying_ : askWhetherOthersPlay(); }

void OtherStreams::setDucking(bool isWanted) {
  if (!isWanted) linger_.reset();
  isWanted_ = isWanted;
  synchronize();
}

void OtherStreams::ourStreamStarts() {
  ++audible_;
  synchronize();
}

void OtherStreams::ourStreamEnds() {
  if (--audible_ > 0 || !isWanted_) return synchronize();
  linger_ = connection_.loop().after(kLingerSeconds, [this] {
    linger_.reset();
    synchronize();
  });
}

bool OtherStreams::isSettled() const {
  const bool knowsServer = !connection_.isConnecting() && !isLearning_;
  return knowsServer && !isListing_ && changesUnderWay_ == 0 && !linger_ && audible_ == 0;
}

void OtherStreams::serverIsReady() {
  isLearning_ = true;
  pa_context* const context = connection_.context();
  ::pa_context_set_subscribe_callback(
      context,
      [](pa_context*, pa_subscription_event_type_t type, std::uint32_t, void* self) {
        auto* const others = static_cast<OtherStreams*>(self);
        const bool isOfModule = (type & PA_SUBSCRIPTION_EVENT_FACILITY_MASK) == PA_SUBSCRIPTION_EVENT_MODULE;
        isOfModule ? others->lookAtModules() : others->synchronize();
      },
      this);
  const auto facilities =
      static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SINK_INPUT | PA_SUBSCRIPTION_MASK_MODULE);
  release(::pa_context_subscribe(context, facilities, nullptr, nullptr));
  const auto learnServer = [](pa_context*, const pa_server_info* info, void* self) {
    auto* const others = static_cast<OtherStreams*>(self);
    const std::uint32_t cookie = info != nullptr ? info->cookie : 0;
    if (std::exchange(others->serverCookie_, cookie) != cookie) others->plan_.forgetServer();
    others->lookAtModules();
  };
  release(::pa_context_get_server_info(context, learnServer, this));
}

void OtherStreams::serverIsLost(const std::string&) {
  arePlaying_.reset();
  isListing_ = isStale_ = isLearning_ = false;
  changesUnderWay_ = 0;
}

/// Looks whether the server lowers streams itself. Then we do not, too.
void OtherStreams::lookAtModules() {
  hasSeenDucking_ = false;
  const auto look = [](pa_context*, const pa_module_info* info, int end, void* self) {
    auto* const others = static_cast<OtherStreams*>(self);
    if (end == 0) {
      others->hasSeenDucking_ |= info->name != nullptr && std::strcmp(info->name, "module-role-ducking") == 0;
    } else {
      others->serverDucks_ = others->hasSeenDucking_;
      others->isLearning_ = false;
      others->synchronize();
    }
  };
  release(::pa_context_get_module_info_list(connection_.context(), look, this));
}

void OtherStreams::synchronize() {
  if (!connection_.isReady()) return;
  isStale_ = true;
  if (isLearning_ || isListing_ || changesUnderWay_ > 0) return;
  isListing_ = true;
  isStale_ = false;
  streams_.clear();
  {
    const FileDescriptor lock = file_.lock();
    noted_ = lookAtNotes();
  }
  const auto list = [](pa_context*, const pa_sink_input_info* info, int end, void* self) {
    auto* const others = static_cast<OtherStreams*>(self);
    if (end == 0) return others->streams_.push_back(otherStream(*info));
    others->isListing_ = false;
    if (end > 0) others->listed();  // otherwise the server has failed, and the list may lack streams
  };
  release(::pa_context_get_sink_input_info_list(connection_.context(), list, this));
}

void OtherStreams::listed() {
  const bool playing = anyAudible(streams_);
  const bool isNews = std::exchange(arePlaying_, playing).value_or(playing) != playing;
  std::vector<policy::DuckPlan::Change> changes;
  {
    const FileDescriptor lock = file_.lock();
    const policy::DuckPlan held = lookAtNotes();
    noted_.add(held);
    changes = plan_.changes(shouldDuck(), streams_, noted_, held);
    file_.write(plan_.text(serverCookie_));  // before it is done: this process may die at any moment
  }
  apply(changes);
  if (isNews) changed_(playing);
}

/// Takes over what dead processes have noted, to restore it. Under the lock. @return what living ones have lowered
policy::DuckPlan OtherStreams::lookAtNotes() {
  policy::DuckPlan ofLiving;
  for (const DuckFile::Note& note : file_.notesOfOthers()) {
    (note.isOfLiving ? ofLiving : plan_).add(policy::DuckPlan::fromText(note.text, serverCookie_));
  }
  file_.write(plan_.text(serverCookie_));
  file_.removeOfDead();
  return ofLiving;
}

void OtherStreams::apply(const std::vector<policy::DuckPlan::Change>& changes) {
  for (const auto& change : changes) {
    pa_cvolume volume;
    ::pa_cvolume_init(&volume);
    volume.channels = static_cast<std::uint8_t>(std::min<std::size_t>(change.volumes.size(), PA_CHANNELS_MAX));
    std::copy_n(change.volumes.begin(), volume.channels, volume.values);
    const auto done = [](pa_context*, int, void* self) {
      auto* const others = static_cast<OtherStreams*>(self);
      if (--others->changesUnderWay_ == 0) others->changesDone();
    };
    pa_operation* const operation =
        ::pa_context_set_sink_input_volume(connection_.context(), change.index, &volume, done, this);
    if (operation != nullptr) ++changesUnderWay_;
    release(operation);
  }
  if (changesUnderWay_ == 0) changesDone();
}

void OtherStreams::changesDone() {
  plan_.changesDone();
  {
    const FileDescriptor lock = file_.lock();
    file_.write(plan_.text(serverCookie_));
  }
  if (isStale_) synchronize();
}

bool askWhetherOthersPlay() {
  struct Question {
    std::vector<policy::OtherStream> streams;
    bool isAnswered = false;
  } question;
  constexpr int kMicrosecondsToWait = 250000;
  pa_mainloop* const mainloop = ::pa_mainloop_new();
  pa_context* const context = ::pa_context_new(::pa_mainloop_get_api(mainloop), "ZRCore");
  const auto list = [](pa_context*, const pa_sink_input_info* info, int end, void* asked) {
    auto& answer = *static_cast<Question*>(asked);
    if (end == 0) return answer.streams.push_back(otherStream(*info));
    answer.isAnswered = true;
  };
  bool isAsked = false;
  const pa_usec_t deadline = ::pa_rtclock_now() + kMicrosecondsToWait;
  bool isGood = ::pa_context_connect(context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) >= 0;
  while (isGood && !question.isAnswered) {
    const pa_usec_t now = ::pa_rtclock_now();
    if (now >= deadline) break;
    isGood = ::pa_mainloop_prepare(mainloop, static_cast<int>(deadline - now)) >= 0 &&
             ::pa_mainloop_poll(mainloop) >= 0 && ::pa_mainloop_dispatch(mainloop) >= 0 &&
             PA_CONTEXT_IS_GOOD(::pa_context_get_state(context));
    if (isGood && !isAsked && ::pa_context_get_state(context) == PA_CONTEXT_READY) {
      isAsked = true;
      release(::pa_context_get_sink_input_info_list(context, list, &question));
    }
  }
  ::pa_context_disconnect(context);
  ::pa_context_unref(context);
  ::pa_mainloop_free(mainloop);
  return anyAudible(question.streams);
}
