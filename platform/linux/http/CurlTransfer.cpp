// SPDX-License-Identifier: Apache-2.0
#include "http/CurlTransfer.h"

#include <text/ASCII.h>

#include <algorithm>
#include <new>
#include <utility>

#include "http/CurlWords.h"

namespace {

constexpr long kMostRedirections = 20;

/// Whether a body of that Content-Encoding is to be unpacked.
bool isPacked(const std::string& encoding) {
  const auto is = [&encoding](const char* name) { return text::isSameInAnyCase(encoding, name); };
  return is("gzip") || is("x-gzip") || is("deflate");
}

}  // namespace

CurlTransfer::CurlTransfer(std::shared_ptr<CurlTask> task, policy::Destination asked, const ZRClock& clock,
                           std::uint64_t longestBodyBytes, CurlHandle spare)
    : task_(std::move(task)),
      asked_(std::move(asked)),
      clock_(clock),
      longestBodyBytes_(longestBodyBytes),
      idle_(task_->request().timeoutSeconds, clock.now()),
      easy_(spare ? std::move(spare) : CurlHandle(curl_easy_init())) {
  if (!easy_) throw std::bad_alloc();
  configure();
}

CurlTransfer::~CurlTransfer() {
  easy_.reset();
  curl_slist_free_all(requestHeaders_);
}

CurlHandle CurlTransfer::takeHandle() {
  curl_easy_reset(easy_.get());
  return std::move(easy_);
}

