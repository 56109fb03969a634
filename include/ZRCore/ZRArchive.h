// SPDX-License-Identifier: Apache-2.0
/// @file
/// Archives as documents: an object with everything in it as text, and back.
#ifndef ZRCORE_ZRARCHIVE_H
#define ZRCORE_ZRARCHIVE_H

#include <ZRCore/NSCoder.h>
#include <ZRCore/NSError.h>
#include <ZRCore/NSObject.h>
#include <ZRCore/ZRExport.h>

#include <memory>
#include <string>
#include <string_view>
#include <variant>

class ZRJSONService;

/// Writes and reads documents of the form
/// @code
/// {"format":"ZRArchive","version":1,"root":{"class":"ZRGeoAddress","coordinate_lat":52.5, ... }}
/// @endcode
/// in which every object carries the name of its class. Failures are of domain `NSCocoaErrorDomain`; nothing throws but
/// what the objects throw themselves. Any thread, if the JSON service is.
class ZR_EXPORT ZRArchive {
 public:
  /// @param json     writes and reads the documents.
  /// @param classes  the types that may be read; no others ever are, whatever a document names.
  ZRArchive(std::shared_ptr<const ZRJSONService> json, ZRArchivableClasses classes);
  ~ZRArchive();

  /// @return the document; or an error of code `NSCoderInvalidValueError` when `root` is null or not archivable, or the
  ///         JSON service's.
  std::variant<std::string, NSError> archivedDataWithRootObject(const std::shared_ptr<const NSObject>& root) const;

  /// Reads a document. Entries that the objects do not ask for are skipped, those that they miss read as 0 or absent.
  /// @return the object, never null; or an error of code `NSCoderReadCorruptError` when this is not an archive, a newer
  ///         version's, or its root is of no class that may be read; or the JSON service's.
  std::variant<std::shared_ptr<NSObject>, NSError> unarchivedObjectFromData(std::string_view bytes) const;

 private:
  std::shared_ptr<const ZRJSONService> json_;
  ZRArchivableClasses classes_;
};

inline constexpr long NSCoderReadCorruptError = 4864;
inline constexpr long NSCoderInvalidValueError = 4866;

#endif
