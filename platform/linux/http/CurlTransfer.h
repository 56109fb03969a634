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

struct CurlHandleEnd {
  void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
using CurlHandle = std::unique_ptr<CURL, CurlHandleEnd>;

/// One request under way at libcurl: how it is sent, and what has come of it so far. Loop's thread.
class CurlTransfer {
 public:
  /// @param spare  a handle to use; null for a new one
  CurlTransfer(std::shared_ptr<CurlTask> task, policy::Destination asked, const ZRClock& clock,
               std::uint64_t longestBodyBytes, CurlHandle spare);
  CurlTransfer(const CurlTransfer&) = delete;
  CurlTransfer& operator=(const CurlTransfer&) = delete;
  ~CurlTransfer();

  CURL* handle() const { return easy_.get(); }
  /// The handle, as good as new. The transfer is over.
  CurlHandle takeHandle();
  const std::shared_ptr<CurlTask>& task() const { return task_; }

  double silenceLimitSeconds() const { return idle_.limitSeconds(); }
  /// `IdleLimit::secondsToWait`, now.
  std::optional<double> secondsToWait() { return idle_.secondsToWait(clock_.now()); }

  /// What a transfer that libcurl has ended came to.
  TransferResult result(CURLcode code);
  /// What a transfer came to that ends because nothing has come for too long.
  TransferResult resultOfSilence();

 private:
  static std::size_t takeBody(char* bytes, std::size_t one, std::size_t count, void* self) noexcept;
  static std::size_t takeHeaderLine(char* bytes, std::size_t one, std::size_t count, void* self) noexcept;
  static int noteProgress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t sent) noexcept;

  void configure();
  void configureMethod();
  bool takeBody(std::string_view bytes);
  bool takeHeaderLine(std::string_view line);
  TransferResult failure(policy::TransferFailure why, const char* detail);
  std::shared_ptr<NSURLResponse> response();

  std::shared_ptr<CurlTask> task_;
  policy::Destination asked_;
  const ZRClock& clock_;
  std::uint64_t longestBodyBytes_;
  policy::IdleLimit idle_;
  CurlHandle easy_;
  curl_slist* requestHeaders_ = nullptr;
  char detail_[CURL_ERROR_SIZE] = {};
  curl_off_t sentBytes_ = 0;
  std::uint64_t headerBytes_ = 0;
  std::optional<policy::TransferFailure> stoppedBy_;  ///< what we look for ourselves
  NSData body_;
  std::optional<packed::Unpacker> unpacker_;  ///< of a packed body, from its first byte on
  ZRHTTPHeaders headers_;                     ///< of the last answer so far
};

#endif
