// SPDX-License-Identifier: Apache-2.0
// Any bytes as a sequence of registry calls: the tables are those that a plain retelling of the rules arrives at.
#include <cstdint>

#include "FuzzLaws.h"
#include "RegistryCalls.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string difference = RegistryCalls::run({data, size});
  require(difference.empty(), difference.c_str());
  return 0;
}
