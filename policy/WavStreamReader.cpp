// SPDX-License-Identifier: Apache-2.0
#include "WavStreamReader.h"

namespace policy {

namespace {

constexpr std::size_t kLongestHeader = 65536;
constexpr std::size_t kRiffHeader = 12, kChunkHeader = 8;
constexpr unsigned kPcm = 1, kExtensible = 0xFFFE;

std::uint32_t littleEndian(std::string_view bytes, std::size_t at, std::size_t count) {
  std::uint32_t value = 0;
  for (std::size_t i = count; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

}  // namespace

bool WavStreamReader::fail(const char* fault) {
  state_ = State::failed;
  fault_ = fault;
  pending_.clear();
  return false;
}

bool WavStreamReader::readFormat(std::string_view chunk) {
  if (chunk.size() < 16) return fail("its format is cut short");
  unsigned kind = littleEndian(chunk, 0, 2);
  if (kind == kExtensible && chunk.size() >= 26) kind = littleEndian(chunk, 24, 2);
  const SampleFormat format{littleEndian(chunk, 4, 4), littleEndian(chunk, 2, 2)};
  if (kind != kPcm || littleEndian(chunk, 14, 2) != 16) return fail("its samples are not 16-bit PCM");
  if (format.channels < 1 || format.channels > 2) return fail("it has neither one channel nor two");
  if (format.samplesPerSecond < 4000 || format.samplesPerSecond > 192000) return fail("its sample rate is odd");
  format_ = format;
  return true;
}

/// Reads the header as far as it has come. @return false when it is none
bool WavStreamReader::readHeader() {
  const std::string_view bytes = pending_;
  if (bytes.substr(0, 4) != std::string_view("RIFF").substr(0, bytes.size())) return fail("it is no WAV");
  if (bytes.size() < kRiffHeader) return true;
  if (bytes.substr(8, 4) != "WAVE") return fail("it is no WAV");
  for (std::size_t at = kRiffHeader; bytes.size() >= at + kChunkHeader;) {
    const std::string_view name = bytes.substr(at, 4);
    const std::size_t length = littleEndian(bytes, at + 4, 4), begin = at + kChunkHeader;
    if (name == "data") {
      if (!format_) return fail("its samples come before their format");
      state_ = State::samples;
      pending_.erase(0, begin);
      return true;
    }
    if (length > kLongestHeader) return fail("its header is too long");
    if (bytes.size() < begin + length) break;
    if (name == "fmt " && !readFormat(bytes.substr(begin, length))) return false;
    at = begin + length + length % 2;
  }
  return bytes.size() <= kLongestHeader || fail("its header is too long");
}

void WavStreamReader::takeSamples(std::string_view bytes, std::vector<std::int16_t>& samples) {
  for (std::size_t at = 0; at + 2 <= bytes.size(); at += 2) {
    samples.push_back(static_cast<std::int16_t>(littleEndian(bytes, at, 2)));
  }
}

bool WavStreamReader::feed(std::string_view bytes, std::vector<std::int16_t>& samples) {
  if (state_ == State::failed) return false;
  pending_ += bytes;
  if (state_ == State::header && !readHeader()) return false;
  if (state_ == State::samples) {
    // A stream on a server takes no part of a moment.
    const std::size_t moment = 2 * format_->channels, whole = pending_.size() / moment * moment;
    takeSamples(std::string_view(pending_).substr(0, whole), samples);
    pending_.erase(0, whole);
  }
  return true;
}

}  // namespace policy
