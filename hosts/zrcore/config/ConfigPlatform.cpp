// SPDX-License-Identifier: Apache-2.0
#include "ConfigPlatform.h"

#include <ZRCore/ZRDocumentLimits.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <string_view>
#include <utility>
#include <variant>

namespace {

constexpr const char* kTooLong = "longer than is read";

/// Splits an address behind its scheme and host.
std::pair<std::string_view, std::string_view> originAndRest(std::string_view address) {
  const auto scheme = address.find("://");
  const auto host = scheme == std::string_view::npos ? 0 : scheme + 3;
  const auto end = std::min(address.find_first_of("/?#", host), address.size());
  return {address.substr(0, end), address.substr(end)};
}

class RoutedSession final : public NSURLSession {
 public:
  RoutedSession(std::shared_ptr<NSURLSession> session, std::shared_ptr<ZRMainQueue> queue, const ConfigRoute& route,
                std::uint64_t longestParsedBodyBytes, std::shared_ptr<ConfigFetch> fetch)
      : session_(std::move(session)),
        queue_(std::move(queue)),
        route_(route),
        longestParsedBodyBytes_(longestParsedBodyBytes),
        fetch_(std::move(fetch)) {}

  std::shared_ptr<NSURLSessionDataTask> dataTaskWithRequest(NSMutableURLRequest request,
                                                            CompletionHandler completion) override {
    if (route_.timeoutSeconds) request.timeoutSeconds = *route_.timeoutSeconds;
    if (request.URL) {
      const auto [origin, rest] = originAndRest(request.URL->absoluteString());
      std::string base = route_.base.value_or(std::string(origin));
      while (base.ends_with('/')) base.pop_back();
      const std::string_view asked = originAndRest(base).first;
      fetch_->host = asked.substr(asked.find_last_of("/@") + 1);
      request.URL = NSURL::URLWithString(base + std::string(rest));
    }
    return session_->dataTaskWithRequest(
        std::move(request), [queue = queue_, longest = longestParsedBodyBytes_, fetch = fetch_,
                             completion = std::move(completion)](auto data, auto response, auto error) {
          if (data && data->size() > longest) fetch->whyUnread = kTooLong;
          if (response) fetch->statusCode = response->statusCode;
          if (error) fetch->failure = error->localizedDescription();
          completion(std::move(data), std::move(response), std::move(error));
          queue->post([fetch] { fetch->isOver = true; });  // behind what the completion has posted
        });
  }

 private:
  const std::shared_ptr<NSURLSession> session_;
  const std::shared_ptr<ZRMainQueue> queue_;
  const ConfigRoute route_;
  const std::uint64_t longestParsedBodyBytes_;
  const std::shared_ptr<ConfigFetch> fetch_;
};

class ObservedJSON final : public ZRJSONService {
 public:
  ObservedJSON(std::shared_ptr<ZRJSONService> json, std::shared_ptr<ConfigFetch> fetch)
      : json_(std::move(json)), fetch_(std::move(fetch)) {}

  std::variant<ZROHMValue, NSError> valueFromJSON(std::string_view bytes, ZRJSONFragments fragments) const override {
    try {
      auto parsed = json_->valueFromJSON(bytes, fragments);
      const auto* const fault = std::get_if<NSError>(&parsed);
      if (fault && fault->domain == ZRDocumentErrorDomain) note(kTooLong);
      return parsed;
    } catch (const std::bad_alloc&) {
      note("too long for the memory that there is");
      throw;
    }
  }
  std::variant<std::string, NSError> JSONFromValue(const ZROHMValue& value, ZRJSONLayout layout) const override {
    return json_->JSONFromValue(value, layout);
  }

 private:
  void note(const char* what) const {
    (fetch_->askedForPackagedFile ? fetch_->whyFileUnread : fetch_->whyUnread) = what;
  }

  const std::shared_ptr<ZRJSONService> json_;
  const std::shared_ptr<ConfigFetch> fetch_;
};

class PackagedFileBundle final : public ZRBundle {
 public:
  PackagedFileBundle(std::optional<std::string> file, std::shared_ptr<ConfigFetch> fetch)
      : file_(std::move(file)), fetch_(std::move(fetch)) {}

  bool hasInfoValueForKey(std::string_view) const override { return false; }
  std::optional<std::string> infoStringForKey(std::string_view) const override { return std::nullopt; }
  std::optional<std::string> bundleIdentifier() const override { return std::nullopt; }
  std::optional<std::string> localizedStringForKey(std::string_view) const override { return std::nullopt; }
  std::optional<std::string> frameworkResource(std::string_view name, std::string_view type) const override {
    if (name != "tile_config" || type != "json") return std::nullopt;
    fetch_->askedForPackagedFile = true;
    return file_;
  }

 private:
  const std::optional<std::string> file_;
  const std::shared_ptr<ConfigFetch> fetch_;
};

}  // namespace

bool isBase(const std::string& text) {
  const auto scheme = text.find("://");
  const bool hasHost = scheme != std::string::npos && originAndRest(text).first.size() > scheme + 3;
  return hasHost && text.find_first_of("?#") == std::string::npos && NSURL::URLWithString(text).has_value();
}

ZRPlatform platformForConfig(ZRPlatform platform, const ConfigRoute& route, std::shared_ptr<ConfigFetch> fetch) {
  platform.httpSession = std::make_shared<RoutedSession>(platform.httpSession, platform.mainQueue, route,
                                                         platform.longestParsedBodyBytes, fetch);
  platform.json = std::make_shared<ObservedJSON>(platform.json, fetch);
  platform.bundle = std::make_shared<PackagedFileBundle>(route.packagedFile, std::move(fetch));
  return platform;
}
