// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <policy/DuckPlan.h>
#include <policy/SpeechRate.h>
#include <policy/UtteranceQueue.h>
#include <policy/WavStreamReader.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <utility>

#include "TestSeed.h"

using policy::ChannelVolumes;
using policy::DuckPlan;
using policy::OtherStream;
using policy::WavStreamReader;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

TEST(SpeechRate, RisesBetweenTheEnginesEndsAndStaysThere) {
  EXPECT_EQ(policy::wordsPerMinuteForRate(0.0F), 80);
  EXPECT_EQ(policy::wordsPerMinuteForRate(0.5F), 175);
  EXPECT_EQ(policy::wordsPerMinuteForRate(1.0F), 450);
  EXPECT_EQ(policy::wordsPerMinuteForRate(-3.0F), 80);
  EXPECT_EQ(policy::wordsPerMinuteForRate(INFINITY), 450);
  EXPECT_EQ(policy::wordsPerMinuteForRate(kNaN), 175);
  for (float rate = 0.0F; rate < 0.985F; rate += 0.01F) {
    EXPECT_LT(policy::wordsPerMinuteForRate(rate), policy::wordsPerMinuteForRate(rate + 0.01F));
  }
  const struct {
    float volume;
    int amplitude;
  } rows[] = {{0.0F, 0}, {0.001F, 0}, {0.5F, 50}, {1.0F, 100}, {7.0F, 100}, {-1.0F, 0}, {kNaN, 100}};
  for (const auto& row : rows) EXPECT_EQ(policy::amplitudeForVolume(row.volume), row.amplitude) << row.volume;
}

std::string littleEndian(std::uint32_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i);
  return text;
}

std::string chunk(const std::string& name, const std::string& body, std::uint32_t length) {
  return name + littleEndian(length, 4) + body;
}

std::string format(unsigned kind, unsigned channels, unsigned rate, unsigned bits) {
  const std::string body = littleEndian(kind, 2) + littleEndian(channels, 2) + littleEndian(rate, 4) +
                           littleEndian(rate * 2, 4) + littleEndian(2, 2) + littleEndian(bits, 2);
  return chunk("fmt ", body, 16);
}

std::string riff(const std::string& chunks) { return "RIFF" + littleEndian(0x7ffff024, 4) + "WAVE" + chunks; }

TEST(WavStreamReader, ReadsWhatAnEngineStreamsHoweverItIsSplit) {
  const std::string samples("\x01\x00\xff\x7f\x00\x80", 6);
  for (const unsigned channels : {1U, 2U}) {
    const std::string wav = riff(chunk("LIST", std::string("odd\0", 4), 3) + format(1, channels, 22050, 16) +
                                 chunk("data", samples, 0x7ffff000));  // a length that nobody has seen
    for (std::size_t piece = 1; piece <= wav.size(); ++piece) {
      WavStreamReader reader;
      std::vector<std::int16_t> read;
      for (std::size_t at = 0; at < wav.size(); at += piece) {
        ASSERT_TRUE(reader.feed(wav.substr(at, piece), read));
        ASSERT_EQ(read.size() % channels, 0U) << "half a moment, in pieces of " << piece;
      }
      const std::vector<std::int16_t> mono{1, 32767, -32768}, stereo{1, 32767};
      EXPECT_EQ(read, channels == 1 ? mono : stereo) << "in pieces of " << piece;
      EXPECT_EQ(reader.format(), (policy::SampleFormat{22050, channels}));
      EXPECT_TRUE(reader.hasReachedSamples());
    }
  }
}

