#include <ZRCore/ZRCoreLoad.h>
#include <ZRCore/ZRLocation.h>

void ZRCoreLoad() {
  // Each descriptor is made, and its type registered, by the first call of its accessor.
  static_cast<void>(ZRLocation::staticClassInfo());
}
