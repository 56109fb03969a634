// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRCore.h>
#include <ZRCore/ZRPlatformFake.h>
#ifdef WITH_Linux
#include <ZRCore/ZRLinuxPlatform.h>
#endif
#ifdef WITH_Gtk
#include <ZRCore/ZRGtkPlatform.h>
#endif

#include <cstdio>

namespace {

bool isRight(const char* what, bool isSo) {
  if (!isSo) std::fprintf(stderr, "wrong: %s\n", what);
  return isSo;
}

}  // namespace

int main() {
  ZRPlatform platform = ZRFakePlatform().platform();
  bool isAllRight = true;
#ifdef WITH_Linux
  const auto packaged = makeLinuxPlatform().bundle->frameworkResource("tile_config", "json");
  isAllRight &= isRight("the packaged file is found from where the library is", packaged && !packaged->empty());
#endif
#ifdef WITH_Gtk
  isAllRight &= isRight("there is no display", !ZRFillGtkPlatform(platform));
#endif
  isAllRight &= isRight("the doubles can be installed", ZRPlatformInstall(platform));
  const auto manager = ZRLocationManager::init();
  const auto smoothed = manager->smoothLocationsWithLocations({CLLocation::initWithLatitudeLongitude(52.5, 13.4)});
  isAllRight &= isRight("a fix comes through", smoothed.at(0)->coordinate().latitude == 52.5);
  isAllRight &= isRight("there is one manager", ZRLocationManager::instanceCount() == 1);
  return isAllRight ? 0 : 1;
}
