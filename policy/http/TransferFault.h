// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_POLICY_HTTP_TRANSFERFAULT_H
#define ZRCORE_POLICY_HTTP_TRANSFERFAULT_H

#include <ZRCore/NSError.h>
#include <ZRCore/NSURLSession.h>

#include <cstdint>
#include <optional>
#include <string>

namespace policy {

/// Where an address leads.
struct Destination {
  std::string scheme;  ///< empty when there is none
  std::string host;    ///< with the port, when one is given; empty when there is none
  bool isHTTP() const;
};

/// Why a transfer ended that did not end well.
enum class TransferFailure {
  hostNotFound,
  noConnection,
  tooLate,
  connectionLost,  ///< before the answer was whole
  tooManyRedirections,
  unsupportedProtocol,  ///< or, from an HTTP server, an answer that is not one of HTTP
  badResponse,          ///< an answer that is not one of HTTP
  badAddress,
  untrustedServer,
  noCertificates,  ///< to judge servers by
  noSecureConnection,
  other,
  // What we look for ourselves.
  silence,
  tooLong,           ///< in all, however much came
  length,            ///< of the body
  headers,           ///< of more bytes than are taken
  damage,            ///< of a packed body
  plainRedirection,  ///< from https to http
  memory,            ///< of our own, which there is none of
};

struct TransferEnd {
  TransferFailure failure = TransferFailure::other;
  int systemError = 0;           ///< an errno, or 0
  Destination destination = {};  ///< of the last request sent
  std::string detail = {};       ///< the library's own words
  double silenceSeconds = 0.0;   ///< the limits
  double longestRequestSeconds = 0.0;
  std::uint64_t longestBodyBytes = 0;
  std::string certificatesFile = {};  ///< of the host's own; empty: the system's
};

/// The session's error: what happened, with which host, and what to do about it. Pure.
NSError transferFault(const TransferEnd& end);

/// What keeps a request from being sent at all. Pure.
/// @param destination  of its address; nothing when it has none
std::optional<NSError> requestFault(const NSMutableURLRequest& request, const Destination& destination);

NSError cancellationFault();

}  // namespace policy

#endif
