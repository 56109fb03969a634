// SPDX-License-Identifier: Apache-2.0
#include "SipHash.h"

#include <ZRCore/ZROHMOrderedMap.h>

#include <bit>
#include <chrono>
#include <cstddef>
#include <exception>
#include <random>

namespace {

struct State {
  std::uint64_t v0, v1, v2, v3;

  void round() {
    v0 += v1;
    v1 = std::rotl(v1, 13) ^ v0;
    v0 = std::rotl(v0, 32);
    v2 += v3;
    v3 = std::rotl(v3, 16) ^ v2;
    v0 += v3;
    v3 = std::rotl(v3, 21) ^ v0;
    v2 += v1;
    v1 = std::rotl(v1, 17) ^ v2;
    v2 = std::rotl(v2, 32);
  }

  void take(std::uint64_t word) {
    v3 ^= word;
    round();
    v0 ^= word;
  }
};

/// Up to eight bytes, the first one lowest.
std::uint64_t wordOf(const char* bytes, std::size_t count) {
  std::uint64_t word = 0;
  for (std::size_t i = 0; i < count; ++i) word |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << 8 * i;
  return word;
}

SipHashKey keyOfProcess() {
  try {
    std::random_device chance;
    const auto word = [&chance] { return std::uint64_t{chance()} << 32U | chance(); };
    const std::uint64_t low = word();
    return {low, word()};
  } catch (const std::exception&) {  // a machine without chance still has a clock, and places its programs anywhere
    static const char place = 0;
    const auto now = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    return {now, static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&place))};
  }
}

}  // namespace

std::uint64_t sipHash13(SipHashKey key, std::string_view text) noexcept {
  State state{key.low ^ 0x736f6d6570736575U, key.high ^ 0x646f72616e646f6dU, key.low ^ 0x6c7967656e657261U,
              key.high ^ 0x7465646279746573U};
  const std::uint64_t length = std::uint64_t{text.size()} << 56U;
  const char* bytes = text.data();
  std::size_t left = text.size();
  for (; left >= 8; bytes += 8, left -= 8) state.take(wordOf(bytes, 8));
  state.take(length | wordOf(bytes, left));
  state.v2 ^= 0xFF;
  for (int i = 0; i < 3; ++i) state.round();
  return state.v0 ^ state.v1 ^ state.v2 ^ state.v3;
}

std::uint64_t ZROHMHashOfText(std::string_view text) noexcept {
  static const SipHashKey key = keyOfProcess();
  return sipHash13(key, text);
}
