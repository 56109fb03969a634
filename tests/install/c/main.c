// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.h>

int main(void) {
  const CLLocationCoordinate2D berlin = {52.5, 13.4};
  const ZRMapPoint point = ZRMapPointForCoordinate(berlin);
  const CLLocationCoordinate2D back = ZRCoordinateForMapPoint(point);
  return back.latitude > 52.49 && back.latitude < 52.51 && EarthRadius > 6e6 ? 0 : 1;
}