TEST(WavStreamReader, RefusesWhatIsNoSuchWavAndStaysRefused) {
  const struct {
    const char* name;
    std::string bytes;
  } rows[] = {
      {"prose", "Usage: engine [options]"},
      {"another container", "RIFF" + littleEndian(4, 4) + "AVI LIST"},
      {"8 bits", riff(format(1, 1, 22050, 8))},
      {"floating point", riff(format(3, 1, 22050, 16))},
      {"no channel", riff(format(1, 0, 22050, 16))},
      {"many channels", riff(format(1, 3, 22050, 16))},
      {"a low rate", riff(format(1, 1, 3999, 16))},
      {"a high rate", riff(format(1, 1, 192001, 16))},
      {"samples without a format", riff(chunk("data", "\1\1", 2))},
      {"a short format", riff(chunk("fmt ", "\1\1", 2))},
      {"an endless chunk", riff(chunk("LIST", "", 0xffffffff))},
      {"endless chunks", riff(std::string(70000, '\0'))},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    WavStreamReader reader;
    std::vector<std::int16_t> samples;
    EXPECT_FALSE(reader.feed(row.bytes, samples));
    EXPECT_THAT(reader.fault(), testing::StartsWith("it"));
    EXPECT_FALSE(reader.feed(riff(format(1, 1, 22050, 16) + chunk("data", "\1\1", 2)), samples));
    EXPECT_THAT(samples, IsEmpty());
  }
  WavStreamReader cut;
  std::vector<std::int16_t> samples;
  EXPECT_TRUE(cut.feed("RIFF", samples));
  EXPECT_FALSE(cut.hasReachedSamples());
}

using Queue = policy::UtteranceQueue<std::string>;

/// "finished one, start two" and the like.
std::string shown(const Queue::Step& step) {
  std::string text;
  for (const auto& event : step.events) {
    const char* const told[] = {"finished ", "paused ", "cancelled "};
    text += told[static_cast<int>(event.told)] + event.utterance + ", ";
  }
  return text + (step.start ? "start " + *step.start : "");
}

TEST(UtteranceQueue, OneIsSpokenTheOthersWaitAndEachEndsOnce) {
  Queue queue;
  EXPECT_EQ(shown(queue.add("one")), "start one");
  EXPECT_EQ(shown(queue.add("two")), "");
  EXPECT_EQ(shown(queue.add("three")), "");
  EXPECT_EQ(shown(queue.setPaused(false)), "");
  EXPECT_EQ(shown(queue.setPaused(true)), "paused one, ");
  EXPECT_EQ(shown(queue.setPaused(true)), "");
  EXPECT_EQ(shown(queue.setPaused(false)), "");
  EXPECT_EQ(shown(queue.setPaused(true)), "paused one, ");
  EXPECT_EQ(shown(queue.end(true)), "finished one, start two");
  EXPECT_EQ(shown(queue.setPaused(true)), "paused two, ") << "each starts unpaused";
  EXPECT_EQ(shown(queue.end(false)), "cancelled two, start three");
  EXPECT_EQ(shown(queue.add("four")), "");
  EXPECT_EQ(shown(queue.stop()), "cancelled three, cancelled four, ");
  EXPECT_TRUE(queue.isEmpty());
  EXPECT_EQ(shown(queue.end(true)) + shown(queue.stop()) + shown(queue.setPaused(true)), "");
  EXPECT_EQ(shown(queue.add("five")), "start five");
  EXPECT_EQ(shown(queue.setPaused(true)), "paused five, ");
  EXPECT_EQ(shown(queue.stop()), "cancelled five, ");
  EXPECT_EQ(shown(queue.add("six")), "start six");
  EXPECT_EQ(shown(queue.setPaused(true)), "paused six, ") << "it started unpaused, too";
}

/// "7 down, 8 up" and the like; applies the changes to the streams, as the server would. All other processes live.
std::string changed(DuckPlan& plan, bool isDucking, std::vector<OtherStream>& streams, const DuckPlan& others = {}) {
  std::string text;
  for (const auto& change : plan.changes(isDucking, streams, others, others)) {
    for (auto& stream : streams) {
      if (stream.index != change.index) continue;
      const auto before = std::exchange(stream.volumes, change.volumes);
      text += std::to_string(change.index) + (change.volumes < before   ? " down, "
                                              : change.volumes > before ? " up, "
                                                                        : " kept, ");
    }
  }
  plan.changesDone();
  return text;
}

OtherStream stream(std::uint32_t index, ChannelVolumes volumes, std::string key = "") {
  return {.index = index, .key = std::move(key), .volumes = std::move(volumes)};
}