void CurlTransfer::configure() {
  curl_easy_setopt(easy_.get(), CURLOPT_URL, task_->request().URL->absoluteString().c_str());
  curl_easy_setopt(easy_.get(), CURLOPT_PRIVATE, this);
  curl_easy_setopt(easy_.get(), CURLOPT_ERRORBUFFER, detail_);
  curl_easy_setopt(easy_.get(), CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(easy_.get(), CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy_.get(), CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy_.get(), CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(easy_.get(), CURLOPT_MAXREDIRS, kMostRedirections);
  curl_easy_setopt(easy_.get(), CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_2TLS);
  // Requests at once share a connection where the handshake offers that. Without one they would wait for the first
  // answer, to learn that it does not.
  curl_easy_setopt(easy_.get(), CURLOPT_PIPEWAIT, asked_.scheme == "https" ? 1L : 0L);
  curl_easy_setopt(easy_.get(), CURLOPT_ACCEPT_ENCODING, "gzip, deflate");
  curl_easy_setopt(easy_.get(), CURLOPT_HTTP_CONTENT_DECODING, 0L);  // libcurl 7.88 takes a cut body for a whole one
  curl_easy_setopt(easy_.get(), CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
  // Silence is what we measure, not the time that libcurl gives a connection.
  curl_easy_setopt(easy_.get(), CURLOPT_CONNECTTIMEOUT_MS,
                   static_cast<long>(std::clamp(idle_.limitSeconds() * 2000.0, 300000.0, 2e9)));

  curl_easy_setopt(easy_.get(), CURLOPT_WRITEFUNCTION, static_cast<curl_write_callback>(&CurlTransfer::takeBody));
  curl_easy_setopt(easy_.get(), CURLOPT_WRITEDATA, this);
  curl_easy_setopt(easy_.get(), CURLOPT_HEADERFUNCTION,
                   static_cast<curl_write_callback>(&CurlTransfer::takeHeaderLine));
  curl_easy_setopt(easy_.get(), CURLOPT_HEADERDATA, this);
  configureMethod();
}

void CurlTransfer::configureMethod() {
  const NSMutableURLRequest& request = task_->request();
  if (request.HTTPMethod == "HEAD") {
    curl_easy_setopt(easy_.get(), CURLOPT_NOBODY, 1L);  // nor is a body sent
  } else if (request.HTTPBody) {
    // Taken from the request, which the task keeps; its sending is progress too.
    curl_easy_setopt(easy_.get(), CURLOPT_POSTFIELDS, request.HTTPBody->data());
    curl_easy_setopt(easy_.get(), CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.HTTPBody->size()));
    curl_easy_setopt(easy_.get(), CURLOPT_XFERINFOFUNCTION, &CurlTransfer::noteProgress);
    curl_easy_setopt(easy_.get(), CURLOPT_XFERINFODATA, this);
    curl_easy_setopt(easy_.get(), CURLOPT_NOPROGRESS, 0L);
    if (request.HTTPMethod != "POST") curl_easy_setopt(easy_.get(), CURLOPT_CUSTOMREQUEST, request.HTTPMethod.c_str());
  } else if (request.HTTPMethod == "POST") {
    curl_easy_setopt(easy_.get(), CURLOPT_POSTFIELDS, "");
  } else if (request.HTTPMethod != "GET") {
    curl_easy_setopt(easy_.get(), CURLOPT_CUSTOMREQUEST, request.HTTPMethod.c_str());
  }
  // libcurl would wait a second for servers that know no "100 Continue".
  if (request.HTTPBody) requestHeaders_ = curl_slist_append(requestHeaders_, "Expect:");
  for (const auto& [name, value] : request.HTTPHeaders) {
    const std::string line =
        text::trimmed(value).empty() ? name + ";" : name + ": " + value;  // ";": sent without a value
    requestHeaders_ = curl_slist_append(requestHeaders_, line.c_str());
  }
  if (requestHeaders_) curl_easy_setopt(easy_.get(), CURLOPT_HTTPHEADER, requestHeaders_);
}

std::size_t CurlTransfer::takeBody(char* bytes, std::size_t, std::size_t count, void* self) noexcept {
  return static_cast<CurlTransfer*>(self)->takeBody({bytes, count}) ? count : 0;
}

bool CurlTransfer::takeBody(std::string_view bytes) {
  idle_.hear(clock_.now());
  if (body_.empty() && !unpacker_) {
    const auto isEncoding = [](const auto& field) { return text::isSameInAnyCase(field.first, "content-encoding"); };
    const auto encoding = std::ranges::find_if(headers_, isEncoding);
    if (encoding != headers_.end() && isPacked(encoding->second)) unpacker_.emplace();
  }
  auto taken = packed::Unpacker::Taken::good;
  if (unpacker_) {
    taken = unpacker_->take(bytes, body_, longestBodyBytes_);
  } else if (body_.size() + bytes.size() > longestBodyBytes_) {
    taken = packed::Unpacker::Taken::tooLong;
  } else {
    body_.append(bytes);
  }
  if (taken == packed::Unpacker::Taken::tooLong) stoppedBy_ = policy::TransferFailure::length;
  if (taken == packed::Unpacker::Taken::damaged) stoppedBy_ = policy::TransferFailure::damage;
  return taken == packed::Unpacker::Taken::good;
}

std::size_t CurlTransfer::takeHeaderLine(char* bytes, std::size_t, std::size_t count, void* self) noexcept {
  return static_cast<CurlTransfer*>(self)->takeHeaderLine({bytes, count}) ? count : 0;
}

bool CurlTransfer::takeHeaderLine(std::string_view line) {
  idle_.hear(clock_.now());
  headerBytes_ += line.size();
  if (headerBytes_ > longestBodyBytes_) {
    stoppedBy_ = policy::TransferFailure::length;
    return false;
  }
  if (line.starts_with("HTTP/")) {  // a further answer: after a redirection, or a "100 Continue"
    headers_.clear();
    headerBytes_ = 0;
    return true;
  }
  const bool continues = line.starts_with(' ') || line.starts_with('\t');
  if (continues && !headers_.empty()) {
    headers_.back().second.append(1, ' ').append(text::trimmed(line));
    return true;
  }
  const auto colon = line.find(':');
  if (colon != std::string_view::npos) {
    headers_.emplace_back(line.substr(0, colon), text::trimmed(line.substr(colon + 1)));
  }
  return true;
}

int CurlTransfer::noteProgress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t sent) noexcept {
  auto& transfer = *static_cast<CurlTransfer*>(self);
  if (std::exchange(transfer.sentBytes_, sent) != sent) transfer.idle_.hear(transfer.clock_.now());
  return 0;
}

std::shared_ptr<NSURLResponse> CurlTransfer::response() {
  long status = 0;
  curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
  if (status == 0) return nullptr;
  auto response = std::make_shared<NSURLResponse>();
  const char* address = nullptr;
  curl_easy_getinfo(easy_.get(), CURLINFO_EFFECTIVE_URL, &address);
  if (address) response->URL = NSURL::URLWithString(address);
  response->statusCode = static_cast<int>(status);
  response->headers = std::move(headers_);
  return response;
}

TransferResult CurlTransfer::result(CURLcode code) {
  if (code == CURLE_OK && (!unpacker_ || unpacker_->isWhole())) {
    return {.data = std::move(body_), .response = response()};
  }
  if (code == CURLE_OK) stoppedBy_ = policy::TransferFailure::damage;
  return failure(stoppedBy_.value_or(failureOf(code)), curl_easy_strerror(code));
}

TransferResult CurlTransfer::resultOfSilence() { return failure(policy::TransferFailure::silence, ""); }

TransferResult CurlTransfer::failure(policy::TransferFailure why, const char* detail) {
  policy::TransferEnd end{.failure = why};
  long systemError = 0;
  curl_easy_getinfo(easy_.get(), CURLINFO_OS_ERRNO, &systemError);
  const char* address = nullptr;
  curl_easy_getinfo(easy_.get(), CURLINFO_EFFECTIVE_URL, &address);
  end.systemError = static_cast<int>(systemError);
  if (address) end.destination = destinationOf(address);
  if (!end.destination.isHTTP()) end.destination.host = asked_.host;  // which leads there
  end.detail = detail_[0] ? detail_ : detail;
  end.silenceSeconds = idle_.limitSeconds();
  end.longestBodyBytes = longestBodyBytes_;
  return {.response = response(), .error = policy::transferFault(end)};
}
