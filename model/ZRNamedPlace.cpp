// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSCoder.h>
#include <ZRCore/ZROHMClassInfo.h>
#include <ZRCore/ZRPlace.h>

#include <utility>

ZROHMClassInfo& ZRNamedPlace::staticClassInfo() {
  static ZROHMClassInfo& info = *ZROHMClassBuilder<ZRNamedPlace>("ZRNamedPlace", ZRPlace::staticClassInfo())
                                     .property("name", &ZRNamedPlace::name, &ZRNamedPlace::setName)
                                     .build()
                                     .release();
  return info;
}
ZROHMClassInfo& ZRNamedPlace::classInfo() const { return staticClassInfo(); }

std::shared_ptr<ZRNamedPlace> ZRNamedPlace::init() { return initWithGeoAddress(nullptr); }

std::shared_ptr<ZRNamedPlace> ZRNamedPlace::initWithGeoAddress(std::shared_ptr<ZRGeoAddress> address) {
  return std::shared_ptr<ZRNamedPlace>(new ZRNamedPlace(std::move(address)));
}

std::shared_ptr<ZRNamedPlace> ZRNamedPlace::initWithGeoAddressDict(const ZROHMDictionary& dictionary) {
  return initWithGeoAddress(ZRGeoAddress::geoAddressFromDictionary(dictionary));
}

std::shared_ptr<ZRNamedPlace> ZRNamedPlace::initWithCoder(const NSCoder& coder) {
  return std::shared_ptr<ZRNamedPlace>(new ZRNamedPlace(coder));
}

std::shared_ptr<ZRNamedPlace> ZRNamedPlace::placeFromGeoAddress(std::shared_ptr<ZRGeoAddress> address) {
  return initWithGeoAddress(std::move(address));
}

std::shared_ptr<ZRNamedPlace> ZRNamedPlace::placeFromGeoAddressDict(const ZROHMDictionary& dictionary) {
  return initWithGeoAddressDict(dictionary);
}

ZRNamedPlace::ZRNamedPlace(std::shared_ptr<ZRGeoAddress> address) : ZRPlace(std::move(address)) {}
ZRNamedPlace::ZRNamedPlace(const NSCoder& coder) : ZRPlace(coder), name_(coder.decodeStringForKey("name")) {}
ZRNamedPlace::~ZRNamedPlace() = default;

void ZRNamedPlace::setName(std::optional<std::string> name) { name_ = std::move(name); }

std::optional<std::string> ZRNamedPlace::title() const { return hasName() ? name_ : ZRPlace::title(); }

std::optional<std::string> ZRNamedPlace::subtitle() const {
  return hasName() && geoAddress() ? geoAddress()->singleLineString() : ZRPlace::subtitle();
}

ZROHMDictionary ZRNamedPlace::toDictionaryUsingTambrelParams(bool usesTambrelParams) const {
  ZROHMDictionary dictionary = ZRPlace::toDictionaryUsingTambrelParams(usesTambrelParams);
  if (hasName()) dictionary.set("name", *name_);
  return dictionary;
}

std::shared_ptr<ZRPlace> ZRNamedPlace::copyObject() const {
  auto made = init();
  copyInto(*made);
  made->setName(name_);
  return made;
}

void ZRNamedPlace::encodeWithCoder(NSCoder& coder) const {
  ZRPlace::encodeWithCoder(coder);
  coder.encodeStringForKey(name_, "name");
}