TEST(DuckPlan, LowersWhatIsAudibleOnceBy18DecibelsAndRestoresItToTheUnit) {
  DuckPlan plan;
  std::vector<OtherStream> streams{stream(7, {65536, 40000}), stream(8, {65536}), stream(9, {65536}), stream(10, {0})};
  streams[1].isAudible = false;
  streams[2].canBeChanged = false;
  const auto before = streams;
  EXPECT_EQ(changed(plan, false, streams), "");
  EXPECT_EQ(changed(plan, true, streams), "7 down, ");
  EXPECT_EQ(changed(plan, true, streams), "");
  const double ratio = std::pow(streams[0].volumes[0] / 65536.0, 3.0);
  EXPECT_NEAR(20.0 * std::log10(ratio), -18.0, 0.01);
  streams[1].isAudible = true;  // comes during the prompt
  EXPECT_EQ(changed(plan, true, streams), "8 down, ");
  EXPECT_EQ(changed(plan, false, streams), "7 up, 8 up, ");
  for (std::size_t i = 0; i < streams.size(); ++i) EXPECT_EQ(streams[i].volumes, before[i].volumes);
  EXPECT_TRUE(plan.isEmpty());
}

TEST(DuckPlan, WhateverComesAndGoesStandsAtItsOwnVolumeWhenNobodySpeaks) {
  std::mt19937 random(testSeed(11));
  DuckPlan plan;
  std::vector<OtherStream> streams;
  std::map<std::uint32_t, ChannelVolumes> own;
  for (std::uint32_t step = 0; step < 1000; ++step) {
    const auto oneOf = [&random](std::size_t count) { return static_cast<std::uint32_t>(random() % count); };
    if (oneOf(3) == 0) streams.push_back(stream(step, own[step] = {1000 + oneOf(64000)}));
    if (oneOf(4) == 0 && !streams.empty()) streams.erase(streams.begin() + oneOf(streams.size()));
    const bool isDucking = random() % 2 == 0;
    changed(plan, isDucking, streams);
    for (const OtherStream& each : streams) {
      const ChannelVolumes& usual = own[each.index];
      ASSERT_EQ(each.volumes, isDucking ? policy::loweredVolumes(usual) : usual) << "step " << step;
    }
  }
}

TEST(DuckPlan, LeavesAloneWhatSomebodyElseHasChanged) {
  DuckPlan plan;
  std::vector<OtherStream> streams{stream(7, {65536}), stream(8, {65536})};
  changed(plan, true, streams);
  streams[0].volumes = {50000};
  streams[1].volumes[0] += 1;  // the server rounds
  EXPECT_EQ(changed(plan, true, streams), "");
  EXPECT_EQ(changed(plan, false, streams), "8 up, ");
  EXPECT_EQ(changed(plan, false, streams), "");
}

TEST(DuckPlan, AStreamThatEndsLoweredIsRestoredInItsSuccessor) {
  DuckPlan plan;
  std::vector<OtherStream> streams{stream(7, {65536}, "by-name:player"), stream(8, {65536})};
  changed(plan, true, streams);
  const ChannelVolumes lowered = streams[0].volumes;
  std::vector<OtherStream> none;
  EXPECT_EQ(changed(plan, true, none), "");
  EXPECT_EQ(changed(plan, false, none), "");
  EXPECT_FALSE(plan.isEmpty()) << "the server will start the player's next stream at the lowered volume";
  std::vector<OtherStream> next{stream(20, lowered, "by-name:other"), stream(21, {30000}, "by-name:player"),
                                stream(22, lowered, "by-name:player"), stream(8, lowered)};
  EXPECT_EQ(changed(plan, false, next), "22 up, ");
  EXPECT_EQ(next[2].volumes, ChannelVolumes{65536});

  changed(plan, true, next);
  next.push_back(stream(23, lowered, "by-name:player"));  // a second window of the player, started low by the server
  EXPECT_EQ(changed(plan, true, next), "") << "low enough";
  EXPECT_THAT(changed(plan, false, next), testing::EndsWith("23 up, "));
  EXPECT_EQ(next.back().volumes, ChannelVolumes{65536});

  for (std::uint32_t index = 30; index < 40; ++index) {
    next = {stream(index, lowered, "by-name:player")};
    changed(plan, true, next);
  }
  changed(plan, true, none);
  const std::string noted = plan.text(1);
  EXPECT_EQ(std::count(noted.begin(), noted.end(), '\n'), 1) << "one volume a key, however many streams have ended";
}

