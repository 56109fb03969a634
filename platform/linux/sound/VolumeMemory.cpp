// SPDX-License-Identifier: Apache-2.0
#include "sound/VolumeMemory.h"

#include <algorithm>
#include <utility>

#include "loop/FromC.h"
#include "sound/PulseValues.h"

void VolumeMemory::read(std::function<void(bool, const Remembered&)> told) {
  entries_.clear();
  toldRead_ = std::move(told);
  const auto list = from_c::entry([](pa_context*, const pa_ext_stream_restore_info* info, int end, void* self) {
    auto* const memory = static_cast<VolumeMemory*>(self);
    end == 0 ? memory->add(*info) : memory->tellRead(end > 0);
  });
  pa_operation* const operation = ::pa_ext_stream_restore_read(connection_.context(), list, this);
  if (operation == nullptr) return tellRead(false);
  release(operation);
}

void VolumeMemory::add(const pa_ext_stream_restore_info& info) {
  if (info.name == nullptr || info.volume.channels == 0) return;  // it remembers something else of the stream
  entries_.push_back({info.name, info.device != nullptr ? info.device : "", info});
}

void VolumeMemory::tellRead(bool hasMemory) {
  const auto told = std::exchange(toldRead_, nullptr);
  if (!hasMemory || !isShown_) return told(hasMemory, std::nullopt);
  std::vector<policy::RememberedVolume> volumes;
  for (const Entry& entry : entries_) volumes.push_back({entry.name, channelVolumes(entry.info.volume)});
  told(true, volumes);
}

/// What is to be remembered, with what is remembered besides. The texts in it are those of `volume` and the entries.
pa_ext_stream_restore_info VolumeMemory::infoOf(const policy::RememberedVolume& volume) const {
  pa_ext_stream_restore_info info{};
  const auto known = std::find_if(entries_.begin(), entries_.end(),
                                  [&volume](const Entry& entry) { return entry.name == volume.key; });
  if (isShown_ && known != entries_.end()) {
    info = known->info;
    info.device = known->device.empty() ? nullptr : known->device.c_str();
  } else {
    ::pa_channel_map_init_extend(&info.channel_map, static_cast<unsigned>(volume.volumes.size()),
                                 PA_CHANNEL_MAP_DEFAULT);
  }
  info.name = volume.key.c_str();
  info.volume = pulseVolume(volume.volumes);
  return info;
}

void VolumeMemory::write(const std::vector<policy::RememberedVolume>& volumes, std::function<void(bool)> told) {
  toldWritten_ = std::move(told);
  std::vector<pa_ext_stream_restore_info> infos;
  for (const policy::RememberedVolume& volume : volumes) {
    infos.push_back(infoOf(volume));
    if (isShown_) continue;
    // PipeWire passes on what has changed since the last writing, and no more: this has.
    infos.insert(infos.end() - 1, infos.back());
    for (pa_volume_t& channel : (infos.end() - 2)->volume.values) channel ^= 1U;
  }
  const auto done = from_c::entry([](pa_context*, int success, void* self) {
    const auto toldNow = std::exchange(static_cast<VolumeMemory*>(self)->toldWritten_, nullptr);
    toldNow(success != 0);
  });
  pa_operation* const operation = ::pa_ext_stream_restore_write(connection_.context(), PA_UPDATE_REPLACE, infos.data(),
                                                                static_cast<unsigned>(infos.size()), 0, done, this);
  if (operation == nullptr) return std::exchange(toldWritten_, nullptr)(false);
  release(operation);
}
