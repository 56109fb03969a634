// SPDX-License-Identifier: Apache-2.0
// Any bytes as a server's answer: a request completes once, and however the network cuts the answer, it is the same.
#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <owners/FileDescriptor.h>
#include <sys/socket.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzLaws.h"
#include "http/CurlSession.h"
#include "loop/GLibLoop.h"

namespace {

using Pieces = std::vector<std::string_view>;
constexpr std::uint64_t kLongestBody = 1U << 16U;

struct StandingClock final : ZRClock {
  NSDate now() const override { return {1e9}; }
};

struct Outcome {
  long error = 0;
  int status = 0;
  ZRHTTPHeaders headers;
  std::string body;
  bool operator==(const Outcome&) const = default;
};

void requireSame(const std::optional<Outcome>& whole, const std::optional<Outcome>& parted, const char* law) {
  if (!whole || !parted || *whole == *parted || (whole->error != 0 && parted->error != 0)) return;
  for (const auto& [error, status, headers, body] : {*whole, *parted}) {
    std::fprintf(stderr, "error %ld, status %d, %zu fields, \"%s\"\n", error, status, headers.size(), body.c_str());
  }
  require(false, law);
}

/// A server on the loopback interface, and requests to it, on one loop. It is also every request's proxy, so that no
/// redirection leads out of the process.
class Exchange {
 public:
  Exchange() : context_(g_main_context_new()), loop_(std::make_shared<GLibLoop>(context_)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const place = reinterpret_cast<sockaddr*>(&address);
    require(bind(listener_.get(), place, length) == 0 && listen(listener_.get(), 64) == 0 &&
                getsockname(listener_.get(), place, &length) == 0,
            "there is a port");
    url_ = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/";
    for (const char* const name : {"http_proxy", "https_proxy", "all_proxy"}) setenv(name, url_.c_str(), 1);
    unsetenv("no_proxy");
    accepting_ = loop_->watch(listener_.get(), {.canRead = true}, [this](Loop::Readiness) {
      connection_ = FileDescriptor(accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
      const int isOn = 1;
      setsockopt(connection_.get(), IPPROTO_TCP, TCP_NODELAY, &isOn, sizeof isOn);
      ++connections_;
      next_ = 0;
    });
  }

  /// What comes of a request that is answered with these pieces, each of which has been read before the next is sent;
  /// nothing when it led to further connections.
  std::optional<Outcome> get(const Pieces& pieces) {
    connections_ = 0;
    int completions = 0;
    Outcome outcome;
    {
      const auto session = std::make_shared<CurlSession>(loop_, std::make_shared<StandingClock>(),
                                                         TransferOptions{.longestBodyBytes = kLongestBody});
      const auto completed = [&](auto data, const auto& response, const auto& error) {
        ++completions;
        if (error) outcome.error = error->code;
        if (response) outcome.status = response->statusCode;
        if (response && !error) outcome.headers = response->headers;
        if (data && !error) outcome.body = *data;
      };
      const auto task = session->dataTaskWithRequest({.URL = NSURL::URLWithString(url_)}, completed);
      task->resume();
      while (completions == 0) {
        const bool isIdle = g_main_context_iteration(context_, FALSE) == FALSE;
        if (isIdle && !say(pieces)) g_main_context_iteration(context_, TRUE);
      }
    }
    while (g_main_context_iteration(context_, FALSE) != FALSE) {
    }
    connection_.close();
    require(completions == 1, "a request completes once");
    require(outcome.body.size() <= kLongestBody, "a body is no longer than allowed");
    for (const auto& [name, value] : outcome.headers) {
      require((name + value).find('\n') == std::string::npos, "a field is one line");
    }
    return connections_ <= 1 ? std::optional(outcome) : std::nullopt;
  }

 private:
  /// The next piece, or the end. False when there is nobody to say it to.
  bool say(const Pieces& pieces) {
    if (!connection_.isOpen()) return false;
    if (next_ == pieces.size()) {
      // What has been asked is read, so that the end is no reset.
      char request[4096];
      while (recv(connection_.get(), request, sizeof request, MSG_DONTWAIT) > 0) {
      }
      connection_.close();
      return true;
    }
    const std::string_view piece = pieces[next_++];
    static_cast<void>(send(connection_.get(), piece.data(), piece.size(), MSG_NOSIGNAL | MSG_DONTWAIT));
    return true;
  }

  GMainContext* const context_;
  const std::shared_ptr<GLibLoop> loop_;
  FileDescriptor listener_{socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
  FileDescriptor connection_;
  std::unique_ptr<Loop::Wait> accepting_;
  std::string url_;
  std::size_t next_ = 0;
  int connections_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Exchange exchange;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const auto whole = exchange.get({input});
  const std::size_t split = splitOf(input);
  const auto parted = exchange.get({input.substr(0, split), input.substr(split)});
  // A head with a NUL in it libcurl 7.88 reads as the network cuts it.
  if (input.find('\0') < input.rfind("\r\n\r\n")) return 0;
  requireSame(whole, parted, "in two pieces it is the same answer");
  if (size > 400) return 0;
  Pieces bytes;
  for (std::size_t i = 0; i < size; ++i) bytes.push_back(input.substr(i, 1));
  requireSame(whole, exchange.get(bytes), "byte by byte it is the same answer");
  return 0;
}
