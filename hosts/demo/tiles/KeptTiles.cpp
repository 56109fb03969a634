// SPDX-License-Identifier: Apache-2.0
#include "KeptTiles.h"

#include <string>
#include <utility>

#include "LocalAnswer.h"
#include "TileTexts.h"

namespace demo {

/// What the completions need, which may come after the session has gone.
struct KeptTiles::Keeper {
  std::shared_ptr<TileFolder> folder;
  std::shared_ptr<ZRClock> clock;
  std::shared_ptr<ZRLog> log;
  bool hasTold = false;

  void keep(const std::string& address, const NSData& data, const NSURLResponse& response) {
    const auto until = goodUntil(response, clock->now().secondsSince1970);
    if (!until || folder->keep(address, data, *until) || std::exchange(hasTold, true)) return;
    log->writeLine("tiles are not kept: the folder for them takes none");
  }
};

KeptTiles::KeptTiles(const ZRPlatform& platform, std::shared_ptr<TileFolder> folder)
    : network_(platform.httpSession),
      queue_(platform.mainQueue),
      keeper_(std::make_shared<Keeper>(Keeper{std::move(folder), platform.clock, platform.log})) {}

std::shared_ptr<NSURLSessionDataTask> KeptTiles::dataTaskWithRequest(NSMutableURLRequest request,
                                                                     CompletionHandler completion) {
  const std::string address = request.URL ? request.URL->absoluteString() : "";
  if (keeper_->folder->isGood(address, keeper_->clock->now().secondsSince1970)) {
    if (auto kept = keeper_->folder->read(address)) {
      return std::make_shared<LocalAnswer>(queue_, std::move(completion), std::move(kept), localResponse(request, 200));
    }
  }
  auto keepAndTell = [keeper = keeper_, request, address, completion = std::move(completion)](
                         std::optional<NSData> data, std::shared_ptr<const NSURLResponse> response,
                         std::optional<NSError> error) {
    const bool isAnswer = !error && data && response;
    const bool isRefusal = isAnswer && response->statusCode >= 400 && response->statusCode < 500;
    const bool isGivenUp = error && error->code == NSURLErrorCancelled;
    if (isAnswer && response->statusCode == 200) {
      keeper->keep(address, *data, *response);
    } else if (auto older = isRefusal || isGivenUp ? std::nullopt : keeper->folder->read(address)) {
      data = std::move(older);
      response = localResponse(request, 200);
      error.reset();
    }
    if (completion) completion(std::move(data), std::move(response), std::move(error));
  };
  return network_->dataTaskWithRequest(std::move(request), std::move(keepAndTell));
}

}  // namespace demo
