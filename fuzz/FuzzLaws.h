// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_FUZZ_FUZZLAWS_H
#define ZRCORE_FUZZ_FUZZLAWS_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string_view>

#if defined(__has_feature)  // clang, whose sanitizer comes with the header; GCC's does not
#if __has_feature(address_sanitizer)
#define ZR_COUNTS_MEMORY
#include <sanitizer/allocator_interface.h>
#endif
#endif

/// Stops the fuzzer where a law is broken.
inline void require(bool holds, const char* law) {
  if (holds) return;
  std::fprintf(stderr, "broken: %s\n", law);
  std::abort();
}

/// A place within the input that its bytes choose.
inline std::size_t splitOf(std::string_view input) {
  std::size_t hash = 5381;
  for (const char c : input) hash = hash * 33 + static_cast<unsigned char>(c);
  return input.empty() ? 0 : hash % input.size();
}

/// What is held at once, as the address sanitizer tells it.
struct HeldMemory {
  static inline std::int64_t now = 0, peak = 0;

  static void count() {
#ifdef ZR_COUNTS_MEMORY
    static const int once = __sanitizer_install_malloc_and_free_hooks(
        [](const volatile void*, std::size_t size) { peak = std::max(peak, now += static_cast<std::int64_t>(size)); },
        [](const volatile void* place) {
          now -= static_cast<std::int64_t>(__sanitizer_get_allocated_size(const_cast<const void*>(place)));
        });
    static_cast<void>(once);
#endif
    now = peak = 0;
  }
};

/// Runs `work` on a document of `bytes`: processor time and memory are at most in proportion to it. The bounds are wide
/// enough for sanitizers and busy machines; what grows with the square of a few hundred kilobytes passes them.
template <class Work>
void requireLinear(std::size_t bytes, Work work) {
  const auto seconds = [] {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
  };
  HeldMemory::count();
  const double begin = seconds();
  work();
  require(seconds() - begin <= 0.5 + 20e-6 * static_cast<double>(bytes), "time grows with the length at most");
  require(HeldMemory::peak <= (std::int64_t{4} << 20) + 400 * static_cast<std::int64_t>(bytes),
          "memory grows with the length at most");
}

#endif
