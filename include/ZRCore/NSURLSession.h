// SPDX-License-Identifier: Apache-2.0
/// @file
/// HTTP requests: the request, the response, the task that runs one, and the session that makes tasks.
#ifndef ZRCORE_NSURLSESSION_H
#define ZRCORE_NSURLSESSION_H

#include <ZRCore/NSError.h>
#include <ZRCore/NSURL.h>
#include <ZRCore/ZRExport.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Bytes.
using NSData = std::string;

/// Header fields in the order in which they stand in the message; a name may come more than once.
using ZRHTTPHeaders = std::vector<std::pair<std::string, std::string>>;

/// The domain of a session's errors. An adapter reports what is not named here under codes of its own.
inline constexpr const char* NSURLErrorDomain = "NSURLErrorDomain";
inline constexpr long NSURLErrorUnknown = -1;
inline constexpr long NSURLErrorCancelled = -999;
inline constexpr long NSURLErrorBadURL = -1000;
inline constexpr long NSURLErrorTimedOut = -1001;
inline constexpr long NSURLErrorUnsupportedURL = -1002;
inline constexpr long NSURLErrorCannotFindHost = -1003;
inline constexpr long NSURLErrorCannotConnectToHost = -1004;
inline constexpr long NSURLErrorNetworkConnectionLost = -1005;
inline constexpr long NSURLErrorHTTPTooManyRedirects = -1007;
inline constexpr long NSURLErrorNotConnectedToInternet = -1009;
inline constexpr long NSURLErrorBadServerResponse = -1011;
inline constexpr long NSURLErrorCannotDecodeContentData = -1016;
inline constexpr long NSURLErrorDataLengthExceedsMaximum = -1103;
inline constexpr long NSURLErrorSecureConnectionFailed = -1200;
inline constexpr long NSURLErrorServerCertificateUntrusted = -1202;

/// What is asked of a server. A plain value.
struct NSMutableURLRequest {
  std::optional<NSURL> URL = {};  ///< without one the task fails with NSURLErrorBadURL
  double timeoutSeconds = 60.0;   ///< how long nothing may come before the task fails with NSURLErrorTimedOut
  std::string HTTPMethod = "GET";
  ZRHTTPHeaders HTTPHeaders = {};
  std::optional<NSData> HTTPBody = {};
};

/// What a server answered, but for the body.
struct NSURLResponse {
  std::optional<NSURL> URL = {};  ///< where the answer came from, after redirections
  int statusCode = 0;             ///< of HTTP; 0 when the answer came over another protocol
  ZRHTTPHeaders headers = {};

  /// The value of the first field of that name, whatever its case.
  ZR_EXPORT const std::string* valueForHTTPHeaderField(std::string_view name) const;
};

enum class NSURLSessionTaskState { running = 0, suspended = 1, canceling = 2, completed = 3 };

/// One request on its way. Any thread.
class ZR_EXPORT NSURLSessionDataTask {
 public:
  virtual ~NSURLSessionDataTask();
  /// Sends the request. Nothing when the task was resumed or cancelled before.
  virtual void resume() = 0;
  /// Gives the request up: the task completes with NSURLErrorCancelled, also when it was never resumed. Nothing when it
  /// has completed.
  virtual void cancel() = 0;
  /// suspended until it is resumed or cancelled, completed when the completion handler is called.
  virtual NSURLSessionTaskState state() const = 0;
};

/// Makes tasks. Any thread.
class ZR_EXPORT NSURLSession {
 public:
  /// What came of a request: the body, the answer, the fault of the transport. Any of them may be absent; an HTTP
  /// status is not a fault. A body that was cut short is a fault (NSURLErrorNetworkConnectionLost).
  using CompletionHandler = std::function<void(
      std::optional<NSData> data, std::shared_ptr<const NSURLResponse> response, std::optional<NSError> error)>;

  /// The session of the platform in use.
  static std::shared_ptr<NSURLSession> sharedSession();

  virtual ~NSURLSession();

  /// Makes a suspended task for `request`. It calls `completion` once, on a thread of the session's choice, and never
  /// from inside `resume` or `cancel`; after that, or when it is released without having been resumed, it lets go of
  /// the handler. From `resume` to completion the session holds the task, so that the caller need not: only `cancel`
  /// ends it early.
  virtual std::shared_ptr<NSURLSessionDataTask> dataTaskWithRequest(NSMutableURLRequest request,
                                                                    CompletionHandler completion) = 0;
};

#endif
