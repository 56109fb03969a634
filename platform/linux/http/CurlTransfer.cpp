// SPDX-License-Identifier: Apache-2.0
#include "http/CurlTransfer.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <text/ASCII.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <exception>
#include <new>
#include <utility>

#include "http/CurlWords.h"
#include "http/Redirection.h"

namespace {

constexpr long kMostRedirections = 20;

/// Whether a body of that Content-Encoding is to be unpacked.
bool isPacked(const std::string& encoding) {
  const auto is = [&encoding](const char* name) { return text::isSameInAnyCase(encoding, name); };
  return is("gzip") || is("x-gzip") || is("deflate");
}

/// Whether the process cannot open anything more. Libraries tell that as a server that is not there.
bool hasNoDescriptors() {
  const int descriptor = open("/", O_PATH | O_CLOEXEC);
  if (descriptor < 0) return errno == EMFILE || errno == ENFILE;
  close(descriptor);
  return false;
}

}  // namespace

CurlTransfer::CurlTransfer(std::shared_ptr<CurlTask> task, policy::Destination asked, const ZRClock& clock,
                           const TransferOptions& options, CurlHandle spare)
    : task_(std::move(task)),
      asked_(std::move(asked)),
      clock_(clock),
      options_(options),
      idle_(task_->request().timeoutSeconds, clock.now()),
      easy_(spare ? std::move(spare) : CurlHandle(curl_easy_init())) {
  if (!easy_) throw std::bad_alloc();
  configure();
}

CurlTransfer::~CurlTransfer() {
  easy_.reset();
  curl_slist_free_all(requestHeaders_);
  curl_slist_free_all(headersForOthers_);
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
  if (const auto& file = options_.certificatesFile; !file.empty()) {
    curl_easy_setopt(easy_.get(), CURLOPT_CAINFO, file.c_str());
    curl_easy_setopt(easy_.get(), CURLOPT_CAPATH, nullptr);  // nor whom the system trusts
  }
  // Silence is what we measure, not the time that libcurl gives a connection.
  curl_easy_setopt(easy_.get(), CURLOPT_CONNECTTIMEOUT_MS,
                   static_cast<long>(std::clamp(idle_.limitSeconds() * 2000.0, 300000.0, 2e9)));

  curl_easy_setopt(easy_.get(), CURLOPT_WRITEFUNCTION, static_cast<curl_write_callback>(&CurlTransfer::takeBody));
  curl_easy_setopt(easy_.get(), CURLOPT_WRITEDATA, this);
  curl_easy_setopt(easy_.get(), CURLOPT_HEADERFUNCTION,
                   static_cast<curl_write_callback>(&CurlTransfer::takeHeaderLine));
  curl_easy_setopt(easy_.get(), CURLOPT_HEADERDATA, this);
  noteWhenItBegins();
  configureMethod();
}

void CurlTransfer::noteWhenItBegins() {
  // With https requests wait for a shared connection: one after the other, they would each wait for a dead host.
  hasBegun_ = asked_.scheme == "https";
  if (hasBegun_) return;
  curl_easy_setopt(easy_.get(), CURLOPT_RESOLVER_START_FUNCTION, &CurlTransfer::noteNameAsked);
  curl_easy_setopt(easy_.get(), CURLOPT_RESOLVER_START_DATA, this);
  curl_easy_setopt(easy_.get(), CURLOPT_OPENSOCKETFUNCTION, &CurlTransfer::openSocket);
  curl_easy_setopt(easy_.get(), CURLOPT_OPENSOCKETDATA, this);
  curl_easy_setopt(easy_.get(), CURLOPT_PREREQFUNCTION, &CurlTransfer::noteBegin);
  curl_easy_setopt(easy_.get(), CURLOPT_PREREQDATA, this);
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
  const auto add = [this](const std::string& line, bool isForOthers) {
    requestHeaders_ = curl_slist_append(requestHeaders_, line.c_str());
    if (isForOthers) headersForOthers_ = curl_slist_append(headersForOthers_, line.c_str());
  };
  if (request.HTTPBody) add("Expect:", true);
  for (const auto& [name, value] : request.HTTPHeaders) {
    const bool isOfBody = request.HTTPBody && text::isSameInAnyCase(name, "content-type");
    add(text::trimmed(value).empty() ? name + ";" : name + ": " + value, isOfBody);  // ";": sent without a value
  }
  if (requestHeaders_) curl_easy_setopt(easy_.get(), CURLOPT_HTTPHEADER, requestHeaders_);
}

std::size_t CurlTransfer::takeBody(char* bytes, std::size_t, std::size_t count, void* self) noexcept {
  return static_cast<CurlTransfer*>(self)->guarded(&CurlTransfer::takeBody, {bytes, count}) ? count : 0;
}

int CurlTransfer::noteBegin(void* self, char*, char*, int, int) noexcept {
  static_cast<CurlTransfer*>(self)->hasBegun_ = true;
  return CURL_PREREQFUNC_OK;
}

int CurlTransfer::noteNameAsked(void*, void*, void* self) noexcept {
  static_cast<CurlTransfer*>(self)->hasBegun_ = true;
  return 0;
}

curl_socket_t CurlTransfer::openSocket(void* self, curlsocktype, curl_sockaddr* address) noexcept {
  static_cast<CurlTransfer*>(self)->hasBegun_ = true;
  return socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
}

std::optional<double> CurlTransfer::secondsToWait() {
  if (!hasBegun_) idle_.hear(clock_.now());
  return idle_.secondsToWait(clock_.now());
}

