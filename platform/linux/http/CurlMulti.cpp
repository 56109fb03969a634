// SPDX-License-Identifier: Apache-2.0
#include "http/CurlMulti.h"

#include <new>

#include "loop/FromC.h"

namespace {

/// How many idle connections are kept for requests to come.
constexpr long kKeptConnections = 16;

void initialiseLibcurl() {
  static const CURLcode once = curl_global_init(CURL_GLOBAL_DEFAULT);
  if (once != CURLE_OK) throw std::bad_alloc();
}

}  // namespace

CurlMulti::CurlMulti(Loop& loop, Client& client, std::uint32_t mostConnectionsPerHost) : loop_(loop), client_(client) {
  initialiseLibcurl();
  multi_ = curl_multi_init();
  if (!multi_) throw std::bad_alloc();
  curl_multi_setopt(multi_, CURLMOPT_SOCKETFUNCTION, &CurlMulti::watchSocket);
  curl_multi_setopt(multi_, CURLMOPT_SOCKETDATA, this);
  curl_multi_setopt(multi_, CURLMOPT_TIMERFUNCTION, &CurlMulti::setTimer);
  curl_multi_setopt(multi_, CURLMOPT_TIMERDATA, this);
  curl_multi_setopt(multi_, CURLMOPT_PIPELINING, CURLPIPE_MULTIPLEX);
  curl_multi_setopt(multi_, CURLMOPT_MAXCONNECTS, kKeptConnections);
  curl_multi_setopt(multi_, CURLMOPT_MAX_HOST_CONNECTIONS, static_cast<long>(mostConnectionsPerHost));
}

CurlMulti::~CurlMulti() { curl_multi_cleanup(multi_); }

bool CurlMulti::add(CURL* transfer) {
  if (curl_multi_add_handle(multi_, transfer) != CURLM_OK) return false;
  act(CURL_SOCKET_TIMEOUT, 0);  // at once: what libcurl asks for is a timer of no time
  return true;
}

void CurlMulti::remove(CURL* transfer) {
  curl_multi_remove_handle(multi_, transfer);
  startTimer();
}

int CurlMulti::watchSocket(CURL*, curl_socket_t socket, int what, void* self, void*) {
  auto& multi = *static_cast<CurlMulti*>(self);
  if (what == CURL_POLL_REMOVE) {
    multi.sockets_.erase(socket);
    return 0;
  }
  const Loop::Readiness interest{.canRead = (what & CURL_POLL_IN) != 0, .canWrite = (what & CURL_POLL_OUT) != 0};
  from_c::guarded([&multi, socket, interest] {
    multi.sockets_[socket] = multi.loop_.watch(socket, interest, [&multi, socket](Loop::Readiness readiness) {
      multi.act(socket, (readiness.canRead ? CURL_CSELECT_IN : 0) | (readiness.canWrite ? CURL_CSELECT_OUT : 0) |
                            (readiness.hasFailed ? CURL_CSELECT_ERR : 0));
    });
  });
  return 0;
}

int CurlMulti::setTimer(CURLM*, long milliseconds, void* self) {
  static_cast<CurlMulti*>(self)->timerMilliseconds_ = milliseconds;
  return 0;
}

void CurlMulti::startTimer() {
  const auto milliseconds = std::exchange(timerMilliseconds_, std::nullopt);
  if (!milliseconds) return;
  timer_.reset();
  if (*milliseconds >= 0) {
    timer_ = loop_.after(static_cast<double>(*milliseconds) / 1000.0, [this] { act(CURL_SOCKET_TIMEOUT, 0); });
  }
}

void CurlMulti::act(curl_socket_t socket, int readiness) {
  int running = 0;
  curl_multi_socket_action(multi_, socket, readiness, &running);
  startTimer();  // of all that was asked for meanwhile the last
  Ended ended;
  int waiting = 0;
  while (const CURLMsg* const message = curl_multi_info_read(multi_, &waiting)) {
    if (message->msg == CURLMSG_DONE) ended.emplace_back(message->easy_handle, message->data.result);
  }
  if (!ended.empty()) client_.transfersEnded(ended);
}
