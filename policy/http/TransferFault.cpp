// SPDX-License-Identifier: Apache-2.0
#include "http/TransferFault.h"

#include <ZRCore/ZRPrintableText.h>
#include <text/ASCII.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string_view>

namespace policy {
namespace {

NSError fault(long code, std::string description) {
  return {NSURLErrorDomain, code, {{NSLocalizedDescriptionKey, std::move(description)}}};
}

struct Verdict {
  long code;
  const char* before;  ///< the sentence around the host's name
  const char* after;
};

constexpr Verdict kUnsupported{NSURLErrorUnsupportedURL, "",
                               " leads to a protocol that is neither http nor https: check the address."};

Verdict verdictOf(const TransferEnd& end) {
  switch (end.failure) {
    case TransferFailure::hostNotFound:
      return {NSURLErrorCannotFindHost, "", " was not found: check its name and the connection to the network."};
    case TransferFailure::noConnection:
      if (end.systemError == ENETUNREACH || end.systemError == ENETDOWN) {
        return {NSURLErrorNotConnectedToInternet, "No network leads to ", ": check the connection to the network."};
      }
      return {NSURLErrorCannotConnectToHost, "", " takes no connection: check that its service runs, and the port."};
    case TransferFailure::tooLate:
      return {NSURLErrorTimedOut, "", " took too long: try again later."};
    case TransferFailure::connectionLost:
      return {NSURLErrorNetworkConnectionLost, "The connection to ",
              " was lost before the answer was whole: try again."};
    case TransferFailure::tooManyRedirections:
      return {NSURLErrorHTTPTooManyRedirects, "", " leads from one address to another without end: check the address."};
    case TransferFailure::unsupportedProtocol:
      // The same code for an answer that is older than HTTP/1.0, which any bytes are.
      if (!end.destination.isHTTP()) return kUnsupported;
      [[fallthrough]];
    case TransferFailure::badResponse:
      return {NSURLErrorBadServerResponse, "", " does not answer as HTTP has it: check the address and the port."};
    case TransferFailure::badAddress:
      return {NSURLErrorBadURL, "", " leads to an address that makes no sense: check the address."};
    case TransferFailure::untrustedServer:
      return {NSURLErrorServerCertificateUntrusted, "",
              " cannot be trusted: check its name, this system's clock and its certificates."};
    case TransferFailure::noCertificates:
      return {NSURLErrorSecureConnectionFailed, "No secure connection to ",
              " can be made, for this system has no certificates to judge it by: install the package ca-certificates."};
    case TransferFailure::noSecureConnection:
      return {NSURLErrorSecureConnectionFailed, "No secure connection to ",
              " came about: check that the port is one of https."};
    default:
      return {NSURLErrorUnknown, "The request to ", " failed: try again."};
  }
}

/// 30 as "30", 0.25 as "0.25".
std::string numberText(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", number);
  return text;
}

std::string sizeText(std::uint64_t bytes) {
  constexpr std::uint64_t kMebibyte = 1ULL << 20;
  return bytes % kMebibyte == 0 ? std::to_string(bytes / kMebibyte) + " MiB" : std::to_string(bytes) + " bytes";
}

/// Whether a text is a token of RFC 9110, which methods and names of header fields are.
bool isToken(std::string_view text) {
  constexpr std::string_view kMarks = "!#$%&'*+-.^_`|~";
  return !text.empty() && std::ranges::all_of(text, [&](char c) {
    return text::isAlphanumeric(c) || kMarks.find(c) != std::string_view::npos;
  });
}

bool beginsAsHTTP(std::string_view address) {
  return text::isSameInAnyCase(address.substr(0, 7), "http://") ||
         text::isSameInAnyCase(address.substr(0, 8), "https://");
}

}  // namespace

bool Destination::isHTTP() const { return scheme == "http" || scheme == "https"; }

NSError transferFault(const TransferEnd& end) {
  const std::string host =
      end.destination.host.empty() ? "the host" : ZRPrintableText(end.destination.host, ZRLongestExcerpt);
  if (end.failure == TransferFailure::silence) {
    return fault(NSURLErrorTimedOut, host + " sent nothing for " + numberText(end.silenceSeconds) +
                                         " seconds: try again later, or give the request more time.");
  }
  if (end.failure == TransferFailure::tooLong) {
    return fault(NSURLErrorTimedOut, host + " was not done after " + numberText(end.longestRequestSeconds) +
                                         " seconds: try again later, or raise the platform's limit.");
  }
  if (end.failure == TransferFailure::headers) {
    return fault(NSURLErrorDataLengthExceedsMaximum,
                 host + " sent more header fields than are taken, 100 kB each and 300 kB in all: tell its operator.");
  }
  if (end.failure == TransferFailure::plainRedirection) {
    return fault(NSURLErrorSecureConnectionFailed,
                 host + " leads from https to http, where anybody can read along: tell its operator.");
  }
  if (end.failure == TransferFailure::memory) {
    return fault(NSURLErrorUnknown, "There is no memory for what " + host + " sent: close something, or ask for less.");
  }
  if (end.failure == TransferFailure::length) {
    return fault(NSURLErrorDataLengthExceedsMaximum,
                 host + " sent more than " + sizeText(end.longestBodyBytes) +
                     ", the most that is taken: ask for less, or raise the platform's limit.");
  }
  if (end.failure == TransferFailure::damage) {
    return fault(NSURLErrorCannotDecodeContentData,
                 host + " sent a body that cannot be unpacked, or not to its end: try again, or tell its operator.");
  }
  if (end.systemError == EMFILE) {
    return fault(NSURLErrorCannotConnectToHost, "There is no connection to " + host +
                                                    ", for this process can open no more files: let it close some, or "
                                                    "raise its limit (ulimit -n).");
  }
  if (end.failure == TransferFailure::noCertificates && !end.certificatesFile.empty()) {
    return fault(NSURLErrorSecureConnectionFailed, "No secure connection to " + host + " can be made, for " +
                                                       ZRPrintableText(end.certificatesFile, ZRLongestExcerpt) +
                                                       " has no certificates to judge it by: check that file.");
  }
  const Verdict verdict = verdictOf(end);
  std::string text = verdict.before + host + verdict.after;
  if (!end.detail.empty()) text += " (" + ZRPrintableText(end.detail, ZRLongestExcerpt) + ")";
  return fault(verdict.code, std::move(text));
}

std::optional<NSError> requestFault(const NSMutableURLRequest& request, const Destination& destination) {
  if (!request.URL) return fault(NSURLErrorBadURL, "The request has no address: give it one.");
  if (!destination.isHTTP()) {
    if (beginsAsHTTP(request.URL->absoluteString())) {
      return fault(NSURLErrorBadURL, "The request's address makes no sense: check its host and port.");
    }
    return fault(NSURLErrorUnsupportedURL, "The request's address is none of http or https: check how it begins.");
  }
  if (!isToken(request.HTTPMethod)) {
    return fault(NSURLErrorBadURL, "The request's method is not one of HTTP: use letters, as in GET.");
  }
  for (const auto& [name, value] : request.HTTPHeaders) {
    if (!isToken(name) || value.find_first_of(std::string_view("\r\n\0", 3)) != std::string::npos) {
      return fault(NSURLErrorBadURL, "A header field of the request to " +
                                         ZRPrintableText(destination.host, ZRLongestExcerpt) +
                                         " cannot be sent: remove line breaks and odd characters from it.");
    }
  }
  return std::nullopt;
}

NSError cancellationFault() { return fault(NSURLErrorCancelled, "The request was cancelled."); }

}  // namespace policy
