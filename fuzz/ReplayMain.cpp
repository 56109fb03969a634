// SPDX-License-Identifier: Apache-2.0
// Stands in for libFuzzer where the compiler has none: runs a fuzz target once on each file of the given folders.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argumentCount, char** arguments) {
  int files = 0;
  for (int i = 1; i < argumentCount; ++i) {
    for (const auto& entry : std::filesystem::directory_iterator(arguments[i])) {
      std::ifstream file(entry.path(), std::ios::binary);
      const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++files;
    }
  }
  std::printf("%d files\n", files);
  return files > 0 ? 0 : 1;
}
