// SPDX-License-Identifier: Apache-2.0
#include "sound/OtherStreams.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "loop/FromC.h"
#include "sound/PulseValues.h"
#include "sound/SoundOwner.h"

namespace {

bool anyAudible(const std::vector<policy::OtherStream>& streams) {
  return std::any_of(streams.begin(), streams.end(), [](const auto& stream) { return stream.isAudible; });
}

std::string property(const pa_sink_input_info& info, const char* name) {
  const char* const value = ::pa_proplist_gets(info.proplist, name);
  return value != nullptr ? value : "";
}

std::string ownBinary() {
  std::array<char, 256> name{};
  return ::pa_get_binary_name(name.data(), name.size()) != nullptr ? name.data() : "";
}

/// A prompt says whose it is. Of what else this process plays there are its number, which a process in a sandbox may
/// have, too, and its program.
bool isOfThisProcess(const pa_sink_input_info& info) {
  const std::string owner = property(info, kPromptProperty);
  if (!owner.empty()) return owner == soundOwner();
  return property(info, PA_PROP_APPLICATION_PROCESS_ID) == std::to_string(::getpid()) &&
         property(info, PA_PROP_APPLICATION_PROCESS_BINARY) == ownBinary();
}

}  // namespace

policy::OtherStream otherStream(const pa_sink_input_info& info) {
  constexpr std::size_t kLongestKey = 1000;  // applications choose it, and notes are not to grow with it
  const bool isOurs = isOfThisProcess(info);
  const std::string key = property(info, "module-stream-restore.id");
  return policy::OtherStream{.index = info.index,
                             .key = key.size() <= kLongestKey ? key : "",
                             .volumes = channelVolumes(info.volume),
                             .isAudible = info.corked == 0 && info.mute == 0 && !isOurs,
                             .canBeChanged = info.has_volume != 0 && info.volume_writable != 0,
                             .mayBeLowered = !isOurs && ::pa_proplist_contains(info.proplist, kPromptProperty) == 0};
}

OtherStreams::OtherStreams(PulseConnection& connection, std::string stateFolder, Events events, std::string endingOwner)
    : connection_(connection),
      file_(std::move(stateFolder), std::move(endingOwner)),
      memory_(connection),
      events_(std::move(events)) {
  connection_.add(*this);
}

OtherStreams::~OtherStreams() { connection_.remove(*this); }

bool OtherStreams::arePlaying() const {
  toldPlaying_ = arePlaying_ ? *arePlaying_ : askWhetherOthersPlay();
  return *toldPlaying_;
}

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
  return knowsServer && !isListing_ && changesUnderWay_.empty() && !isCorrecting_ && !linger_ && audible_ == 0;
}

void OtherStreams::serverIsReady() {
  isLearning_ = true;
  pa_context* const context = connection_.context();
  ::pa_context_set_subscribe_callback(
      context, from_c::entry([](pa_context*, pa_subscription_event_type_t type, std::uint32_t, void* self) {
        auto* const others = static_cast<OtherStreams*>(self);
        const bool isOfModule = (type & PA_SUBSCRIPTION_EVENT_FACILITY_MASK) == PA_SUBSCRIPTION_EVENT_MODULE;
        isOfModule ? others->lookAtModules() : others->synchronize();
      }),
      this);
  const auto facilities =
      static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SINK_INPUT | PA_SUBSCRIPTION_MASK_MODULE);
  release(::pa_context_subscribe(context, facilities, nullptr, nullptr));
  const auto learnServer = from_c::entry([](pa_context*, const pa_server_info* info, void* self) {
    auto* const others = static_cast<OtherStreams*>(self);
    const std::uint32_t cookie = info != nullptr ? info->cookie : 0;
    if (std::exchange(others->serverCookie_, cookie) != cookie) others->plan_.forgetServer();
    others->memory_.setServer(info != nullptr && info->server_name != nullptr ? info->server_name : "");
    others->lookAtModules();
  });
  release(::pa_context_get_server_info(context, learnServer, this));
}

void OtherStreams::serverIsLost(const std::string&) {
  arePlaying_.reset();
  toldPlaying_.reset();
  isListing_ = isStale_ = isLearning_ = isCorrecting_ = false;
  changesUnderWay_.clear();
}

/// Looks whether the server lowers streams itself. Then we do not, too.
void OtherStreams::lookAtModules() {
  hasSeenDucking_ = false;
  const auto look = from_c::entry([](pa_context*, const pa_module_info* info, int end, void* self) {
    auto* const others = static_cast<OtherStreams*>(self);
    if (end == 0) {
      others->hasSeenDucking_ |= info->name != nullptr && std::strcmp(info->name, "module-role-ducking") == 0;
    } else {
      others->serverDucks_ = others->hasSeenDucking_;
      others->hasMemory_ = true;
      others->isLearning_ = false;
      others->synchronize();
    }
  });
  release(::pa_context_get_module_info_list(connection_.context(), look, this));
}

