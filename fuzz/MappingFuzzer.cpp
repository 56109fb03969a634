// SPDX-License-Identifier: Apache-2.0
// Any bytes as types, tables and a document: the engine's plan does what the plain engine does.
#include <cstdint>

#include "FuzzLaws.h"
#include "MappingFromJSON.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string difference = differenceInMapping({data, size}, {fillFromJSON});
  require(difference.empty(), difference.c_str());
  return 0;
}
