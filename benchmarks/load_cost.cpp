// SPDX-License-Identifier: Apache-2.0
// What it costs a process to load libZRCore: the time of dlopen, and the memory that is the process's own afterwards.
// load_cost LIBRARY
#include <dlfcn.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

namespace {

/// The kilobytes of private dirty pages of all mappings of files whose path holds `name`.
long privateDirtyKilobytes(const std::string& name) {
  std::ifstream maps("/proc/self/smaps");
  long sum = 0;
  bool ours = false;
  for (std::string line; std::getline(maps, line);) {
    std::istringstream words(line);
    std::string first;
    words >> first;
    if (first.find('-') != std::string::npos && first.find(':') == std::string::npos) {
      ours = line.find(name) != std::string::npos;
    } else if (ours && first == "Private_Dirty:") {
      long kilobytes = 0;
      words >> kilobytes;
      sum += kilobytes;
    }
  }
  return sum;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const auto begin = std::chrono::steady_clock::now();
  void* const library = dlopen(argv[1], RTLD_NOW);
  const std::chrono::duration<double, std::micro> taken = std::chrono::steady_clock::now() - begin;
  if (library == nullptr) {
    std::fprintf(stderr, "load_cost: %s\n", dlerror());
    return 1;
  }
  std::printf("dlopen %.0f us, private dirty pages %ld kB\n", taken.count(), privateDirtyKilobytes("libZRCore"));
}
