// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_HEADLESS_HEADLESSSESSION_H
#define ZRCORE_PLATFORM_HEADLESS_HEADLESSSESSION_H

#include <ZRCore/NSURLSession.h>

/// A network that is not connected: each task fails, through the main queue of the platform in use.
class HeadlessSession final : public NSURLSession {
 public:
  std::shared_ptr<NSURLSessionDataTask> dataTaskWithRequest(NSMutableURLRequest request,
                                                            CompletionHandler completion) override;
};

#endif
