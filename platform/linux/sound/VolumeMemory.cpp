// SPDX-License-Identifier: Apache-2.0
#include "sound/VolumeMemory.h"

#include <algorithm>
#include <utility>

#include "sound/PulseValues.h"

void VolumeMemory::read(std::function<void(std::optional<std::vector<policy::RememberedVolume>>)> told) {
  entries_.clear();
  toldRead_ = std::move(told);
  const auto list = [](pa_context*, const pa_ext_stream_restore_info* info, int end, void* self) {
    auto* const memory = static_cast<VolumeMemory*>(self);
    end == 0 ? memory->add(*info) : memory->tellRead(end > 0);
  };
  pa_operation* const operation = ::pa_ext_stream_restore_read(connection_.context(), list, this);
  if (operation == nullptr) return tellRead(false);
  release(operation);
}

void VolumeMemory::add(const pa_ext_stream_restore_info& info) {
  if (info.name == nullptr || info.volume.channels == 0) return;  // it remembers something else of the stream
  entries_.push_back({info.name, info.device != nullptr ? info.device : "", info});
}

void VolumeMemory::tellRead(bool isWhole) {
  const auto told = std::exchange(toldRead_, nullptr);
  if (!isWhole) return told(std::nullopt);
  std::vector<policy::RememberedVolume> volumes;
  for (const Entry& entry : entries_) volumes.push_back({entry.name, channelVolumes(entry.info.volume)});
  told(std::move(volumes));
}

void VolumeMemory::write(const std::vector<policy::RememberedVolume>& volumes, std::function<void(bool)> told) {
  toldWritten_ = std::move(told);
  std::vector<pa_ext_stream_restore_info> infos;
  for (const policy::RememberedVolume& volume : volumes) {
    const auto entry =
        std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.name == volume.key; });
    if (entry == entries_.end()) continue;
    pa_ext_stream_restore_info info = entry->info;
    info.name = entry->name.c_str();
    info.device = entry->device.empty() ? nullptr : entry->device.c_str();
    info.volume = pulseVolume(volume.volumes);
    infos.push_back(info);
  }
  const auto done = [](pa_context*, int success, void* self) {
    const auto toldNow = std::exchange(static_cast<VolumeMemory*>(self)->toldWritten_, nullptr);
    toldNow(success != 0);
  };
  pa_operation* const operation = ::pa_ext_stream_restore_write(connection_.context(), PA_UPDATE_REPLACE, infos.data(),
                                                                static_cast<unsigned>(infos.size()), 0, done, this);
  if (operation == nullptr) return std::exchange(toldWritten_, nullptr)(false);
  release(operation);
}