TEST(DuckPlan, OfSeveralProcessesTheLastRestoresWhatWasLoweredOnce) {
  DuckPlan first, second;
  std::vector<OtherStream> streams{stream(7, {65536}, "by-role:call"), stream(8, {65536})};
  changed(first, true, streams);
  EXPECT_EQ(changed(second, true, streams, first), "7 kept, 8 kept, ");
  EXPECT_EQ(changed(first, false, streams, second), "") << "the second still speaks";
  EXPECT_TRUE(first.isEmpty());
  changed(first, true, streams, second);
  first.changes(false, streams, {}, {});
  EXPECT_NE(first.text(1), "") << "until the server has answered, others are told";
  streams[0].volumes = {40000};  // by hand
  changed(first, true, streams, second);
  EXPECT_EQ(changed(first, false, streams, second), "");
  EXPECT_EQ(changed(second, false, streams), "8 up, ");
  EXPECT_EQ(streams[0].volumes, ChannelVolumes{40000});
  EXPECT_EQ(streams[1].volumes, ChannelVolumes{65536});
}

TEST(DuckPlan, APromptIsNotLoweredNorKeptLowByTheServersMemory) {
  DuckPlan plan;
  std::vector<OtherStream> streams{stream(7, {65536}, "by-role:phone"), stream(8, {65536}, "by-role:phone")};
  streams[1].mayBeLowered = false;
  EXPECT_EQ(changed(plan, true, streams), "7 down, ");
  streams[1] = {.index = 9, .key = "by-role:phone", .volumes = streams[0].volumes, .mayBeLowered = false};
  EXPECT_EQ(changed(plan, true, streams), "9 up, ") << "it began low, as the call was";
  streams.erase(streams.begin());
  streams[0].volumes = policy::loweredVolumes({65536});
  EXPECT_EQ(changed(plan, true, streams), "9 up, ");
  EXPECT_TRUE(plan.isEmpty());
}

TEST(DuckPlan, TheNextProcessRestoresWhatADeadOneLeft) {
  DuckPlan plan;
  std::vector<OtherStream> streams{stream(7, {65536, 30000}), stream(8, {65536}, "by name: a player")};
  changed(plan, true, streams);
  DuckPlan next = DuckPlan::fromText("junk\n\n1 2 3\n" + plan.text(99) + "99 x 1 5\n99 1 99999999 5\n99 1 -1 k\n", 99);
  auto found = streams;
  EXPECT_EQ(changed(next, false, found), "7 up, 8 up, ");
  EXPECT_EQ(found[0].volumes, (ChannelVolumes{65536, 30000}));

  DuckPlan afterRestart = DuckPlan::fromText(plan.text(99), 100);
  auto restarted = streams;
  restarted[1].index = 12;
  EXPECT_EQ(changed(afterRestart, false, restarted), "12 up, ") << "numbers of another server mean nothing";
  plan.forgetServer();
  EXPECT_EQ(changed(plan, false, streams), "8 up, ");
}

TEST(DuckPlan, ANoteSaysWhatWasLoweredWhateverItsStreamsAreCalled) {
  const std::string forged = "x\n99 8 1 130763 k\n";
  for (const std::string& key :
       {forged, std::string("50%"), std::string("%0a%"), std::string("\x7f\t\r ä"), std::string(" two words ")}) {
    SCOPED_TRACE(key);
    DuckPlan plan;
    std::vector<OtherStream> streams{stream(7, {65536}, key)};
    changed(plan, true, streams);
    streams[0].index = 20;  // its player's next one, which the server starts low
    streams.push_back(stream(8, {65536}));
    DuckPlan next = DuckPlan::fromText(plan.text(99), 99);
    EXPECT_EQ(changed(next, false, streams), "20 up, ");
  }
}

