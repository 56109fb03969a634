// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_VOLUMEMEMORY_H
#define ZRCORE_LINUX_SOUND_VOLUMEMEMORY_H

#include <policy/DuckPlan.h>
#include <pulse/ext-stream-restore.h>

#include <functional>
#include <list>
#include <optional>

#include "sound/PulseConnection.h"

/// What the sound server remembers of streams for their applications' next ones, where it does (module-stream-restore).
/// One question at a time.
class VolumeMemory {
 public:
  explicit VolumeMemory(PulseConnection& connection) : connection_(connection) {}

  /// Asks, over a connection that is ready. Nothing is told once that is lost.
  /// @param told  gets nullopt from a server without a memory
  void read(std::function<void(std::optional<std::vector<policy::RememberedVolume>>)> told);

  /// Sets volumes of what was read last; all else that is remembered stays.
  /// @param told  gets whether the server has done so
  void write(const std::vector<policy::RememberedVolume>& volumes, std::function<void(bool)> told);

 private:
  struct Entry {
    std::string name, device;
    pa_ext_stream_restore_info info{};
  };

  void add(const pa_ext_stream_restore_info& info);
  void tellRead(bool isWhole);

  PulseConnection& connection_;
  std::list<Entry> entries_;
  std::function<void(std::optional<std::vector<policy::RememberedVolume>>)> toldRead_;
  std::function<void(bool)> toldWritten_;
};

#endif
