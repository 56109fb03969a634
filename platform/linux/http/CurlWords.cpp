// SPDX-License-Identifier: Apache-2.0
#include "http/CurlWords.h"

#include <text/ASCII.h>

#include <memory>

policy::Destination destinationOf(const std::string& address) {
  const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> url(curl_url(), curl_url_cleanup);
  if (!url || curl_url_set(url.get(), CURLUPART_URL, address.c_str(), CURLU_NON_SUPPORT_SCHEME) != CURLUE_OK) return {};
  const auto part = [&](CURLUPart which) {
    char* text = nullptr;
    if (curl_url_get(url.get(), which, &text, 0) != CURLUE_OK) return std::string();
    std::string copy = text::lowerCase(std::string(text));
    curl_free(text);
    return copy;
  };
  policy::Destination destination{part(CURLUPART_SCHEME), part(CURLUPART_HOST)};
  const std::string port = part(CURLUPART_PORT);
  if (!port.empty()) destination.host += ":" + port;
  return destination;
}

policy::TransferFailure failureOf(CURLcode code) {
  switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
      return policy::TransferFailure::hostNotFound;
    case CURLE_COULDNT_CONNECT:
      return policy::TransferFailure::noConnection;
    case CURLE_OPERATION_TIMEDOUT:
      return policy::TransferFailure::tooLate;
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
      return policy::TransferFailure::connectionLost;
    case CURLE_TOO_MANY_REDIRECTS:
      return policy::TransferFailure::tooManyRedirections;
    case CURLE_UNSUPPORTED_PROTOCOL:
      return policy::TransferFailure::unsupportedProtocol;
    case CURLE_WEIRD_SERVER_REPLY:
      return policy::TransferFailure::badResponse;
    case CURLE_URL_MALFORMAT:
      return policy::TransferFailure::badAddress;
    case CURLE_PEER_FAILED_VERIFICATION:
      return policy::TransferFailure::untrustedServer;
    case CURLE_SSL_CACERT_BADFILE:
      return policy::TransferFailure::noCertificates;
    case CURLE_SSL_CONNECT_ERROR:
      return policy::TransferFailure::noSecureConnection;
    default:
      return policy::TransferFailure::other;
  }
}
