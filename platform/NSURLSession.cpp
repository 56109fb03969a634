// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSURLSession.h>
#include <ZRCore/ZRPlatform.h>
#include <text/ASCII.h>

#include <algorithm>

NSURLSessionDataTask::~NSURLSessionDataTask() = default;
NSURLSession::~NSURLSession() = default;

std::shared_ptr<NSURLSession> NSURLSession::sharedSession() { return ZRPlatformInUse().httpSession; }

const std::string* NSURLResponse::valueForHTTPHeaderField(std::string_view name) const {
  const auto found =
      std::ranges::find_if(headers, [&](const auto& field) { return text::isSameInAnyCase(field.first, name); });
  return found != headers.end() ? &found->second : nullptr;
}
