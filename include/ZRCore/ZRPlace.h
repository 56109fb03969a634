// SPDX-License-Identifier: Apache-2.0
/// @file
/// Places: what a map shows and navigation goes to, around an address.
#ifndef ZRCORE_ZRPLACE_H
#define ZRCORE_ZRPLACE_H

#include <ZRCore/NSCoder.h>
#include <ZRCore/NSObject.h>
#include <ZRCore/ZRAnnotation.h>
#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRGeoAddress.h>
#include <ZRCore/ZROHMValue.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

/// A place around one address, from which it takes its coordinate, its texts and its identifier at every call. Generic
/// equality and hash are the object's own; `isEqualToPlace` compares contents. One thread at a time.
///
/// The type is mappable: "GeoAddress" fills the address and "zrID" the identifier.
///
/// A subclass overrides `classInfo` with a descriptor whose superclass is `ZRPlace::staticClassInfo()`, so that
/// archives and mappings know the type, and `copyObject`, or `copy` makes a plain ZRPlace of it.
class ZR_EXPORT ZRPlace : public NSObject,
                          public NSCoding,
                          public ZRAnnotation,
                          public ZRMovableAnnotation,
                          public ZRNavigableAnnotation {
 public:
  /// A place without an address.
  static std::shared_ptr<ZRPlace> init();
  /// @param address  shared with the caller, whose later changes to it change the place; may be null.
  static std::shared_ptr<ZRPlace> initWithGeoAddress(std::shared_ptr<ZRGeoAddress> address);
  /// @param dictionary  an address as services write it (`ZRGeoAddress::geoAddressFromDictionary`).
  static std::shared_ptr<ZRPlace> initWithGeoAddressDict(const ZROHMDictionary& dictionary);
  /// A place from an archive (`encodeWithCoder`): navigable, and without an identifier of its own.
  static std::shared_ptr<ZRPlace> initWithCoder(const NSCoder& coder);
  /// As `initWithGeoAddress` and `initWithGeoAddressDict`.
  static std::shared_ptr<ZRPlace> placeFromGeoAddress(std::shared_ptr<ZRGeoAddress> address);
  static std::shared_ptr<ZRPlace> placeFromGeoAddressDict(const ZROHMDictionary& dictionary);

  /// Whether the coordinate lies within bounds and neither on the equator nor on the prime meridian: in either field a
  /// zero stands for a missing value.
  static bool coordinateIsValid(CLLocationCoordinate2D coordinate);

  /// Makes the type mappable with its tables, as the first use of its descriptor does too.
  static void load();

  ~ZRPlace() override;

  /// The address's identifier where it has one, else the place's own.
  const std::optional<std::string>& zrid() const;
  /// Stores the place's own identifier, and passes it on to the address. A text that is the place's own already changes
  /// nothing, even where the address has another; absence, on a place without an identifier of its own, takes the
  /// address's away, so that absence is stored whatever the address had.
  void setZrid(std::optional<std::string> zrid);

  const std::shared_ptr<ZRGeoAddress>& geoAddress() const { return geoAddress_; }
  /// @param address  copied; may be null.
  void setGeoAddress(const std::shared_ptr<ZRGeoAddress>& address);

  /// The address's first line; without an address what was set.
  std::optional<std::string> title() const override;
  void setTitle(std::optional<std::string> title);
  /// The address's second line; without an address what was set.
  std::optional<std::string> subtitle() const override;
  void setSubtitle(std::optional<std::string> subtitle);

  /// The address's display coordinate, or where that is not set its coordinate, or where neither is (or there is no
  /// address) `kCLLocationCoordinate2DInvalid`.
  CLLocationCoordinate2D coordinate() const override;
  /// Sets the address's display coordinate, and its coordinate where that is not set. Makes an address where there is
  /// none.
  void setCoordinate(CLLocationCoordinate2D coordinate) override;

  /// Whether the place may be a navigation's destination; true at first.
  bool isNavigable() const override;
  void setIsNavigable(bool isNavigable) { isNavigable_ = isNavigable; }

  /// Whether `other` is a place with the same identifier, or whose address has exactly the same valid (by
  /// `coordinateIsValid`) coordinate or display coordinate. A place with neither is not equal even to itself.
  bool isEqualToPlace(const NSObject* other) const;
  /// Latitude and longitude without their fractions, each as a 64-bit word, combined by exclusive or: the same for
  /// places within one degree cell. NaN, and what no signed word holds, counts as 0. Not consistent with
  /// `isEqualToPlace`.
  std::uint64_t hashCoordinates() const;

  /// "[identifier] title subtitle": the address's identifier, left out where it has none; "(null)" for an absent text.
  std::string description() const override;

  /// {"address": ...} (`ZRGeoAddress::toDictionaryUsingTambrelParams`); empty without an address.
  virtual ZROHMDictionary toDictionaryUsingTambrelParams(bool usesTambrelParams) const;

  /// A place with the same title and subtitle and a copy of the address. It is navigable, and has no identifier but the
  /// address's, whatever this one has: the copy is a new place.
  std::shared_ptr<ZRPlace> copy() const { return copyObject(); }

  /// Writes the address, the title and the subtitle that were set.
  void encodeWithCoder(NSCoder& coder) const override;

  static ZROHMClassInfo& staticClassInfo();
  ZROHMClassInfo& classInfo() const override;

 protected:
  explicit ZRPlace(std::shared_ptr<ZRGeoAddress> address);
  explicit ZRPlace(const NSCoder& coder);

  /// What `copy` hands out: a subtype makes one of its own type here and calls `copyInto` on it.
  virtual std::shared_ptr<ZRPlace> copyObject() const;
  /// Gives a new place what a copy takes over.
  void copyInto(ZRPlace& made) const;

 private:
  bool isNavigable_ = true;
  std::optional<std::string> zrid_;
  std::shared_ptr<ZRGeoAddress> geoAddress_;
  std::optional<std::string> title_;
  std::optional<std::string> subtitle_;
};