bool CurlTransfer::guarded(bool (CurlTransfer::*take)(std::string_view), std::string_view bytes) noexcept {
  try {
    return (this->*take)(bytes);
  } catch (const std::exception&) {
    body_ = {};  // so that there is memory for telling that there was none
    stoppedBy_ = policy::TransferFailure::memory;
    return false;
  }
}

bool CurlTransfer::takeBody(std::string_view bytes) {
  idle_.hear(clock_.now());
  if (body_.empty() && !unpacker_) {
    const auto isEncoding = [](const auto& field) { return text::isSameInAnyCase(field.first, "content-encoding"); };
    const auto encoding = std::ranges::find_if(headers_, isEncoding);
    if (encoding != headers_.end() && isPacked(encoding->second)) unpacker_.emplace();
  }
  auto taken = packed::Unpacker::Taken::good;
  bodyBytes_ += bytes.size();  // packed ones may stand for nothing, without end
  if (bodyBytes_ > options_.longestBodyBytes) {
    taken = packed::Unpacker::Taken::tooLong;
  } else if (unpacker_) {
    taken = unpacker_->take(bytes, body_, options_.longestBodyBytes);
  } else {
    body_.append(bytes);
  }
  if (taken == packed::Unpacker::Taken::tooLong) stoppedBy_ = policy::TransferFailure::length;
  if (taken == packed::Unpacker::Taken::damaged) stoppedBy_ = policy::TransferFailure::damage;
  return taken == packed::Unpacker::Taken::good;
}

std::size_t CurlTransfer::takeHeaderLine(char* bytes, std::size_t, std::size_t count, void* self) noexcept {
  return static_cast<CurlTransfer*>(self)->guarded(&CurlTransfer::takeHeaderLine, {bytes, count}) ? count : 0;
}

bool CurlTransfer::takeHeaderLine(std::string_view line) {
  idle_.hear(clock_.now());
  headerBytes_ += line.size();
  if (headerBytes_ > options_.longestBodyBytes) {
    stoppedBy_ = policy::TransferFailure::length;
    return false;
  }
  if (line.starts_with("HTTP/")) {  // a further answer: after a redirection, or a "100 Continue"
    headers_.clear();
    headerBytes_ = 0;
    isInHeaders_ = true;
    return true;
  }
  if (text::trimmed(line).empty()) isInHeaders_ = false;
  const bool continues = line.starts_with(' ') || line.starts_with('\t');
  if (continues && !headers_.empty()) {
    headers_.back().second.append(1, ' ').append(text::trimmed(line));
    return true;
  }
  const auto colon = line.find(':');
  if (colon != std::string_view::npos) {
    const auto& [name, value] = headers_.emplace_back(line.substr(0, colon), text::trimmed(line.substr(colon + 1)));
    if (text::isSameInAnyCase(name, "location")) return mayFollow(value);
  }
  return true;
}

bool CurlTransfer::mayFollow(const std::string& location) {
  long status = 0;
  const char* address = nullptr;
  curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
  curl_easy_getinfo(easy_.get(), CURLINFO_EFFECTIVE_URL, &address);
  if (status < 300 || status >= 400 || !address) return true;
  const Redirection to = redirection(address, location);
  if (to.leavesTLS) {
    stoppedBy_ = policy::TransferFailure::plainRedirection;
    return false;
  }
  // What the host has put in for one server is none of another's business, and stays behind for good.
  if (to.leavesOrigin) curl_easy_setopt(easy_.get(), CURLOPT_HTTPHEADER, headersForOthers_);
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
  if (code == CURLE_OK && isInHeaders_) code = CURLE_PARTIAL_FILE;  // a head that breaks off, which libcurl lets pass
  if (code == CURLE_OK && (!unpacker_ || unpacker_->isWhole())) {
    return {.data = std::move(body_), .response = response()};
  }
  if (code == CURLE_OK) stoppedBy_ = policy::TransferFailure::damage;
  // So libcurl says that a field has more than 100 kB, or that all have more than 300.
  const bool isTooMuch =
      code == CURLE_OUT_OF_MEMORY || std::string_view(detail_).starts_with("Too large response header");
  if (isInHeaders_ && isTooMuch && !stoppedBy_) stoppedBy_ = policy::TransferFailure::headers;
  return failure(stoppedBy_.value_or(failureOf(code)), curl_easy_strerror(code));
}

TransferResult CurlTransfer::resultOf(policy::TransferFailure limit) { return failure(limit, ""); }

TransferResult CurlTransfer::failure(policy::TransferFailure why, const char* detail) {
  policy::TransferEnd end{.failure = why};
  long systemError = 0;
  curl_easy_getinfo(easy_.get(), CURLINFO_OS_ERRNO, &systemError);
  const char* address = nullptr;
  curl_easy_getinfo(easy_.get(), CURLINFO_EFFECTIVE_URL, &address);
  end.systemError = hasNoDescriptors() ? EMFILE : static_cast<int>(systemError);
  if (address) end.destination = destinationOf(address);
  if (!end.destination.isHTTP()) end.destination.host = asked_.host;  // which leads there
  end.detail = detail_[0] ? detail_ : detail;
  end.silenceSeconds = idle_.limitSeconds();
  end.longestRequestSeconds = options_.longestRequestSeconds;
  end.longestBodyBytes = options_.longestBodyBytes;
  end.certificatesFile = options_.certificatesFile;
  return {.response = response(), .error = policy::transferFault(end)};
}
