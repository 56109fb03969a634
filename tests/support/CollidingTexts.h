// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_COLLIDINGTEXTS_H
#define ZRCORE_TESTS_SUPPORT_COLLIDINGTEXTS_H

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

/// Texts of sixteen printable characters to which the standard library of GCC gives one hash: its MurmurHash64A has a
/// seed that everybody knows, and each step of it can be undone.
inline std::vector<std::string> collidingTexts(std::size_t count) {
  constexpr std::uint64_t kMultiplier = 0xc6a4a7935bd1e995U, kSeed = 0xc70f6907U, kLength = 16, kAim = 1;
  std::uint64_t inverse = kMultiplier;
  for (int i = 0; i < 6; ++i) inverse *= 2 - kMultiplier * inverse;
  const auto mixed = [](std::uint64_t word) { return word ^ word >> 47U; };  // its own inverse
  std::mt19937_64 chance(1);
  std::vector<std::string> texts;
  while (texts.size() < count) {
    char text[17] = {};
    for (int i = 0; i < 8; ++i) text[i] = static_cast<char>('a' + chance() % 26);
    std::uint64_t first = 0;
    std::memcpy(&first, text, 8);
    const std::uint64_t hash = (kSeed ^ kLength * kMultiplier ^ mixed(first * kMultiplier) * kMultiplier) * kMultiplier;
    const std::uint64_t second = mixed((kAim ^ hash) * inverse) * inverse;
    std::memcpy(text + 8, &second, 8);
    const bool isPrintable =
        std::all_of(text + 8, text + 16, [](char c) { return c >= 0x20 && c < 0x7F && c != '"' && c != '\\'; });
    if (isPrintable) texts.emplace_back(text, 16);
  }
  return texts;
}

#endif
