// SPDX-License-Identifier: Apache-2.0
/// @file
/// JSON documents, to values and back.
#ifndef ZRCORE_ZRJSONSERVICE_H
#define ZRCORE_ZRJSONSERVICE_H

#include <ZRCore/NSError.h>
#include <ZRCore/ZRExport.h>
#include <ZRCore/ZROHMDocument.h>
#include <ZRCore/ZROHMValue.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

inline constexpr const char* NSCocoaErrorDomain = "NSCocoaErrorDomain";
inline constexpr long NSJSONFailureCode = 3840;
inline constexpr const char* NSJSONSerializationErrorIndex = "NSJSONSerializationErrorIndex";
/// How deeply a document that is read may be nested: deeper than any service nests, and a bound on the memory it takes.
inline constexpr std::size_t ZRJSONDeepestNesting = 10000;

/// Whether a document may consist of a bare text, number, boolean or null.
enum class ZRJSONFragments { refused, allowed };

/// How a document is laid out.
enum class ZRJSONLayout {
  compact,  ///< on one line, without blanks
  pretty    ///< one value to a line, indented by two blanks a level down to the hundredth level
};

/// JSON documents (RFC 8259). Any thread. Failures are of domain `NSCocoaErrorDomain`, code `NSJSONFailureCode`.
class ZR_EXPORT ZRJSONService {
 public:
  virtual ~ZRJSONService();

  /// Reads a document in UTF-8, with or without a byte order mark, at most `ZRJSONDeepestNesting` levels deep. Objects
  /// keep the order of their entries; of entries with the same text the last value stands at the first one's place.
  /// Integers are signed where they fit into 64 bits with a sign, unsigned where they fit without, else doubles.
  /// @return the value, or what is wrong with the document: among other things no bytes, blanks only, text after the
  ///         document, a number beyond the range of doubles, half a surrogate pair. The error's user info has the byte
  ///         position, from 0, under `NSJSONSerializationErrorIndex` where there is one.
  virtual std::variant<ZROHMValue, NSError> valueFromJSON(std::string_view bytes, ZRJSONFragments fragments) const = 0;

  /// Writes a value as UTF-8, in the order of its dictionaries. Doubles take the shortest text that reads back as the
  /// same double, and never look like integers.
  /// @return the document, or an error that names the place (as a key path: "places[3].position") of what JSON cannot
  ///         say: NaN, an infinity, a coordinate, an object reference, a text that is not UTF-8.
  virtual std::variant<std::string, NSError> JSONFromValue(const ZROHMValue& value, ZRJSONLayout layout) const = 0;
};

/// A JSON service that can read a document without making values of it says so by deriving from this, too. Any thread.
class ZR_EXPORT ZRJSONDocuments {
 public:
  virtual ~ZRJSONDocuments();

  /// Reads a document by the rules of `ZRJSONService::valueFromJSON`. It needs neither the bytes nor the service then.
  /// @return never null
  virtual std::variant<std::unique_ptr<const ZROHMDocument>, NSError> documentFromJSON(
      std::string_view bytes, ZRJSONFragments fragments) const = 0;
};

/// A document by `service`: as it stands where the service can, else by way of a value.
ZR_EXPORT std::variant<std::unique_ptr<const ZROHMDocument>, NSError> ZRDocumentFromJSON(const ZRJSONService& service,
                                                                                         std::string_view bytes,
                                                                                         ZRJSONFragments fragments);

#endif
