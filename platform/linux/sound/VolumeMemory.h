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

  /// PipeWire takes what is written, but shows only that, and not what it has since remembered of streams.
  void setServer(const std::string& name) { isShown_ = name.find("PipeWire") == std::string::npos; }

  using Remembered = std::optional<std::vector<policy::RememberedVolume>>;  ///< nullopt: the server does not show it
  /// Asks, over a connection that is ready. Nothing is told once that is lost.
  /// @param told  gets false from a server without a memory
  void read(std::function<void(bool hasMemory, const Remembered& remembered)> told);

  /// Sets volumes, of what was read last where it is shown; all else that is remembered stays.
  /// @param told  gets whether the server has done so
  void write(const std::vector<policy::RememberedVolume>& volumes, std::function<void(bool)> told);

 private:
  struct Entry {
    std::string name, device;
    pa_ext_stream_restore_info info{};
  };

  void add(const pa_ext_stream_restore_info& info);
  void tellRead(bool hasMemory);
  pa_ext_stream_restore_info infoOf(const policy::RememberedVolume& volume) const;

  PulseConnection& connection_;
  bool isShown_ = true;
  std::list<Entry> entries_;
  std::function<void(bool, const Remembered&)> toldRead_;
  std::function<void(bool)> toldWritten_;
};

#endif
