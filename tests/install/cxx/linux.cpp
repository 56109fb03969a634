// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRLinuxPlatform.h>

int main() {
  // The packaged file is found from where the library is.
  return makeLinuxPlatform().bundle->frameworkResource("tile_config", "json").value_or("").empty() ? 1 : 0;
}
