// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a document from outside may cost. A body is parsed in one turn of the main queue, and a packed one may hold a
/// thousand times as much as was sent.
#ifndef ZRCORE_ZRDOCUMENTLIMITS_H
#define ZRCORE_ZRDOCUMENTLIMITS_H

#include <cstdint>

/// How long a body may be that is parsed, unless the host says otherwise (`ZRPlatform::longestParsedBodyBytes`).
inline constexpr std::uint64_t ZRLongestParsedBodyBytes = 8ULL << 20;

/// How many values a document may have, unless the host says otherwise: of JSON nulls, booleans, numbers, texts,
/// arrays, objects and the keys in them; of XML elements and attributes.
inline constexpr std::uint64_t ZRMostDocumentValues = 1'000'000;

/// The domain of the error for a document that is well formed so far, and too much.
inline constexpr const char* ZRDocumentErrorDomain = "ZRDocumentErrorDomain";
/// A document has more values than are read.
inline constexpr long ZRDocumentErrorTooManyValues = 1;

#endif
