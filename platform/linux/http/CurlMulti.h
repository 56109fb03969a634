// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_HTTP_CURLMULTI_H
#define ZRCORE_LINUX_HTTP_CURLMULTI_H

#include <curl/curl.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "loop/Loop.h"

/// libcurl's transfers and connections, waited for by a loop. Loop's thread.
class CurlMulti {
 public:
  using Ended = std::vector<std::pair<CURL*, CURLcode>>;

  /// Learns which transfers have ended. They are still the multi's: `remove` them.
  class Client {
   public:
    virtual ~Client() = default;
    /// From inside a callback of the loop, never from inside one of libcurl. May destroy the multi.
    virtual void transfersEnded(const Ended& ended) = 0;
  };

  /// Both must outlive the multi. 0 connections: as many as there are requests.
  CurlMulti(Loop& loop, Client& client, std::uint32_t mostConnectionsPerHost);
  CurlMulti(const CurlMulti&) = delete;
  CurlMulti& operator=(const CurlMulti&) = delete;
  ~CurlMulti();  ///< after `remove` of every transfer

  /// Starts a transfer. @return false when it cannot be.
  bool add(CURL* transfer);
  void remove(CURL* transfer);

 private:
  static int watchSocket(CURL*, curl_socket_t socket, int what, void* self, void*);
  static int setTimer(CURLM*, long milliseconds, void* self);
  void startTimer();
  /// Lets libcurl do what it can, and reports to the client. Nothing of this object is touched after that.
  void act(curl_socket_t socket, int readiness);

  Loop& loop_;
  Client& client_;
  CURLM* multi_;
  std::map<curl_socket_t, std::unique_ptr<Loop::Wait>> sockets_;
  std::unique_ptr<Loop::Wait> timer_;
  std::optional<long> timerMilliseconds_;  ///< asked for by libcurl, and not waited for yet; negative: no longer
};

#endif