/// A place with a name that takes over the title. Its descriptor has no tables of its own.
class ZR_EXPORT ZRNamedPlace : public ZRPlace {
 public:
  /// @name As for ZRPlace
  /// @{
  static std::shared_ptr<ZRNamedPlace> init();
  static std::shared_ptr<ZRNamedPlace> initWithGeoAddress(std::shared_ptr<ZRGeoAddress> address);
  static std::shared_ptr<ZRNamedPlace> initWithGeoAddressDict(const ZROHMDictionary& dictionary);
  static std::shared_ptr<ZRNamedPlace> initWithCoder(const NSCoder& coder);
  static std::shared_ptr<ZRNamedPlace> placeFromGeoAddress(std::shared_ptr<ZRGeoAddress> address);
  static std::shared_ptr<ZRNamedPlace> placeFromGeoAddressDict(const ZROHMDictionary& dictionary);
  /// @}

  ~ZRNamedPlace() override;

  const std::optional<std::string>& name() const { return name_; }
  void setName(std::optional<std::string> name);

  /// The name; where it is absent or empty, as for ZRPlace.
  std::optional<std::string> title() const override;
  /// The address on a single line where the name is the title and there is an address; else as for ZRPlace.
  std::optional<std::string> subtitle() const override;

  /// As for ZRPlace, and {"name": ...} where the name is not empty.
  ZROHMDictionary toDictionaryUsingTambrelParams(bool usesTambrelParams) const override;

  /// As for ZRPlace, with the name.
  std::shared_ptr<ZRNamedPlace> copy() const { return std::static_pointer_cast<ZRNamedPlace>(copyObject()); }

  /// Writes what ZRPlace does, and the name.
  void encodeWithCoder(NSCoder& coder) const override;

  static ZROHMClassInfo& staticClassInfo();
  ZROHMClassInfo& classInfo() const override;

 protected:
  explicit ZRNamedPlace(std::shared_ptr<ZRGeoAddress> address);
  explicit ZRNamedPlace(const NSCoder& coder);
  std::shared_ptr<ZRPlace> copyObject() const override;

 private:
  bool hasName() const { return name_ && !name_->empty(); }

  std::optional<std::string> name_;
};

#endif
