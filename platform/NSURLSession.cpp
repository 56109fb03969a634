// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSURLSession.h>
#include <ZRCore/ZRPlatform.h>

#include <algorithm>

NSURLSessionDataTask::~NSURLSessionDataTask() = default;
NSURLSession::~NSURLSession() = default;

std::shared_ptr<NSURLSession> NSURLSession::sharedSession() { return ZRPlatformInUse().httpSession; }

const std::string* NSURLResponse::valueForHTTPHeaderField(std::string_view name) const {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  const auto found = std::ranges::find_if(
      headers, [&](const auto& field) { return std::ranges::equal(field.first, name, {}, lower, lower); });
  return found != headers.end() ? &found->second : nullptr;
}
