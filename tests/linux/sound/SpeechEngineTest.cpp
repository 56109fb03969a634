// SPDX-License-Identifier: Apache-2.0
// Engines that work and engines that do not, without a sound server: sound goes into a file.
#include <gmock/gmock.h>
#include <sndfile.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>

#include "SpeechEngine.h"
#include "sound/LinuxSpeech.h"
#include "sound/SoundFile.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

TEST_F(SpeechEngine, OneThatFailsCancelsTheUtteranceWithOneLineAndGuidanceGoesOn) {
  const std::string good = file("good.wav", squareWav(100));
  const std::string half = squareWav(100).substr(0, 500);
  const struct {
    const char* name;
    std::vector<std::string> engine;
    const char* line;
  } rows[] = {
      {"missing", {"/nonexistent/engine"}, "cannot be started: No such file"},
      {"no command", {}, "cannot be started: no command"},
      {"unknown voice", {"sh", "-c", "echo 'No such voice.' >&2; exit 1"}, "ended with status 1: No such voice."},
      {"dies at once", {"sh", "-c", "kill -SEGV $$"}, "ended by signal 11"},
      {"dies half-way", {"sh", "-c", "cat " + file("half", half) + "; kill -KILL $$"}, "ended by signal 9"},
      {"hangs", {"sleep", "1000"}, "hangs"},
      {"hangs half-way", {"sh", "-c", "cat " + file("half", half) + "; sleep 1000"}, "hangs"},
      {"junk", {"sh", "-c", "echo '<html>'"}, "writes what is no WAV: it is no WAV"},
      {"endless junk", {"cat", "/dev/zero"}, "writes what is no WAV"},
      {"nothing", {"true"}, "has written no sound"},
      {"half a header", {"sh", "-c", "printf RIFF"}, "has written no sound"},
      {"endless sound", {"sh", "-c", "cat " + good + " /dev/zero"}, "does not end"},
      {"floods its complaints", {"sh", "-c", "head -c 9000000 /dev/zero >&2; exit 3"}, "ended with status 3"},
  };
  std::string table = "| engine | told | line in the log |\n|---|---|---|\n";
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    install(row.engine);
    ends.clear();
    speak("one");
    speak("two");
    EXPECT_THAT(ends, IsEmpty()) << "nothing is told inside the call";
    ASSERT_TRUE(ended(2));
    EXPECT_THAT(ends, ElementsAre("cancelled one", "cancelled two"));
    ASSERT_THAT(log->lines, ElementsAre(HasSubstr(row.line))) << "one line for one cause";
    EXPECT_FALSE(synthesizer->isSpeaking());
    EXPECT_LT(soundFile->lengthSeconds(), 0.2);
    table += std::string("| ") + row.name + " | cancelled | " + log->lines.front() + " |\n";
  }
  std::ofstream(ZRCORE_REPORTS "/engine-faults.md") << table;
}

TEST_F(SpeechEngine, TheTextGoesToItsInputToTheByteAndNothingElseDoes) {
  const std::string good = file("good.wav", squareWav(10)), heard = folder / "heard";
  const std::string text =
      "-v 'x' \"$(touch " + (folder / "pwned").string() + ")\" ; `id` %v \\ äö\n\ttwo" + std::string(200000, 'a');
  install({"sh", "-c", "cat > " + heard + "; cat " + good});
  speak(text);
  ASSERT_TRUE(ended(1));
  EXPECT_EQ(ends[0].substr(0, 8), "finished");
  EXPECT_TRUE(contentOf(heard) == text);
  EXPECT_FALSE(std::filesystem::exists(folder / "pwned"));

  ends.clear();
  install({"sh", "-c", "exec 0<&-; cat " + good});  // an engine that does not even read
  speak(text);
  ASSERT_TRUE(ended(1));
  EXPECT_EQ(ends[0].substr(0, 8), "finished");
}

TEST_F(SpeechEngine, NoControlCharacterOfATextReachesItAsACommand) {
  const std::string good = file("good.wav", squareWav(10)), heard = folder / "heard";
  install({"sh", "-c", "cat > " + heard + "; cat " + good});
  std::string text, expected;
  for (int byte = 1; byte < 0x80; ++byte) {
    text += static_cast<char>(byte);
    expected += (byte < 0x20 && byte != '\t' && byte != '\n') || byte == 0x7f ? ' ' : static_cast<char>(byte);
  }
  speak(text + "\xc3\xa4");
  ASSERT_TRUE(ended(1));
  EXPECT_EQ(contentOf(heard), expected + "\xc3\xa4");
}

