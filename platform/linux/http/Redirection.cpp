// SPDX-License-Identifier: Apache-2.0
#include "http/Redirection.h"

#include <curl/curl.h>

#include <memory>

namespace {

/// A part in small letters, but a port that is the scheme's own; empty when there is none.
std::string partOf(CURLU* url, CURLUPart which) {
  char* text = nullptr;
  if (curl_url_get(url, which, &text, CURLU_DEFAULT_PORT) != CURLUE_OK) return {};
  std::string part(text);
  curl_free(text);
  for (char& c : part) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  return part;
}

}  // namespace

Redirection redirection(const std::string& from, const std::string& location) {
  const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> url(curl_url(), curl_url_cleanup);
  if (!url || curl_url_set(url.get(), CURLUPART_URL, from.c_str(), 0) != CURLUE_OK) return {false, true};
  constexpr CURLUPart kParts[] = {CURLUPART_SCHEME, CURLUPART_HOST, CURLUPART_PORT};
  std::string before[3];
  for (int i = 0; i < 3; ++i) before[i] = partOf(url.get(), kParts[i]);
  // A scheme that libcurl does not speak is refused by it, and told as that.
  if (curl_url_set(url.get(), CURLUPART_URL, location.c_str(), CURLU_URLENCODE) != CURLUE_OK) return {false, true};
  Redirection to;
  for (int i = 0; i < 3; ++i) to.leavesOrigin |= partOf(url.get(), kParts[i]) != before[i];
  to.leavesTLS = before[0] == "https" && partOf(url.get(), CURLUPART_SCHEME) == "http";
  return to;
}
