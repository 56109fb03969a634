// SPDX-License-Identifier: Apache-2.0
#include "sound/SoundOwner.h"

#include <random>

const std::string& soundOwner() {
  static const std::string* const owner = [] {
    std::random_device random;
    auto* const digits = new std::string;
    while (digits->size() < 16) *digits += "0123456789abcdef"[random() % 16U];
    return digits;
  }();
  return *owner;
}
