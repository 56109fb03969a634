// SPDX-License-Identifier: Apache-2.0
// Any bytes as what a speech engine writes: however the pipe cuts them, the samples and the verdict are the same.
#include <policy/WavStreamReader.h>

#include <cstdint>
#include <string_view>
#include <tuple>

#include "FuzzLaws.h"

namespace {

auto heard(std::string_view bytes, std::size_t first, std::size_t length) {
  policy::WavStreamReader reader;
  std::vector<std::int16_t> samples;
  for (std::size_t next = first; !bytes.empty(); next = length) {
    const std::string_view piece = bytes.substr(0, next);
    bytes.remove_prefix(piece.size());
    const bool isGood = reader.feed(piece, samples);
    require(isGood == reader.fault().empty(), "what is no sound has a fault in words");
    if (!isGood) break;
  }
  const auto format = reader.format();
  require(samples.empty() || format, "samples have a format");
  require(!format || (format->channels > 0 && samples.size() % format->channels == 0), "moments are whole");
  return std::tuple(samples, format.value_or(policy::SampleFormat{}), reader.fault(), reader.hasReachedSamples());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const auto whole = heard(input, size, size);
  require(heard(input, 1, 1) == whole, "byte by byte it is the same sound");
  require(heard(input, 1 + splitOf(input), size) == whole, "in two pieces it is the same sound");
  requireLinear(size, [&] { static_cast<void>(heard(input, 1, 1)); });
  return 0;
}
