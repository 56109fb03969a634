// SPDX-License-Identifier: Apache-2.0
// Clips without a player: what is made of their bytes.
#include "sound/Clip.h"

#include <gmock/gmock.h>
#include <sndfile.h>

#include <cmath>
#include <numbers>
#include <random>

#include "TemporaryFolder.h"

namespace {

constexpr int kFrames = 88200;  // two seconds

/// Two seconds of a tone at half of full scale, in two channels.
std::string toneAs(int format) {
  const TemporaryFolder folder;
  SF_INFO info{};
  info.samplerate = 44100;
  info.channels = 2;
  info.format = format;
  SNDFILE* const file = ::sf_open((folder.path / "clip").c_str(), SFM_WRITE, &info);
  if (file == nullptr) return "";
  std::vector<double> samples;
  for (int i = 0; i < 2 * kFrames; ++i) {
    samples.push_back(0.5 * std::sin(2.0 * std::numbers::pi * 440.0 * (i / 2) / 44100.0));
  }
  ::sf_write_double(file, samples.data(), static_cast<sf_count_t>(samples.size()));
  ::sf_close(file);
  return contentOf(folder.path / "clip");
}

/// A tag in front, of so many bytes besides its header.
std::string tagged(const std::string& clip, unsigned length) {
  std::string tag("ID3\4\0\0", 6);
  for (int shift = 21; shift >= 0; shift -= 7) tag += static_cast<char>(length >> shift & 0x7fU);
  return tag + std::string(length, 'x') + clip;
}

struct Decoded {
  std::size_t frames = 0;
  int peak = 0;
  bool isDamaged = false;
};

/// Nothing, for a clip that is refused.
std::optional<Decoded> decoded(const std::string& bytes) {
  auto opened = Clip::open(bytes);
  auto* const clip = std::get_if<std::unique_ptr<Clip>>(&opened);
  if (clip == nullptr) return std::nullopt;
  Decoded result;
  for (auto samples = (*clip)->next(); !samples.empty(); samples = (*clip)->next()) {
    EXPECT_EQ(samples.size() % (*clip)->format().channels, 0U);
    result.frames += samples.size() / (*clip)->format().channels;
    for (const std::int16_t sample : samples) result.peak = std::max(result.peak, std::abs(int{sample}));
  }
  result.isDamaged = (*clip)->damage().has_value();
  return result;
}

TEST(Clips, OfAnyFormatAndWithTagsAreDecodedToTheirEnd) {
  for (const int format : {SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, SF_FORMAT_WAV | SF_FORMAT_PCM_16,
                           SF_FORMAT_WAV | SF_FORMAT_FLOAT, SF_FORMAT_FLAC | SF_FORMAT_PCM_16}) {
    const std::string clip = toneAs(format);
    ASSERT_FALSE(clip.empty());
    for (const std::string& bytes : {clip, tagged(clip, 300), tagged(tagged(clip, 0), 2)}) {
      SCOPED_TRACE(testing::Message() << std::hex << format << " of " << bytes.size());
      const auto found = decoded(bytes);
      ASSERT_TRUE(found);
      EXPECT_EQ(found->frames, std::size_t{kFrames});
      EXPECT_NEAR(found->peak, 16384, 300);
      EXPECT_FALSE(found->isDamaged);
    }
    EXPECT_FALSE(decoded(tagged(clip, 300).substr(0, 300))) << "a tag and nothing behind it";
  }
  for (const char* junk : {"", "\xff", "\xff\xfb", "\xff\xff\xff\xff\xff\xff\xff\xff", "ID3", "RIFF"}) {
    EXPECT_FALSE(decoded(junk)) << junk;
  }
}

TEST(Clips, ThatAreDamagedSayNothingOnTheStandardErrorStream) {
  const std::string clip = toneAs(SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III);
  std::mt19937 random(20261122);
  testing::internal::CaptureStderr();
  for (int round = 0; round < 30; ++round) {
    std::string damaged = round % 2 == 0 ? clip : tagged(clip, 100);
    for (int i = 0; i < 100; ++i) damaged[random() % damaged.size()] = static_cast<char>(random());
    decoded(damaged);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
