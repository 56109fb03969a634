// SPDX-License-Identifier: Apache-2.0
// Any bytes as an archive: what is read once is written and read the same for ever after.
#include <ZRCore/ZRArchive.h>
#include <ZRCore/ZRJSON.h>
#include <ZRCore/ZRLocation.h>
#include <ZRCore/ZRPlace.h>

#include <cstdint>

#include "FuzzLaws.h"
#include "MappingModel.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ZRArchive archive(ZRMakeJSONService(),
                          {&Item::staticClassInfo(), &ZRLocation::staticClassInfo(), &ZRGeoAddress::staticClassInfo(),
                           &ZRPlace::staticClassInfo(), &ZRNamedPlace::staticClassInfo()});
  const auto read = archive.unarchivedObjectFromData({reinterpret_cast<const char*>(data), size});
  if (std::holds_alternative<NSError>(read)) return 0;
  const auto written = archive.archivedDataWithRootObject(std::get<std::shared_ptr<NSObject>>(read));
  require(std::holds_alternative<std::string>(written), "what was read can be archived");
  const auto again = archive.unarchivedObjectFromData(std::get<std::string>(written));
  require(std::holds_alternative<std::shared_ptr<NSObject>>(again), "what was archived can be read");
  require(archive.archivedDataWithRootObject(std::get<std::shared_ptr<NSObject>>(again)) == written,
          "it is the same archive");
  return 0;
}
