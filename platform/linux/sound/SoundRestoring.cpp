// SPDX-License-Identifier: Apache-2.0
#include "sound/SoundRestoring.h"

#include <ZRCore/ZRLinuxPlatform.h>
#include <owners/GLib.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>

#include "sound/OtherStreams.h"
#include "sound/SoundOwner.h"

namespace {

/// Why there is no connection; empty while there may be one.
class Loss final : public PulseListener {
 public:
  void serverIsReady() override {}
  void serverIsLost(const std::string& why) override { fault = why; }
  std::string fault;
};

}  // namespace

int restoreSound(std::string& fault, const SoundToRestore& what) {
  fault.clear();
  if (!DuckFile(what.stateFolder, what.endingOwner).hasNotesOfDead()) return 0;
  // A loop of its own: that of the platform may be anybody's, and no platform need be installed.
  const owners::Ref<GMainContext> context(g_main_context_new());
  const auto loop = std::make_shared<GLibLoop>(context.get());
  PulseConnection connection(loop);
  Loss loss;
  connection.add(loss);
  OtherStreams others(connection, what.stateFolder, {.changed = [](bool) {}, .unnoted = nullptr}, what.endingOwner);
  connection.connect();
  const bool isSettled = ZRRunLinuxLoopFor(
      what.seconds, [&] { return !loss.fault.empty() || others.isSettled(); }, context.get());
  if (!isSettled) loss.fault = "no sound server: it does not answer";
  fault = loss.fault;
  return others.restored();
}

int ZRRestoreLinuxSound(std::string& fault, double seconds, const std::string& stateFolder) {
  return restoreSound(fault, {.stateFolder = stateFolder, .endingOwner = "", .seconds = seconds});
}

void restoreSoundAtExit() {
  static const pid_t process = [] {
    std::atexit([] {
      if (::getpid() != process) return;  // a child that was forked has lowered nothing
      for (const std::string& folder : DuckFile::foldersWithNotes()) {
        std::string fault;
        restoreSound(fault, {.stateFolder = folder, .endingOwner = soundOwner()});
      }
    });
    return ::getpid();
  }();
}
