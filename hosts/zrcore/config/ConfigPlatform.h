// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_CONFIG_CONFIGPLATFORM_H
#define ZRCORE_HOSTS_ZRCORE_CONFIG_CONFIGPLATFORM_H

#include <ZRCore/ZRPlatform.h>

#include <memory>
#include <optional>
#include <string>

/// What a fetch of the configuration met on its way.
struct ConfigFetch {
  std::string host;                       ///< that was asked
  int statusCode = 0;                     ///< of its answer; 0: there was none
  std::optional<std::string> failure;     ///< of the transport
  const char* whyUnread = "no JSON";      ///< what the answer is, if it cannot be read
  const char* whyFileUnread = "no JSON";  ///< the same of the packaged file
  bool askedForPackagedFile = false;
  bool isOver = false;  ///< nothing more will come
};

/// Where a fetch is sent, and what it may take.
struct ConfigRoute {
  std::optional<std::string> base;  ///< scheme, host and path to put in place of the request's scheme and host
  std::optional<double> timeoutSeconds;
  std::optional<std::string> packagedFile;  ///< its bytes
};

/// Whether a text can be a route's base.
bool isBase(const std::string& text);

/// `platform` with a session that sends requests along the route, a bundle that has the packaged file and nothing
/// else, and these and the JSON service reporting to `fetch` what they meet.
ZRPlatform platformForConfig(ZRPlatform platform, const ConfigRoute& route, std::shared_ptr<ConfigFetch> fetch);

#endif
