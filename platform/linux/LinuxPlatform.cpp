// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRJSON.h>
#include <ZRCore/ZRLinuxPlatform.h>
#include <ZRCore/ZRPlatformFill.h>

#include <chrono>
#include <filesystem>

#include "documents/ExpatXML.h"
#include "documents/PixbufImages.h"
#include "http/CurlSession.h"
#include "identity/LinuxDevice.h"
#include "log/LinuxLog.h"
#include "loop/FromC.h"
#include "loop/GLibLoop.h"
#include "positioning/LinuxPositioning.h"
#include "settings/KeyFileBundle.h"
#include "settings/KeyFileDefaults.h"
#include "sound/LinuxSound.h"

namespace {

/// The clock that the host has installed: the same for all that measures.
class InstalledClock final : public ZRClock {
 public:
  NSDate now() const override { return ZRPlatformInUse().clock->now(); }
};

class RealClock final : public ZRClock {
 public:
  NSDate now() const override {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return {std::chrono::duration<double>(sinceEpoch).count()};
  }
};

ZRLinuxOptions knownOptions(const ZRLinuxOptions& host) {
  using Options = ZRLinuxOptions;
  return ZRReadOptions(host, &Options::mainContext, &Options::longestBodyBytes, &Options::informationFile,
                       &Options::resourcesFolder, &Options::textDomain, &Options::textFolder, &Options::settingsFolder,
                       &Options::rootFolder, &Options::largestImagePixels, &Options::log, &Options::sound,
                       &Options::positioning, &Options::desktopId, &Options::mostDocumentValues,
                       &Options::leavesOutEstimates, &Options::repairsWeekRollover, &Options::longestRequestSeconds,
                       &Options::mostConnectionsPerHost, &Options::certificatesFile);
}

ZRLinuxSoundOptions knownSoundOptions(const ZRLinuxOptions& options) {
  using Options = ZRLinuxSoundOptions;
  if (!options.sound) return {};
  return ZRReadOptions(*options.sound, &Options::speechCommand, &Options::speechPatienceSeconds, &Options::soundFile,
                       &Options::stateFolder);
}

std::shared_ptr<LinuxLog> makeLog(const ZRLinuxOptions& options) {
  const bool usesJournal =
      options.log == ZRLinuxLog::journal || (options.log == ZRLinuxLog::automatic && isStandardErrorTheJournal());
  if (!usesJournal) return std::make_shared<LinuxLog>(std::nullopt);
  return std::make_shared<LinuxLog>(options.rootFolder + "/run/systemd/journal/socket");
}

std::shared_ptr<KeyFileBundle> makeBundle(const ZRLinuxOptions& options, ZRLog& log) {
  const std::string resources = options.resourcesFolder.empty() ? installedResourcesFolder() : options.resourcesFolder;
  return std::make_shared<KeyFileBundle>(
      KeyFileBundle::Places{options.informationFile, resources, options.textDomain, options.textFolder}, log);
}

std::shared_ptr<KeyFileDefaults> makeUserDefaults(const ZRLinuxOptions& options,
                                                  const std::optional<std::string>& application,
                                                  std::shared_ptr<ZRMainQueue> queue, std::shared_ptr<ZRLog> log) {
  std::optional<std::filesystem::path> file;
  const std::filesystem::path folder = options.settingsFolder.empty()
                                           ? std::filesystem::path(g_get_user_config_dir()) / "ZRCore"
                                           : std::filesystem::path(options.settingsFolder);
  if (application && !application->empty()) file = settingsFile(folder, *application);
  return std::make_shared<KeyFileDefaults>(std::move(file), std::move(queue), std::move(log));
}

void fillSound(ZRPlatform& platform, const ZRLinuxOptions& options, const std::shared_ptr<GLibLoop>& loop) {
  LinuxSound sound = makeLinuxSound(loop, knownSoundOptions(options));
  ZRPlatformFill(platform, &ZRPlatform::audioSession, std::move(sound.audioSession));
  ZRPlatformFill(platform, &ZRPlatform::speech, std::move(sound.speech));
  ZRPlatformFill(platform, &ZRPlatform::audioPlayers, std::move(sound.audioPlayers));
}

std::shared_ptr<ZRPositioning> makePositioning(const std::shared_ptr<GLibLoop>& loop, const ZRLinuxOptions& options) {
  PositioningOptions positioning;
  positioning.source = options.positioning;
  positioning.desktopId = options.desktopId;
  positioning.leavesOutEstimates = options.leavesOutEstimates;
  positioning.repairsWeekRollover = options.repairsWeekRollover;
  positioning.log = [](const std::string& line) { ZRPlatformInUse().log->writeLine(line); };
  positioning.now = [] { return ZRPlatformInUse().clock->now(); };
  return makeLinuxPositioning(loop, std::move(positioning));
}

}  // namespace

void ZRFillLinuxPlatform(ZRPlatform& platform, const ZRLinuxOptions& host) {
  const ZRLinuxOptions options = knownOptions(host);
  const auto loop = std::make_shared<GLibLoop>(options.mainContext);
  ZRPlatformFill(platform, &ZRPlatform::mainQueue, loop);
  ZRPlatformFill(platform, &ZRPlatform::positioning, makePositioning(loop, options));
  const auto log = makeLog(options);
  const auto bundle = makeBundle(options, *log);
  const auto application = bundle->bundleIdentifier();
  ZRPlatformFill(platform, &ZRPlatform::log, log);
  ZRPlatformFill(platform, &ZRPlatform::clock, std::make_shared<RealClock>());
  ZRPlatformFill(platform, &ZRPlatform::bundle, bundle);
  ZRPlatformFill(platform, &ZRPlatform::userDefaults, makeUserDefaults(options, application, loop, log));
  ZRPlatformFill(platform, &ZRPlatform::device, std::make_shared<LinuxDevice>(options.rootFolder, application));
  ZRPlatformFill(platform, &ZRPlatform::json, ZRMakeJSONService(options.mostDocumentValues));
  ZRPlatformFill(
      platform, &ZRPlatform::httpSession,
      std::make_shared<CurlSession>(loop, std::make_shared<InstalledClock>(),
                                    TransferOptions{options.longestBodyBytes, options.longestRequestSeconds,
                                                    options.mostConnectionsPerHost, options.certificatesFile}));
  ZRPlatformFill(platform, &ZRPlatform::xml, std::make_shared<ExpatXML>(options.mostDocumentValues));
  ZRPlatformFill(platform, &ZRPlatform::images, std::make_shared<PixbufImages>(options.largestImagePixels));
  fillSound(platform, options, loop);
}

std::shared_ptr<ZRPositioning> ZRMakeLinuxPositioning(const ZRLinuxOptions& host) {
  const ZRLinuxOptions options = knownOptions(host);
  return makePositioning(std::make_shared<GLibLoop>(options.mainContext), options);
}

void ZRRunLinuxLoopUntil(const std::function<bool()>& isDone, GMainContext* context) {
  GMainContext* const iterated = context ? context : g_main_context_default();
  const from_c::LoopRun run;
  while (!isDone()) {
    g_main_context_iteration(iterated, TRUE);
    run.rethrow();
  }
}

bool ZRRunLinuxLoopFor(double seconds, const std::function<bool()>& isDone, GMainContext* context) {
  bool isOver = false;
  const auto deadline = GLibLoop(context).after(seconds, [&isOver] { isOver = true; });
  ZRRunLinuxLoopUntil([&] { return isOver || isDone(); }, context);
  return isDone();
}
