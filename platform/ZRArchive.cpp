// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRArchive.h>
#include <ZRCore/ZRJSONService.h>

#include <utility>

namespace {

constexpr const char* kFormatKey = "format";
constexpr const char* kFormat = "ZRArchive";
constexpr const char* kVersionKey = "version";
constexpr int kVersion = 1;
constexpr const char* kRootKey = "root";

NSError failure(long code, std::string sentence) {
  return {NSCocoaErrorDomain, code, {{NSLocalizedDescriptionKey, std::move(sentence)}}};
}

NSError corrupt(std::string sentence) { return failure(NSCoderReadCorruptError, std::move(sentence)); }

/// Why the document's head is not one of ours; nothing when it is.
std::optional<NSError> faultInHead(const ZRMemoryCoder& document) {
  if (document.decodeStringForKey(kFormatKey) != kFormat) {
    return corrupt("This is no archive: its \"format\" is not \"ZRArchive\".");
  }
  const std::int64_t version = document.decodeInt64ForKey(kVersionKey);
  if (version > kVersion) {
    return corrupt("The archive has version " + std::to_string(version) + "; this library reads up to version " +
                   std::to_string(kVersion) + ". Read it with a newer one.");
  }
  if (version < 1) return corrupt("This is no archive: its \"version\" is no positive number.");
  return std::nullopt;
}

}  // namespace

ZRArchive::ZRArchive(std::shared_ptr<const ZRJSONService> json, ZRArchivableClasses classes)
    : json_(std::move(json)), classes_(std::move(classes)) {}
ZRArchive::~ZRArchive() = default;

std::variant<std::string, NSError> ZRArchive::archivedDataWithRootObject(
    const std::shared_ptr<const NSObject>& root) const {
  ZRMemoryCoder document(classes_);
  document.encodeStringForKey(kFormat, kFormatKey);
  document.encodeInt32ForKey(kVersion, kVersionKey);
  document.encodeObjectForKey(root, kRootKey);
  if (document.values().find(kRootKey)->isNull()) {
    return failure(NSCoderInvalidValueError,
                   root ? root->description() + " cannot be archived: its type has no NSCoding."
                        : "There is no object to archive.");
  }
  return json_->JSONFromValue(document.values(), ZRJSONLayout::compact);
}

std::variant<std::shared_ptr<NSObject>, NSError> ZRArchive::unarchivedObjectFromData(std::string_view bytes) const {
  const auto read = json_->valueFromJSON(bytes, ZRJSONFragments::refused);
  if (const NSError* const error = std::get_if<NSError>(&read)) return *error;
  const ZROHMDictionary* const content = std::get<ZROHMValue>(read).dictionary();
  if (content == nullptr) return corrupt("This is no archive: it is a list.");

  const ZRMemoryCoder document(*content, classes_);
  if (std::optional<NSError> fault = faultInHead(document)) return *std::move(fault);
  if (std::shared_ptr<NSObject> root = document.decodeObjectForKey(kRootKey)) return root;
  return corrupt("The archive's root object is missing, or of a class that may not be read here.");
}