void OtherStreams::synchronize() {
  if (!connection_.isReady()) return;
  isStale_ = true;
  if (isLearning_ || isListing_ || isCorrecting_ || !changesUnderWay_.empty()) return;
  isListing_ = true;
  isStale_ = false;
  streams_.clear();
  {
    const FileDescriptor lock = file_.lock();
    noted_ = lookAtNotes();
  }
  const auto list = from_c::entry([](pa_context*, const pa_sink_input_info* info, int end, void* self) {
    auto* const others = static_cast<OtherStreams*>(self);
    if (end == 0) return others->streams_.push_back(otherStream(*info));
    others->isListing_ = false;
    if (end > 0) others->listed();  // otherwise the server has failed, and the list may lack streams
  });
  release(::pa_context_get_sink_input_info_list(connection_.context(), list, this));
}

void OtherStreams::listed() {
  const bool playing = anyAudible(streams_);
  arePlaying_ = playing;
  const bool isNews = std::exchange(toldPlaying_, playing).value_or(playing) != playing;
  std::vector<policy::DuckPlan::Change> changes;
  {
    const FileDescriptor lock = file_.lock();
    const policy::DuckPlan held = lookAtNotes();
    noted_.add(held);
    changes = plan_.changes(shouldDuck(), streams_, noted_, held);
    file_.write(plan_.text(serverCookie_));  // before it is done: this process may die at any moment
  }
  apply(changes);
  if (isNews) events_.changed(playing);
}

/// Takes over what dead processes have noted, to restore it. Under the lock. @return what living ones have lowered
policy::DuckPlan OtherStreams::lookAtNotes() {
  policy::DuckPlan ofLiving;
  for (const DuckFile::Note& note : file_.notesOfOthers()) {
    (note.isOfLiving ? ofLiving : plan_).add(policy::DuckPlan::fromText(note.text, serverCookie_));
  }
  note();
  file_.removeOfDead();
  return ofLiving;
}

void OtherStreams::note() {
  if (file_.write(plan_.text(serverCookie_))) return;
  if (const auto unnoted = std::exchange(events_.unnoted, nullptr)) unnoted(file_.folder());
}

void OtherStreams::apply(const std::vector<policy::DuckPlan::Change>& changes) {
  for (const auto& change : changes) {
    const pa_cvolume volume = pulseVolume(change.volumes);
    const auto done = from_c::entry([](pa_context*, int success, void* underWay) {
      const ChangeUnderWay ended = *static_cast<ChangeUnderWay*>(underWay);
      ended.self->changeDone(ended.index, success != 0);
    });
    changesUnderWay_.push_back({this, change.index});
    pa_operation* const operation = ::pa_context_set_sink_input_volume(connection_.context(), change.index, &volume,
                                                                       done, &changesUnderWay_.back());
    if (operation == nullptr) changesUnderWay_.pop_back();
    release(operation);
  }
  if (changesUnderWay_.empty()) changesDone();
}

void OtherStreams::changeDone(std::uint32_t index, bool isSuccess) {
  if (!isSuccess) plan_.streamHasEnded(index);
  if (isSuccess && !shouldDuck()) ++restored_;
  changesUnderWay_.remove_if([index](const ChangeUnderWay& change) { return change.index == index; });
  if (changesUnderWay_.empty()) changesDone();
}

void OtherStreams::changesDone() {
  plan_.changesDone();
  {
    const FileDescriptor lock = file_.lock();
    note();
  }
  isStale_ ? synchronize() : correctMemory();
}

/// The memory is an application's own while a stream of it is there, which is restored. What streams that have ended
/// have left there nobody else would put right before the next one begins.
void OtherStreams::correctMemory() {
  if (shouldDuck() || !hasMemory_ || !plan_.hasEndedStreams()) return;
  isCorrecting_ = true;
  memory_.read([this](bool hasMemory, const VolumeMemory::Remembered& remembered) {
    hasMemory_ = hasMemory;
    if (!hasMemory || shouldDuck()) return corrected(0);
    std::vector<policy::RememberedVolume> corrections;
    {
      const FileDescriptor lock = file_.lock();
      corrections = plan_.corrections(remembered, lookAtNotes());
      note();
    }
    if (corrections.empty()) return corrected(0);
    const int count = static_cast<int>(corrections.size());
    memory_.write(corrections, [this, count](bool isDone) { corrected(isDone ? count : 0); });
  });
}

void OtherStreams::corrected(int count) {
  isCorrecting_ = false;
  restored_ += count;
  if (count > 0) {
    plan_.changesDone();
    const FileDescriptor lock = file_.lock();
    note();
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
  const auto list = from_c::entry([](pa_context*, const pa_sink_input_info* info, int end, void* asked) {
    auto& answer = *static_cast<Question*>(asked);
    if (end == 0) return answer.streams.push_back(otherStream(*info));
    answer.isAnswered = true;
  });
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
