// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a map can show.
#ifndef ZRCORE_ZRANNOTATION_H
#define ZRCORE_ZRANNOTATION_H

#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRGeometry.h>

#include <optional>
#include <string>

/// Anything that has a place on a map. What an annotation may but need not offer beside its values are interfaces of
/// their own: ask for them with `dynamic_cast`.
class ZR_EXPORT ZRAnnotation {
 public:
  virtual ~ZRAnnotation();

  /// Where it is shown, degrees; an invalid coordinate when it has no place.
  virtual CLLocationCoordinate2D coordinate() const = 0;
  /// Here: nothing.
  virtual std::optional<std::string> title() const;
  /// Here: nothing.
  virtual std::optional<std::string> subtitle() const;
};

/// Deriving from this is how an annotation answers that it can be moved.
class ZR_EXPORT ZRMovableAnnotation {
 public:
  virtual ~ZRMovableAnnotation();
  virtual void setCoordinate(CLLocationCoordinate2D coordinate) = 0;
};

/// Deriving from this is how an annotation says whether it may be a navigation's destination.
class ZR_EXPORT ZRNavigableAnnotation {
 public:
  virtual ~ZRNavigableAnnotation();
  virtual bool isNavigable() const = 0;
};

/// Deriving from this is how an annotation names the kind of view that shows it, so that views can be used again.
class ZR_EXPORT ZRReusableAnnotation {
 public:
  virtual ~ZRReusableAnnotation();
  virtual std::optional<std::string> viewReuseIdentifier() const = 0;
  virtual void setViewReuseIdentifier(std::optional<std::string> identifier) = 0;
};

#endif
