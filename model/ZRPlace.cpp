// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSCoder.h>
#include <ZRCore/ZROHMClassInfo.h>
#include <ZRCore/ZROHMRegistry.h>
#include <ZRCore/ZRPlace.h>

#include <utility>

#include "UnsetCoordinate.h"

namespace {

ZROHMClassInfo& registered() {
  ZROHMClassInfo& info = *ZROHMClassBuilder<ZRPlace>("ZRPlace", NSObject::staticClassInfo())
                              .property("zrid", &ZRPlace::zrid, &ZRPlace::setZrid)
                              .property("geoAddress", &ZRPlace::geoAddress, &ZRPlace::setGeoAddress)
                              .property("title", &ZRPlace::title, &ZRPlace::setTitle)
                              .property("subtitle", &ZRPlace::subtitle, &ZRPlace::setSubtitle)
                              .property("coordinate", &ZRPlace::coordinate, &ZRPlace::setCoordinate)
                              .property("isNavigable", &ZRPlace::isNavigable, &ZRPlace::setIsNavigable)
                              .build()
                              .release();
  ZROHMMappable(info);
  ZROHMSetMapping(info, ZROHMTable{{"GeoAddress", "geoAddress"}, {"zrID", "zrid"}});
  return info;
}

bool areSame(CLLocationCoordinate2D a, CLLocationCoordinate2D b) {
  return a.latitude == b.latitude && a.longitude == b.longitude;
}

/// Whether both addresses have the coordinate that `read` reads, valid and exactly the same.
bool haveSame(CLLocationCoordinate2D (ZRGeoAddress::*read)() const, const ZRGeoAddress* a, const ZRGeoAddress* b) {
  if (a == nullptr || b == nullptr) return false;
  const CLLocationCoordinate2D ours = (a->*read)();
  return ZRPlace::coordinateIsValid(ours) && areSame(ours, (b->*read)());
}

/// The degrees without their fraction, in two's complement.
std::uint64_t wholeDegrees(double degrees) {
  constexpr double kLimit = 9223372036854775808.0;  // 2^63
  return degrees >= -kLimit && degrees < kLimit ? static_cast<std::uint64_t>(static_cast<std::int64_t>(degrees)) : 0;
}

}  // namespace

ZROHMClassInfo& ZRPlace::staticClassInfo() {
  static ZROHMClassInfo& info = registered();
  return info;
}
ZROHMClassInfo& ZRPlace::classInfo() const { return staticClassInfo(); }

void ZRPlace::load() { static_cast<void>(staticClassInfo()); }

std::shared_ptr<ZRPlace> ZRPlace::init() { return initWithGeoAddress(nullptr); }

std::shared_ptr<ZRPlace> ZRPlace::initWithGeoAddress(std::shared_ptr<ZRGeoAddress> address) {
  return std::shared_ptr<ZRPlace>(new ZRPlace(std::move(address)));
}

std::shared_ptr<ZRPlace> ZRPlace::initWithGeoAddressDict(const ZROHMDictionary& dictionary) {
  return initWithGeoAddress(ZRGeoAddress::geoAddressFromDictionary(dictionary));
}

std::shared_ptr<ZRPlace> ZRPlace::initWithCoder(const NSCoder& coder) {
  return std::shared_ptr<ZRPlace>(new ZRPlace(coder));
}

std::shared_ptr<ZRPlace> ZRPlace::placeFromGeoAddress(std::shared_ptr<ZRGeoAddress> address) {
  return initWithGeoAddress(std::move(address));
}

std::shared_ptr<ZRPlace> ZRPlace::placeFromGeoAddressDict(const ZROHMDictionary& dictionary) {
  return initWithGeoAddressDict(dictionary);
}

bool ZRPlace::coordinateIsValid(CLLocationCoordinate2D coordinate) {
  return CLLocationCoordinate2DIsValid(coordinate) && coordinate.latitude != 0.0 && coordinate.longitude != 0.0;
}

ZRPlace::ZRPlace(std::shared_ptr<ZRGeoAddress> address) : geoAddress_(std::move(address)) {}

