// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TILES_TILELOADER_H
#define ZRCORE_HOSTS_DEMO_TILES_TILELOADER_H

#include <ZRCore/NSURLSession_ZR.h>
#include <ZRCore/ZRPlatform.h>

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "MapTile.h"
#include "TileSource.h"
#include "TileTexts.h"
#include "UseOrder.h"

namespace demo {

/// Loads the tiles that a map shows, by the image tasks of the framework, and holds their pictures. A tile is asked for
/// once: not again while it is on its way or held, nor soon when it has failed. Main thread.
class TileLoader : public std::enable_shared_from_this<TileLoader> {
 public:
  static constexpr std::size_t kMostRequests = 4;  ///< at once, of a server
  static constexpr std::size_t kMostReadings = 8;  ///< at once, of what is at hand
  /// Of the pictures that are held. What a view shows is held in any case.
  static constexpr std::uint64_t kMostPictureBytes = 128'000'000;
  static constexpr std::uint32_t kMostPixelsAcross = 512;  ///< of a tile, which screens of double density have
  // Between two attempts at one tile, doubled from failure to failure.
  static constexpr double kFirstWaitSeconds = 30.0, kLongestWaitSeconds = 120.0;

  /// @param clock     outlives the loader
  /// @param onChange  called when there is something new to draw or to tell; never from inside a call here
  static std::shared_ptr<TileLoader> make(TileSource source, const ZRClock& clock, std::function<void()> onChange);
  ~TileLoader();
  TileLoader(const TileLoader&) = delete;
  TileLoader& operator=(const TileLoader&) = delete;

  const TileSource& source() const { return source_; }

  /// What there is to draw for a view, whose missing tiles are loaded from now on.
  std::vector<MapTile> show(const trip::MapTransform& view);
  /// Tries again what has failed long enough ago. Now and then.
  void step() { load(); }

  /// Why parts of what was shown last cannot be had; empty when they can, or may yet.
  std::string fault() const;
  std::size_t shownTiles() const;   ///< of what was shown last: how many are there
  std::size_t wantedTiles() const;  ///< and how many are neither there nor have failed

 private:
  struct Failure {
    TileFailure what;
    double waitSeconds, againAt;
  };
  struct OnItsWay {
    NSURLSession_ZR::Task task;
    bool isRequest;
  };

  TileLoader(TileSource source, const ZRClock& clock, std::function<void()> onChange);
  void load();
  void start(const Tile& tile, const NSURL& address, bool isRequest);
  void arrived(const Tile& tile, const NSURLResponse* response, const UIImage& image);
  void failed(const Tile& tile, const NSURLResponse* response, const std::optional<NSError>& error);
  void forgetOldest();

  TileSource source_;
  const ZRClock& clock_;
  std::function<void()> onChange_;
  std::vector<PlacedTile> view_;  ///< from the middle outwards
  std::map<Tile, std::shared_ptr<const trip::CairoPicture>> pictures_;
  UseOrder<Tile> order_;  ///< of the pictures
  std::map<Tile, OnItsWay> onTheirWay_;
  std::map<Tile, Failure> failures_;
};

}  // namespace demo

#endif
