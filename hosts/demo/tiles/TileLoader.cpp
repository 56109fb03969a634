// SPDX-License-Identifier: Apache-2.0
#include "TileLoader.h"

#include <algorithm>
#include <utility>

namespace demo {

namespace {

constexpr double kSilenceSeconds = 20.0;
constexpr std::size_t kMostFailures = 4096;

}  // namespace

std::shared_ptr<TileLoader> TileLoader::make(TileSource source, const ZRClock& clock, std::function<void()> onChange) {
  return std::shared_ptr<TileLoader>(new TileLoader(std::move(source), clock, std::move(onChange)));
}

TileLoader::TileLoader(TileSource source, const ZRClock& clock, std::function<void()> onChange)
    : source_(std::move(source)), clock_(clock), onChange_(std::move(onChange)) {}

TileLoader::~TileLoader() {
  for (const auto& [tile, onItsWay] : onTheirWay_) onItsWay.task->cancel();
}

std::vector<MapTile> TileLoader::show(const trip::MapTransform& view) {
  view_ = tilesInView(view, source_.zooms);
  std::vector<MapTile> shown;
  for (const TileLayer& layer : layersOf(view_, [this](const Tile& tile) { return pictures_.contains(tile); })) {
    order_.use(layer.picture);
    shown.push_back({pictures_.at(layer.picture), layer.whole, layer.shown});
  }
  load();
  return shown;
}

/// What is on its way and no longer in view goes on: to give it up and to want it back would ask twice.
void TileLoader::load() {
  const double now = clock_.now().secondsSince1970;
  std::size_t requests = 0;
  for (const auto& [tile, onItsWay] : onTheirWay_) requests += onItsWay.isRequest ? 1 : 0;
  std::size_t readings = onTheirWay_.size() - requests;
  for (const auto& [tile, area] : view_) {
    if (requests >= kMostRequests && readings >= kMostReadings) return;
    if (pictures_.contains(tile) || onTheirWay_.contains(tile)) continue;
    const auto failure = failures_.find(tile);
    if (failure != failures_.end() && now < failure->second.againAt) continue;
    const NSURL address = source_.addresses.addressOf(tile);
    const bool isRequest = !source_.isAtHand(address);
    std::size_t& count = isRequest ? requests : readings;
    if (count >= (isRequest ? kMostRequests : kMostReadings)) continue;
    ++count;
    start(tile, address, isRequest);
  }
}

void TileLoader::start(const Tile& tile, const NSURL& address, bool isRequest) {
  NSMutableURLRequest request{address, kSilenceSeconds};
  request.HTTPHeaders = source_.headers;
  const auto weak = weak_from_this();
  auto task = NSURLSession_ZR::imageDataTaskWithSessionRequestSuccessFailure(
      source_.session, std::move(request),
      [weak, tile](const NSURLSession_ZR::Response& response, const std::shared_ptr<const UIImage>& image) {
        if (const auto self = weak.lock()) self->arrived(tile, response.get(), *image);
      },
      [weak, tile](const NSURLSession_ZR::Response& response, const std::optional<NSError>& error) {
        if (const auto self = weak.lock()) self->failed(tile, response.get(), error);
      });
  onTheirWay_[tile] = {task, isRequest};
  task->resume();
}

/// The image task takes a picture for a success whatever the status: a server may paint its refusal.
void TileLoader::arrived(const Tile& tile, const NSURLResponse* response, const UIImage& image) {
  const bool isTile = image.widthPixels <= kMostPixelsAcross && image.heightPixels <= kMostPixelsAcross;
  const bool isRefusal = response && response->statusCode >= 400;
  if (!isTile || isRefusal) return failed(tile, response, std::nullopt);
  onTheirWay_.erase(tile);
  failures_.erase(tile);
  pictures_[tile] = std::make_shared<const trip::CairoPicture>(image);
  order_.use(tile, std::uint64_t{4} * image.widthPixels * image.heightPixels);
  forgetOldest();
  load();
  onChange_();
}

void TileLoader::failed(const Tile& tile, const NSURLResponse* response, const std::optional<NSError>& error) {
  onTheirWay_.erase(tile);
  const bool isNoTile = response && response->statusCode == 200;
  if (isNoTile) source_.forget(source_.addresses.addressOf(tile));
  if (failures_.size() >= kMostFailures) failures_.clear();  // a long way without a network
  const auto known = failures_.find(tile);
  const double wait =
      known == failures_.end() ? kFirstWaitSeconds : std::min(2 * known->second.waitSeconds, kLongestWaitSeconds);
  failures_.insert_or_assign(
      tile, Failure{tileFailure(source_.name, response, error), wait, clock_.now().secondsSince1970 + wait});
  load();
  onChange_();
}

void TileLoader::forgetOldest() {
  if (order_.bytes() <= kMostPictureBytes) return;
  std::set<Tile> needed;
  for (const TileLayer& layer : layersOf(view_, [this](const Tile& tile) { return pictures_.contains(tile); })) {
    needed.insert(layer.picture);
  }
  for (const Tile& tile : order_.shrink(kMostPictureBytes, [&](const Tile& old) { return needed.contains(old); })) {
    pictures_.erase(tile);
  }
}

std::string TileLoader::fault() const {
  std::string missing;
  for (const auto& [tile, area] : view_) {
    const auto failure = failures_.find(tile);
    if (failure == failures_.end()) continue;
    if (!failure->second.what.isMissing) return failure->second.what.text;
    missing = failure->second.what.text;
  }
  const bool hasAny = shownTiles() > 0 || wantedTiles() > 0;
  return hasAny ? "" : missing;
}

std::size_t TileLoader::shownTiles() const {
  return static_cast<std::size_t>(
      std::ranges::count_if(view_, [this](const PlacedTile& placed) { return pictures_.contains(placed.tile); }));
}

std::size_t TileLoader::wantedTiles() const {
  return static_cast<std::size_t>(std::ranges::count_if(view_, [this](const PlacedTile& placed) {
    return !pictures_.contains(placed.tile) && !failures_.contains(placed.tile);
  }));
}

}  // namespace demo