TEST(EngineCommand, CarriesVoiceRateAndVolumeAndNoOptionsOfOthers) {
  const LinuxSpeech::Options options{.command = {"engine", "-v", "%v", "-s%r", "%a/%a"}};
  AVSpeechUtterance utterance("text %v");
  utterance.setVolume(0.25F);
  EXPECT_THAT(engineCommand(options, utterance), ElementsAre("engine", "-v", "en-US", "-s175", "25/25"));
  for (const char* tag : {"--stdout", "", "-x", "de;id", "a b", "../x", "de-"}) {
    utterance.setVoice(std::make_shared<AVSpeechSynthesisVoice>(tag));
    EXPECT_EQ(engineCommand(options, utterance)[2], "en-US") << tag;
  }
  utterance.setVoice(std::make_shared<AVSpeechSynthesisVoice>("zh-Hans-CN"));
  EXPECT_EQ(engineCommand(options, utterance)[2], "zh-Hans-CN");
}

TEST_F(SpeechEngine, WhatItStoppedIsSilentAndItsProcessGone) {
  const std::string pid = folder / "pid";
  install({"sh", "-c", "echo $$ > " + pid + "; sleep 1000 & wait"});
  speak("one");
  ASSERT_TRUE(
      ZRRunLinuxLoopFor(0.25, [&] { return std::filesystem::exists(pid) && std::filesystem::file_size(pid) > 0; }) ||
      std::filesystem::exists(pid));
  pid_t engine = 0;
  std::ifstream(pid) >> engine;
  synthesizer->stopSpeakingImmediately();
  EXPECT_FALSE(synthesizer->isSpeaking());
  EXPECT_THAT(ends, IsEmpty());
  EXPECT_NE(::kill(engine, 0), 0);
  synthesizer.reset();
  ASSERT_TRUE(ended(1));
  EXPECT_THAT(ends, ElementsAre("cancelled one"));
  EXPECT_THAT(log->lines, IsEmpty());
}

TEST_F(SpeechEngine, InAFileAPromptStandsWhereTheReplayHasIt) {
  install({"cat", file("good.wav", squareWav(2000, 44100))});
  const auto at = [this](double seconds) {
    soundFile->setTimeSeconds(seconds);
    ASSERT_TRUE(ZRRunLinuxLoopFor(30.0, [this] { return soundFile->isSettled(); }));
  };
  at(10.0);
  speak("one");
  speak("two");
  at(10.0);
  EXPECT_THAT(ends, IsEmpty());
  at(11.9);
  EXPECT_THAT(ends, IsEmpty()) << "not heard yet";
  at(12.5);
  EXPECT_THAT(ends, ElementsAre("finished one"));
  at(13.5);
  synthesizer->stopSpeakingImmediately();  // one second into the second
  ASSERT_TRUE(ended(2));
  EXPECT_THAT(ends, ElementsAre("finished one", "cancelled two"));
  EXPECT_NEAR(soundFile->lengthSeconds(), 13.5, 0.001);
  speak("three");
  at(13.5);
  soundFile->letTimePass();
  ASSERT_TRUE(ended(3));
  EXPECT_EQ(soundFile->close(), "");
  ends.clear();
  speak("late");
  ASSERT_TRUE(ended(1));
  EXPECT_THAT(ends, ElementsAre("cancelled late"));

  SF_INFO info{};
  SNDFILE* const wav = ::sf_open((folder / "out.wav").c_str(), SFM_READ, &info);
  ASSERT_NE(wav, nullptr);
  std::vector<std::int16_t> samples(static_cast<std::size_t>(info.frames));
  ::sf_read_short(wav, samples.data(), info.frames);
  ::sf_close(wav);
  EXPECT_EQ(info.samplerate, 22050);
  EXPECT_NEAR(static_cast<double>(info.frames) / 22050.0, 15.5, 0.001);
  const auto loud = [&](double seconds) { return std::abs(samples[static_cast<std::size_t>(seconds * 22050)]) > 1000; };
  EXPECT_FALSE(loud(9.99));
  for (const double seconds : {10.01, 11.99, 12.51, 13.49, 13.51, 15.48}) EXPECT_TRUE(loud(seconds)) << seconds;
  EXPECT_FALSE(loud(12.2)) << "the second waited for the next fix";
}

}  // namespace
