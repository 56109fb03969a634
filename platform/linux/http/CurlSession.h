// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_HTTP_CURLSESSION_H
#define ZRCORE_LINUX_HTTP_CURLSESSION_H

#include <ZRCore/NSURLSession.h>
#include <ZRCore/ZRPlatform.h>

#include <map>
#include <memory>

#include "http/CurlMulti.h"
#include "http/CurlTransfer.h"
#include "http/TransferOptions.h"
#include "loop/Loop.h"

/// HTTP through libcurl. Completion handlers are called on the loop's thread, in which the session is to be released;
/// what is on its way then is cancelled.
class CurlSession final : public NSURLSession,
                          public std::enable_shared_from_this<CurlSession>,
                          private CurlMulti::Client {
 public:
  CurlSession(std::shared_ptr<Loop> loop, std::shared_ptr<const ZRClock> clock, TransferOptions options);
  ~CurlSession() override;

  std::shared_ptr<NSURLSessionDataTask> dataTaskWithRequest(NSMutableURLRequest request,
                                                            CompletionHandler completion) override;

  /// What tasks ask for. Loop's thread, never from inside `resume` or `cancel`.
  void start(const std::shared_ptr<CurlTask>& task);
  void stop(const CurlTask& task);

 private:
  /// A transfer, and the waits for what does not come, and for what does not end.
  struct Running {
    std::unique_ptr<CurlTransfer> transfer;
    std::unique_ptr<Loop::Wait> silence, end;
  };
  using Transfers = std::map<const CurlTask*, Running>;

  void transfersEnded(const CurlMulti::Ended& ended) override;
  void waitForSilence(Running& running, double seconds);
  void judgeSilence(const CurlTask* task);
  void endForTime(const CurlTask* task);
  /// Takes a transfer from libcurl, and from `running_`.
  std::unique_ptr<CurlTransfer> takeOut(Transfers::iterator place);

  const std::shared_ptr<Loop> loop_;
  const std::shared_ptr<const ZRClock> clock_;
  const TransferOptions options_;
  CurlMulti multi_;
  Transfers running_;
  CurlHandle spare_;  ///< of the last transfer that ended, for the next one
};

#endif
