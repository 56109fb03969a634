// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_VOLUMEMEMORY_H
#define ZRCORE_LINUX_SOUND_VOLUMEMEMORY_H

#include <policy/DuckPlan.h>
#include <pulse/ext-stream-restore.h>

#include <functional>
#include <list>
#include <optional>

#include "sound/PulseConnection.h"

/// The sound server's memory of volumes: some servers remember the volume of a stream and give it to the next stream of
/// the same application (module-stream-restore). One read or write at a time.
class VolumeMemory {
 public:
  explicit VolumeMemory(PulseConnection& connection) : connection_(connection) {}

  /// PipeWire accepts volumes, but returns only those that were written, not those that it has remembered since.
  void setServer(const std::string& name) { isShown_ = name.find("PipeWire") == std::string::npos; }

  using Remembered = std::optional<std::vector<policy::RememberedVolume>>;  ///< nullopt: the server does not show it
  /// Reads the memory. The connection must be ready; if it is lost, `told` is never called.
  /// @param told  called with false when the server has no such memory
  void read(std::function<void(bool hasMemory, const Remembered& remembered)> told);

  /// Sets these volumes and keeps everything else that the server remembers. Where the memory can be read, the volumes
  /// must be of streams that the last `read` returned.
  /// @param told  called with whether the server has stored them
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
