#include <ZRCore/ZRGeometry.h>

const double EarthRadius = 6378137.0;
