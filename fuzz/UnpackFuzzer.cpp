// SPDX-License-Identifier: Apache-2.0
// Any bytes as a packed body, and as a file that may be packed: however they are cut, what comes of them is the same.
#include <packed/MaybeGzip.h>
#include <packed/Unpacker.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzLaws.h"

namespace {

struct Outcome {
  packed::Unpacker::Taken taken = packed::Unpacker::Taken::good;
  bool isWhole = false;
  std::string body{};
  bool operator==(const Outcome&) const = default;
};

/// In pieces of `length` bytes, after a first one of `first`.
Outcome unpacked(std::string_view bytes, std::size_t first, std::size_t length) {
  constexpr std::uint64_t kLongest = 1U << 18U;
  Outcome outcome;
  packed::Unpacker unpacker;
  for (std::size_t next = first; !bytes.empty() && outcome.taken == packed::Unpacker::Taken::good; next = length) {
    const std::string_view piece = bytes.substr(0, next);
    bytes.remove_prefix(piece.size());
    outcome.taken = unpacker.take(piece, outcome.body, kLongest);
  }
  require(outcome.body.size() <= kLongest, "a body is no longer than allowed");
  outcome.isWhole = unpacker.isWhole() && outcome.taken == packed::Unpacker::Taken::good;
  if (outcome.taken != packed::Unpacker::Taken::good) outcome.body.clear();
  return outcome;
}

/// As a file, in pieces of `length` bytes.
Outcome unpackedFile(std::string_view bytes, std::size_t length) {
  Outcome outcome;
  packed::MaybeGzip file;
  for (bool isGood = true; isGood && !bytes.empty(); bytes.remove_prefix(std::min(length, bytes.size()))) {
    isGood = file.feed(bytes.substr(0, length), outcome.body);
    if (!isGood) outcome.taken = packed::Unpacker::Taken::damaged;
  }
  outcome.isWhole = file.isWhole();
  if (outcome.taken != packed::Unpacker::Taken::good) outcome = {.taken = outcome.taken};
  return outcome;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const Outcome whole = unpacked(input, size, size);
  require(unpacked(input, 1, 1) == whole, "byte by byte it is the same");
  require(unpacked(input, 1 + data[size - 1] % size, size) == whole, "in two pieces it is the same");
  require(unpackedFile(input, 1) == unpackedFile(input, size), "a file is the same, too");
  return 0;
}
