#include "ServicesStatics.h"

ServicesStatics& servicesStatics() {
  static auto* const instance = new ServicesStatics;
  return *instance;
}
