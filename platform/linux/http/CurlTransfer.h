// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_HTTP_CURLTRANSFER_H
#define ZRCORE_LINUX_HTTP_CURLTRANSFER_H

#include <ZRCore/NSURLSession.h>
#include <ZRCore/ZRPlatform.h>
#include <curl/curl.h>
#include <packed/Unpacker.h>
#include <policy/http/IdleLimit.h>
#include <policy/http/TransferFault.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "http/CurlTask.h"
#include "http/TransferOptions.h"

struct CurlHandleEnd {
  void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
using CurlHandle = std::unique_ptr<CURL, CurlHandleEnd>;

/// One request under way at libcurl: how it is sent, and what has come of it so far. Loop's thread.
class CurlTransfer {
 public:
  /// @param spare  a handle to use; null for a new one
  CurlTransfer(std::shared_ptr<CurlTask> task, policy::Destination asked, const ZRClock& clock,
               const TransferOptions& options, CurlHandle spare);
  CurlTransfer(const CurlTransfer&) = delete;
  CurlTransfer& operator=(const CurlTransfer&) = delete;
  ~CurlTransfer();

  CURL* handle() const { return easy_.get(); }
  /// The handle, as good as new. The transfer is over.
  CurlHandle takeHandle();
  const std::shared_ptr<CurlTask>& task() const { return task_; }

  double silenceLimitSeconds() const { return idle_.limitSeconds(); }
  /// `IdleLimit::secondsToWait`, now. Waiting for one's turn is no silence.
  std::optional<double> secondsToWait();

  /// What a transfer that libcurl has ended came to.
  TransferResult result(CURLcode code);
  /// What a transfer came to that ends because nothing has come for too long, or it has no end.
  TransferResult resultOf(policy::TransferFailure limit);

 private:
  static std::size_t takeBody(char* bytes, std::size_t one, std::size_t count, void* self) noexcept;
  static std::size_t takeHeaderLine(char* bytes, std::size_t one, std::size_t count, void* self) noexcept;
  static int noteBegin(void* self, char*, char*, int, int) noexcept;
  static int noteNameAsked(void*, void*, void* self) noexcept;
  static curl_socket_t openSocket(void* self, curlsocktype, curl_sockaddr* address) noexcept;
  static int noteProgress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t sent) noexcept;

  void configure();
  void configureMethod();
  void noteWhenItBegins();
  bool takeBody(std::string_view bytes);
  bool takeHeaderLine(std::string_view line);
  /// Calls one of the two from inside a callback of libcurl, through which no exception may pass.
  bool guarded(bool (CurlTransfer::*take)(std::string_view), std::string_view bytes) noexcept;
  /// @return false when a redirection must not be followed
  bool mayFollow(const std::string& location);
  TransferResult failure(policy::TransferFailure why, const char* detail);
  std::shared_ptr<NSURLResponse> response();

  std::shared_ptr<CurlTask> task_;
  policy::Destination asked_;
  const ZRClock& clock_;
  const TransferOptions& options_;
  policy::IdleLimit idle_;
  CurlHandle easy_;
  curl_slist* requestHeaders_ = nullptr;
  curl_slist* headersForOthers_ = nullptr;  ///< of them, what goes along to another origin
  char detail_[CURL_ERROR_SIZE] = {};
  curl_off_t sentBytes_ = 0;
  std::uint64_t headerBytes_ = 0, bodyBytes_ = 0;  ///< as they came
  bool hasBegun_ = false;                          ///< or waits for a connection
  bool isInHeaders_ = true;
  std::optional<policy::TransferFailure> stoppedBy_;  ///< what we look for ourselves
  NSData body_;
  std::optional<packed::Unpacker> unpacker_;  ///< of a packed body, from its first byte on
  ZRHTTPHeaders headers_;                     ///< of the last answer so far
};

#endif
