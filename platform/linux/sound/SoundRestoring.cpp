// SPDX-License-Identifier: Apache-2.0
#include "sound/SoundRestoring.h"

#include <ZRCore/ZRLinuxPlatform.h>
#include <ZRCore/ZRPlatformFill.h>
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

int ZRRestoreLinuxSound(std::string& fault, const ZRLinuxSoundRestoring& host) {
  using Options = ZRLinuxSoundRestoring;
  const Options options = ZRReadOptions(host, &Options::stateFolder, &Options::endingOwner, &Options::seconds);
  fault.clear();
  if (!DuckFile(options.stateFolder, options.endingOwner).hasNotesOfDead()) return 0;
  // A loop of its own: that of the platform may be anybody's, and no platform need be installed.
  const std::unique_ptr<GMainContext, decltype(&g_main_context_unref)> context(g_main_context_new(),
                                                                               g_main_context_unref);
  const auto loop = std::make_shared<GLibLoop>(context.get());
  PulseConnection connection(loop);
  Loss loss;
  connection.add(loss);
  OtherStreams others(connection, options.stateFolder, {.changed = [](bool) {}, .unnoted = nullptr},
                      options.endingOwner);
  connection.connect();
  const bool isSettled = ZRRunLinuxLoopFor(
      options.seconds, [&] { return !loss.fault.empty() || others.isSettled(); }, context.get());
  if (!isSettled) loss.fault = "no sound server: it does not answer";
  fault = loss.fault;
  return others.restored();
}

void restoreSoundAtExit() {
  static const pid_t process = [] {
    std::atexit([] {
      if (::getpid() != process) return;  // a child that was forked has lowered nothing
      for (const std::string& folder : DuckFile::foldersWithNotes()) {
        std::string fault;
        ZRLinuxSoundRestoring restoring;
        restoring.stateFolder = folder;
        restoring.endingOwner = soundOwner();
        ZRRestoreLinuxSound(fault, restoring);
      }
    });
    return ::getpid();
  }();
}