ZRPlace::ZRPlace(const NSCoder& coder)
    : geoAddress_(std::dynamic_pointer_cast<ZRGeoAddress>(coder.decodeObjectForKey("geoAddress"))),
      title_(coder.decodeStringForKey("title")),
      subtitle_(coder.decodeStringForKey("subtitle")) {}

ZRPlace::~ZRPlace() = default;

const std::optional<std::string>& ZRPlace::zrid() const {
  return geoAddress_ && geoAddress_->zrid() ? geoAddress_->zrid() : zrid_;
}

void ZRPlace::setZrid(std::optional<std::string> zrid) {
  if (zrid_ && zrid_ == zrid) return;
  zrid_ = std::move(zrid);
  if (geoAddress_) geoAddress_->setZrid(zrid_);
}

void ZRPlace::setGeoAddress(const std::shared_ptr<ZRGeoAddress>& address) {
  geoAddress_ = address ? address->copy() : nullptr;
}

std::optional<std::string> ZRPlace::title() const { return geoAddress_ ? geoAddress_->primaryString() : title_; }
void ZRPlace::setTitle(std::optional<std::string> title) { title_ = std::move(title); }

std::optional<std::string> ZRPlace::subtitle() const {
  return geoAddress_ ? geoAddress_->secondaryString() : subtitle_;
}
void ZRPlace::setSubtitle(std::optional<std::string> subtitle) { subtitle_ = std::move(subtitle); }

CLLocationCoordinate2D ZRPlace::coordinate() const {
  if (geoAddress_) {
    if (!isUnset(geoAddress_->displayCoordinate())) return geoAddress_->displayCoordinate();
    if (!isUnset(geoAddress_->coordinate())) return geoAddress_->coordinate();
  }
  return kCLLocationCoordinate2DInvalid;
}

void ZRPlace::setCoordinate(CLLocationCoordinate2D coordinate) {
  if (!geoAddress_) geoAddress_ = ZRGeoAddress::init();
  geoAddress_->setDisplayCoordinate(coordinate);
  if (isUnset(geoAddress_->coordinate())) geoAddress_->setCoordinate(coordinate);
}

bool ZRPlace::isNavigable() const { return isNavigable_; }

bool ZRPlace::isEqualToPlace(const NSObject* other) const {
  const auto* const place = dynamic_cast<const ZRPlace*>(other);
  if (place == nullptr) return false;
  if (zrid() && place->zrid() && *zrid() == *place->zrid()) return true;
  const ZRGeoAddress* const ours = geoAddress_.get();
  const ZRGeoAddress* const theirs = place->geoAddress_.get();
  return haveSame(&ZRGeoAddress::coordinate, ours, theirs) || haveSame(&ZRGeoAddress::displayCoordinate, ours, theirs);
}

std::uint64_t ZRPlace::hashCoordinates() const {
  const CLLocationCoordinate2D place = coordinate();
  return wholeDegrees(place.latitude) ^ wholeDegrees(place.longitude);
}

std::string ZRPlace::description() const {
  const bool isIdentified = geoAddress_ && geoAddress_->zrid();
  const std::string prefix = isIdentified ? "[" + *geoAddress_->zrid() + "] " : "";
  return prefix + title().value_or("(null)") + " " + subtitle().value_or("(null)");
}

ZROHMDictionary ZRPlace::toDictionaryUsingTambrelParams(bool usesTambrelParams) const {
  if (!geoAddress_) return {};
  return {{"address", geoAddress_->toDictionaryUsingTambrelParams(usesTambrelParams)}};
}

std::shared_ptr<ZRPlace> ZRPlace::copyObject() const {
  auto made = init();
  copyInto(*made);
  return made;
}

void ZRPlace::copyInto(ZRPlace& made) const {
  made.setTitle(title_);
  made.setSubtitle(subtitle_);
  made.setGeoAddress(geoAddress_);
}

void ZRPlace::encodeWithCoder(NSCoder& coder) const {
  coder.encodeObjectForKey(geoAddress_, "geoAddress");
  coder.encodeStringForKey(title_, "title");
  coder.encodeStringForKey(subtitle_, "subtitle");
}
