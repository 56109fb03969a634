// SPDX-License-Identifier: Apache-2.0
#include "positioning/LinuxPositioning.h"

#include <policy/PositioningSource.h>

#include <utility>

#include "positioning/AutoSource.h"
#include "positioning/FileSource.h"
#include "positioning/GeoClueSource.h"
#include "positioning/LinuxLocationManager.h"
#include "positioning/StreamSource.h"

using policy::PositioningFault;
using policy::PositioningSource;

namespace {

/// Stands for a source whose description makes no sense: all that it does is to say so.
class BadSource final : public PositionSource {
 public:
  BadSource(Loop& loop, std::string why) : loop_(loop), why_(std::move(why)) {}
  std::string name() const override { return "the positioning source"; }
  void start(PositionSourceListener& listener) override {
    said_ = loop_.after(0.0, [this, &listener] { listener.sourceFails(PositioningFault::badSource, why_); });
  }
  void stop() override { said_.reset(); }

 private:
  Loop& loop_;
  std::string why_;
  std::unique_ptr<Loop::Wait> said_;
};

class LinuxPositioning final : public ZRPositioning {
 public:
  LinuxPositioning(std::shared_ptr<GLibLoop> loop, PositioningOptions options)
      : loop_(std::move(loop)),
        options_(std::make_shared<const PositioningOptions>(std::move(options))),
        source_(policy::parsePositioningSource(options_->source)) {
    // Only GeoClue asks anybody. Whoever may open a receiver, may know the position.
    if (!asks()) authorization_->status = CLAuthorizationStatus::authorizedAlways;
  }

  std::shared_ptr<CLLocationManager> makeLocationManager() override {
    LinuxLocationManager::Dependencies dependencies{
        [loop = loop_, options = options_, source = source_](CLAuthorizationStatus granted) {
          if (const auto* const why = std::get_if<std::string>(&source)) {
            return std::static_pointer_cast<PositionSource>(std::make_shared<BadSource>(*loop, *why));
          }
          return makeSource(*loop, *options, std::get<PositioningSource>(source), granted);
        },
        authorization_, options_->log};
    if (asks()) return std::make_shared<AskingLocationManager>(std::move(dependencies));
    return std::make_shared<LinuxLocationManager>(std::move(dependencies));
  }

  CLAuthorizationStatus authorizationStatus() const override { return authorization_->status; }

 private:
  bool asks() const {
    const auto* const source = std::get_if<PositioningSource>(&source_);
    return source != nullptr &&
           (source->kind == PositioningSource::Kind::automatic || source->kind == PositioningSource::Kind::geoclue);
  }

  static std::shared_ptr<PositionSource> makeGpsd(GLibLoop& loop, const PositioningOptions& options,
                                                  const PositioningSource& source) {
    return std::make_shared<StreamSource>(loop, makeSocketConnector(source, loop.context()),
                                          StreamSource::Options{.name = source.name(),
                                                                .format = readers::Format::gpsdJson,
                                                                .request = "?WATCH={\"enable\":true,\"json\":true};\n",
                                                                .greets = true,
                                                                .hasHeading = true,
                                                                .silenceSeconds = options.silenceSeconds,
                                                                .intake = intakeOf(options)});
  }

  static readers::FixIntake::Options intakeOf(const PositioningOptions& options) {
    return {.leavesOutEstimates = options.leavesOutEstimates,
            .repairsWeekRollover = options.repairsWeekRollover,
            .now = options.now};
  }

  static std::shared_ptr<PositionSource> makeSource(GLibLoop& loop, const PositioningOptions& options,
                                                    const PositioningSource& source, CLAuthorizationStatus granted) {
    const auto makeGeoClue = [&loop, &options, granted]() -> std::shared_ptr<PositionSource> {
      return std::make_shared<GeoClueSource>(loop, GeoClueSource::Options{.desktopId = options.desktopId,
                                                                          .busAddress = options.systemBusAddress,
                                                                          .granted = granted,
                                                                          .now = options.now,
                                                                          .answerSeconds = options.silenceSeconds});
    };
    switch (source.kind) {
      case PositioningSource::Kind::gpsd:
        return makeGpsd(loop, options, source);
      case PositioningSource::Kind::nmea:
        return std::make_shared<StreamSource>(loop, makeReceiverConnector(source.path, loop.context()),
                                              StreamSource::Options{.name = source.name(),
                                                                    .format = readers::Format::nmea,
                                                                    .silenceSeconds = options.silenceSeconds,
                                                                    .intake = intakeOf(options)});
      case PositioningSource::Kind::file:
        return std::make_shared<FileSource>(
            loop, source.path, [] { return static_cast<double>(g_get_monotonic_time()) / G_USEC_PER_SEC; },
            intakeOf(options));
      case PositioningSource::Kind::geoclue:
        return makeGeoClue();
      case PositioningSource::Kind::automatic:
        break;
    }
    PositioningSource gpsd;
    gpsd.kind = PositioningSource::Kind::gpsd;
    return std::make_shared<AutoSource>(
        loop,
        std::vector<AutoSource::Make>{[&loop, &options, gpsd] { return makeGpsd(loop, options, gpsd); }, makeGeoClue});
  }

  std::shared_ptr<GLibLoop> loop_;
  std::shared_ptr<const PositioningOptions> options_;
  std::variant<PositioningSource, std::string> source_;
  std::shared_ptr<Authorization> authorization_ = std::make_shared<Authorization>();
};

}  // namespace

std::shared_ptr<ZRPositioning> makeLinuxPositioning(const std::shared_ptr<GLibLoop>& loop, PositioningOptions options) {
  return std::make_shared<LinuxPositioning>(loop, std::move(options));
}
