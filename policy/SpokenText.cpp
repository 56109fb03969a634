// SPDX-License-Identifier: Apache-2.0
#include "SpokenText.h"

#include <algorithm>

std::string policy::spokenText(std::string text) {
  const auto isCommand = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 && c != '\t' && c != '\n') || byte == 0x7f;
  };
  std::replace_if(text.begin(), text.end(), isCommand, ' ');
  return text;
}
