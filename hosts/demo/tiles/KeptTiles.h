// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TILES_KEPTTILES_H
#define ZRCORE_HOSTS_DEMO_TILES_KEPTTILES_H

#include <ZRCore/ZRPlatform.h>

#include <memory>

#include "TileFolder.h"

namespace demo {

/// A session that keeps what another one was answered, so that the tasks above it know nothing of a disk: an answer
/// that is kept and good is given without a request, an older one when the server cannot give any. Main thread.
class KeptTiles final : public NSURLSession {
 public:
  /// @param platform  its session is asked; its clock says what is good still
  KeptTiles(const ZRPlatform& platform, std::shared_ptr<TileFolder> folder);

  std::shared_ptr<NSURLSessionDataTask> dataTaskWithRequest(NSMutableURLRequest request,
                                                            CompletionHandler completion) override;

 private:
  struct Keeper;

  std::shared_ptr<NSURLSession> network_;
  std::shared_ptr<ZRMainQueue> queue_;
  std::shared_ptr<Keeper> keeper_;
};

}  // namespace demo

#endif
