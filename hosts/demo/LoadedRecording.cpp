// SPDX-License-Identifier: Apache-2.0
#include "LoadedRecording.h"

#include <readers/FixCompletion.h>
#include <trip/OutputText.h>
#include <trip/Words.h>
#include <trip/drawing/EndlessPlane.h>
#include <trip/replay/Recording.h>

#include <filesystem>

namespace demo {

namespace {

/// Speeds that a source does not report are derived, so that the filter has something to work on.
constexpr readers::FixCompletion::Options kCompletion{.assumedAccuracyMeters = std::nullopt, .derivesSpeed = true};

class Loader final : public readers::Listener {
 public:
  explicit Loader(LoadedRecording& loaded) : loaded_(loaded) {}

  bool isFull() const { return loaded_.fixes.size() >= LoadedRecording::kMostFixes; }

  void fix(const readers::SourceFix& fix) override {
    if (isFull()) {
      loaded_.isCutShort = true;
      return;
    }
    loaded_.fixes.push_back(completion_.complete(fix));
    loaded_.timeline.add(fix.secondsSince1970);
    const ZRMapPoint at = plane_.place(fix.coordinate);
    loaded_.route.push_back({at, loaded_.route.size(), loaded_.route.empty()});
    loaded_.envelope.add(at);
  }
  void remark(const readers::Remark& remark) override {
    if (remark.severity == readers::Severity::fault) ++loaded_.faults;
  }

 private:
  LoadedRecording& loaded_;
  readers::FixCompletion completion_{kCompletion};
  trip::EndlessPlane plane_;
};

}  // namespace

std::string LoadedRecording::summary() const {
  std::string text = format + " · " + trip::countText(fixes.size(), "fix", "fixes") + " · " +
                     trip::durationText(timeline.durationSeconds());
  if (isCutShort) text += " · the rest is left out";
  if (faults > 0) text += " · " + trip::countText(faults, "fault", "faults");
  return text;
}

LoadedRecording loadRecording(const std::string& path) {
  // A pipe would hold up the window until somebody writes into it.
  std::error_code error;
  if (std::filesystem::exists(path, error) && !std::filesystem::is_regular_file(path, error)) {
    throw trip::RecordingError("is no file; choose a recording");
  }
  LoadedRecording loaded;
  loaded.name = trip::asUtf8(std::filesystem::path(path).filename().string());
  Loader loader(loaded);
  trip::Recording recording(path, [&loaded] { return loaded.isCutShort; });
  loaded.format = readers::formatName(recording.format());
  recording.read(loader, [] {});
  if (loaded.fixes.empty()) throw trip::RecordingError("holds no fix to play");
  return loaded;
}

}  // namespace demo
