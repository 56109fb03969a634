// SPDX-License-Identifier: Apache-2.0
/// @file
/// What libcurl says, in the words of `policy/http/`.
#ifndef ZRCORE_LINUX_HTTP_CURLWORDS_H
#define ZRCORE_LINUX_HTTP_CURLWORDS_H

#include <curl/curl.h>
#include <policy/http/TransferFault.h>

#include <string>

/// Reads an address as libcurl does, in small letters, but that a scheme must be given. Names and passwords in it are
/// left out.
policy::Destination destinationOf(const std::string& address);

/// Why a transfer ended that libcurl has ended with another code than CURLE_OK.
policy::TransferFailure failureOf(CURLcode code);

#endif