TEST(DuckPlan, ANoteMakesNothingLouderThanFullVolume) {
  const ChannelVolumes loud{130763, 40000};
  DuckPlan plan;
  std::vector<OtherStream> streams{stream(7, loud)};
  changed(plan, true, streams);
  const auto lowered = streams;
  DuckPlan next = DuckPlan::fromText(plan.text(99), 99), other;
  changed(other, true, streams, DuckPlan::fromText(plan.text(99), 99));
  changed(other, false, streams);
  EXPECT_EQ(streams[0].volumes, (ChannelVolumes{65536, 40000})) << "taken over from a living process";
  streams = lowered;
  changed(next, false, streams);
  EXPECT_EQ(streams[0].volumes, (ChannelVolumes{65536, 40000})) << "left by a dead one";
  streams = lowered;
  changed(plan, false, streams);
  EXPECT_EQ(streams[0].volumes, loud) << "its own process knows better";
}

TEST(DuckPlan, CorrectsWhatTheServerRemembersOfStreamsThatEndedLow) {
  const ChannelVolumes full{65536}, low = policy::loweredVolumes(full);
  using Memory = std::optional<std::vector<policy::RememberedVolume>>;
  const struct {
    const char* name;
    Memory memory;
    bool isHeld, isCorrected;
  } rows[] = {
      {"low", Memory{{{"other", low}, {"player", low}}}, false, true},
      {"changed since", Memory{{{"player", {50000}}}}, false, false},
      {"of others only", Memory{{{"other", low}}}, false, false},
      {"empty", Memory{std::in_place}, false, false},
      {"low, and another process still lowers", Memory{{{"player", low}}}, true, false},
      {"not shown", std::nullopt, false, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    DuckPlan plan, held;
    std::vector<OtherStream> streams{stream(7, full, "player"), stream(8, full)}, none;
    changed(plan, true, streams);
    if (row.isHeld) held = plan;
    EXPECT_FALSE(plan.hasEndedStreams());
    changed(plan, false, none);
    EXPECT_TRUE(plan.hasEndedStreams());
    const auto corrections = plan.corrections(row.memory, held);
    EXPECT_EQ(corrections.size(), row.isCorrected ? 1U : 0U);
    if (row.isCorrected) {
      EXPECT_EQ(corrections[0].key, "player");
      EXPECT_EQ(corrections[0].volumes, full);
      EXPECT_NE(plan.text(1), "") << "until the server has answered";
    }
    plan.changesDone();
    EXPECT_TRUE(plan.isEmpty());
  }
}

TEST(DuckPlan, AStreamThatEndsWhileItIsRestoredOrWasChangedByHandIsTakenForWhatItIs) {
  const ChannelVolumes full{65536}, low = policy::loweredVolumes(full);
  DuckPlan plan;
  std::vector<OtherStream> streams{stream(7, full, "player")};
  changed(plan, true, streams);
  EXPECT_EQ(plan.changes(false, streams, {}, {}).size(), 1U);
  plan.streamHasEnded(7);  // so the server says
  plan.changesDone();
  EXPECT_EQ(plan.corrections({{{"player", low}}}, {}).size(), 1U);

  DuckPlan byHand;
  streams = {stream(7, full, "player")};
  changed(byHand, true, streams);
  streams[0].volumes = {40000};
  changed(byHand, true, streams);
  streams.clear();
  changed(byHand, false, streams);
  EXPECT_TRUE(byHand.corrections(std::nullopt, {}).empty()) << "it ended at the volume that somebody had chosen";

  DuckPlan left;
  streams = {stream(7, full, "player")};
  changed(left, true, streams);
  DuckPlan next = DuckPlan::fromText(left.text(1), 2);  // much later
  streams = {stream(20, {40000}, "player")};
  changed(next, false, streams);
  EXPECT_TRUE(next.corrections(std::nullopt, {}).empty()) << "somebody has chosen its successor's volume";
}

}  // namespace
