// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRCoreLoad.h>
#include <ZRCore/ZRLocation.h>
#include <ZRCore/ZRPlace.h>

void ZRCoreLoad() {
  // Each descriptor is made, and its type registered, by the first call of its accessor.
  static_cast<void>(ZRLocation::staticClassInfo());
  static_cast<void>(ZRGeoAddress::staticClassInfo());
  static_cast<void>(ZRNamedPlace::staticClassInfo());  // and that of ZRPlace, its supertype
}
