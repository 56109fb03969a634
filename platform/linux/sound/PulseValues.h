// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_PULSEVALUES_H
#define ZRCORE_LINUX_SOUND_PULSEVALUES_H

#include <policy/DuckPlan.h>
#include <pulse/pulseaudio.h>

#include <algorithm>

/// An operation whose end is reported by its callback, if at all.
inline void release(pa_operation* operation) {
  if (operation != nullptr) ::pa_operation_unref(operation);
}

inline policy::ChannelVolumes channelVolumes(const pa_cvolume& volume) {
  return {volume.values, volume.values + volume.channels};
}

inline pa_cvolume pulseVolume(const policy::ChannelVolumes& volumes) {
  pa_cvolume volume;
  ::pa_cvolume_init(&volume);
  volume.channels = static_cast<std::uint8_t>(std::min<std::size_t>(volumes.size(), PA_CHANNELS_MAX));
  std::copy_n(volumes.begin(), volume.channels, volume.values);
  return volume;
}

#endif
