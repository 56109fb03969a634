// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_HTTP_TRANSFERFAULT_H
#define ZRCORE_LINUX_HTTP_TRANSFERFAULT_H

#include <ZRCore/NSError.h>
#include <ZRCore/NSURLSession.h>
#include <curl/curl.h>

#include <cstdint>
#include <optional>
#include <string>

/// Where an address leads.
struct Destination {
  std::string scheme;  ///< empty when there is none
  std::string host;    ///< with the port, when one is given; empty when there is none
  bool isHTTP() const;
};

/// Reads an address as libcurl does, in small letters, but that a scheme must be given. Names and passwords in it are left out.
Destination destinationOf(const std::string& address);

/// Why a transfer ended, when it did not end well.
struct TransferEnd {
  enum class StoppedBy { nobody, silence, time, length, headers, damage, plainRedirection, memory };

  CURLcode code = CURLE_OK;
  StoppedBy stoppedBy = StoppedBy::nobody;  ///< of what we look for ourselves
  int systemError = 0;                      ///< an errno, or 0
  Destination destination = {};             ///< of the last request sent
  std::string detail = {};                  ///< libcurl's own words
  double silenceSeconds = 0.0;              ///< the limits
  double longestRequestSeconds = 0.0;
  std::uint64_t longestBodyBytes = 0;
};

/// The session's error: what happened, with which host, and what to do about it. Pure.
NSError transferFault(const TransferEnd& end);

/// What keeps a request from being sent at all. Pure.
/// @param destination  of its address; nothing when it has none
std::optional<NSError> requestFault(const NSMutableURLRequest& request, const Destination& destination);

NSError cancellationFault();

#endif
