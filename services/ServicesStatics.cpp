// SPDX-License-Identifier: Apache-2.0
#include "ServicesStatics.h"

ServicesStatics& servicesStatics() {
  static auto* const instance = new ServicesStatics;
  return *instance;
}
