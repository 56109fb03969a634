// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRJSONService.h>

#include <utility>

ZRJSONDocuments::~ZRJSONDocuments() = default;

std::variant<std::unique_ptr<const ZROHMDocument>, NSError> ZRDocumentFromJSON(const ZRJSONService& service,
                                                                               std::string_view bytes,
                                                                               ZRJSONFragments fragments) {
  if (const auto* const documents = dynamic_cast<const ZRJSONDocuments*>(&service)) {
    return documents->documentFromJSON(bytes, fragments);
  }
  auto read = service.valueFromJSON(bytes, fragments);
  if (NSError* const error = std::get_if<NSError>(&read)) return std::move(*error);
  return ZROHMDocumentOfValue(std::get<ZROHMValue>(std::move(read)));
}
