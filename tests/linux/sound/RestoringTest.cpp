// SPDX-License-Identifier: Apache-2.0
// Other applications' sound after we have ended, whichever way.
#include <ZRCore/ZRPlatformFake.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <iterator>

#include "SoundServer.h"
#include "sound/DuckFile.h"

using testing::HasSubstr;
using testing::Not;

namespace {

constexpr const char* kLongPrompt = "In four hundred meters, turn left onto Main Street. Then turn right.";

class Restoring : public WithSoundServer {
 protected:
  /// "100%" and the like, of all streams, as the server has them at this moment: the monitor has what was a moment ago.
  static std::string volumes() {
    const std::string list = ChildProcess::output({"pactl", "list", "sink-inputs"}).value_or("");
    std::string found;
    for (auto at = list.find('%'); at != std::string::npos; at = list.find('%', at + 1)) {
      const auto blank = list.rfind(' ', at);
      found += list.substr(blank, at - blank + 1);
    }
    return found;
  }
  static bool isMusicAtFullVolume() { return volumes() == " 100%"; }
  static bool isMusicLowered() {
    return eventually([] { return volumes().find(" 50%") != std::string::npos; });
  }

  /// A run of the tool that speaks without being heard, and has lowered the music.
  std::unique_ptr<ChildProcess> speakingTool() const {
    auto tool = std::make_unique<ChildProcess>(
        ChildProcess::Arguments{ZRCORE_TOOL, "say", kLongPrompt, "--volume", "0"}, ChildProcess::Environment{}, log);
    EXPECT_TRUE(isMusicLowered());
    return tool;
  }

  bool isNothingNoted() const { return std::filesystem::is_empty(server.folder() / "zrcore"); }

  std::string logged() const {
    std::ifstream file(log);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  const std::string log = server.folder() / "log";
};

TEST_F(Restoring, AnyEndThatCanBeCaughtComesFirst) {
  startServer();
  const auto player = server.music();
  ASSERT_TRUE(toneBecomes(kToneAmplitude));
#ifdef __SANITIZE_ADDRESS__
  const int fault = SIGABRT;  // the others are the sanitizer's
#else
  const int fault = SIGSEGV;
#endif
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXFSZ, fault, SIGUSR1, SIGALRM, SIGRTMIN}) {
    SCOPED_TRACE(signal);
    const auto tool = speakingTool();
    tool->send(signal);
    const auto exitCode = tool->exitCode(std::chrono::seconds(20));
    EXPECT_EQ(tool->pid(), -1) << "it has ended";
    EXPECT_EQ(exitCode.value_or(128 + signal), 128 + signal);
    EXPECT_TRUE(isMusicAtFullVolume());
    EXPECT_TRUE(isNothingNoted());
  }
}

TEST_F(Restoring, ASecondSignalDuringTheFarewellComesFirst) {
  startServer();
  const auto player = server.music();
  ASSERT_TRUE(toneBecomes(kToneAmplitude));
  const std::string fix = server.folder() / "fix.csv";
  std::ofstream(fix) << "lat,lon\n52.5,13.4\n";
  ChildProcess tool({ZRCORE_TOOL, "watch", "file:" + fix, "--quiet", "--speak", "sound"});
  ASSERT_TRUE(isMusicLowered());
  tool.send(SIGINT);
  // One that comes with the first is one with it; so it takes several.
  std::optional<int> exitCode;
  ASSERT_TRUE(eventually([&] {
    tool.send(SIGINT);
    if (const auto code = tool.exitCode(std::chrono::milliseconds(20))) exitCode = code;
    return tool.pid() == -1;
  }));
  EXPECT_FALSE(exitCode) << "it was ended by the signal, in the middle of what it says";
  EXPECT_TRUE(isMusicAtFullVolume());
  EXPECT_TRUE(isNothingNoted());
}

TEST_F(Restoring, AnExitOfAHostThatDoesNotCareComesFirst) {
  startServer();
  const auto player = server.music();
  ASSERT_TRUE(toneBecomes(kToneAmplitude));
  const std::string sign = server.folder() / "exit";
  ChildProcess host({ZRCORE_CARELESS_HOST, sign});
  ASSERT_TRUE(isMusicLowered());
  std::ofstream(sign).close();
  EXPECT_EQ(host.exitCode(std::chrono::seconds(20)), 0);
  EXPECT_TRUE(isMusicAtFullVolume());
  EXPECT_TRUE(isNothingNoted());
}

TEST_F(Restoring, WhatAKilledProcessLeftIsMadeGoodByDoctorAndEachStartThatSaysSo) {
  startServer();
  const auto player = server.music();
  ASSERT_TRUE(toneBecomes(kToneAmplitude));
  const auto run = [this](const std::vector<std::string>& arguments) {
    ChildProcess::Arguments command{ZRCORE_TOOL};
    command.insert(command.end(), arguments.begin(), arguments.end());
    std::filesystem::remove(log);
    ChildProcess tool(command, {}, log);
    std::string output;
    while (const auto line = tool.readLine(std::chrono::seconds(20))) output += *line + '\n';
    tool.exitCode(std::chrono::seconds(20));
    return output;
  };
  const auto leaveLowered = [this] { speakingTool()->send(SIGKILL); };
  leaveLowered();
  EXPECT_FALSE(isMusicAtFullVolume());
  run({"ago", "2020-01-01T00:00:00Z"});
  EXPECT_TRUE(isMusicAtFullVolume());
  EXPECT_TRUE(isNothingNoted());
  EXPECT_THAT(logged(), HasSubstr("volume back"));
  run({"ago", "2020-01-01T00:00:00Z"});
  EXPECT_EQ(logged(), "");

  leaveLowered();
  EXPECT_THAT(run({"doctor"}), HasSubstr("volume back (1)"));
  EXPECT_TRUE(isMusicAtFullVolume());
  EXPECT_THAT(run({"doctor"}), Not(HasSubstr("volume back")));

  leaveLowered();
  EXPECT_THAT(run({"doctor", "--json"}), HasSubstr("volume back (1)"));
  leaveLowered();
  monitor.reset();
  server.stop();
  EXPECT_THAT(run({"doctor"}), HasSubstr("broken   volumes"));
  EXPECT_FALSE(isNothingNoted()) << "there may be a server later";
}

TEST_F(Restoring, AOneShotPromptLeavesNoPlayerLowInTheServersMemory) {
  startServer({"module-stream-restore"});
  auto player = server.music();
  ASSERT_TRUE(toneBecomes(kToneAmplitude));
  for (int round = 0; round < 4; ++round) {
    SCOPED_TRACE(round);
    const auto tool = speakingTool();
    player.reset();
    if (round == 3) tool->send(SIGABRT);
    EXPECT_EQ(tool->exitCode(std::chrono::seconds(20)).value_or(0), 0);
    EXPECT_TRUE(isNothingNoted());
    player = server.music();  // and nothing of ours runs
    ASSERT_TRUE(eventually([] { return !volumes().empty(); }));
    EXPECT_TRUE(isMusicAtFullVolume());
  }
}

TEST_F(Restoring, AStreamWithOurProcessNumberFromASandboxIsAnothers) {
  startServer();
  const auto player = server.music("music", {"application.process.id=" + std::to_string(::getpid())});
  ASSERT_TRUE(toneBecomes(kToneAmplitude));
  install();
  say(kLongPrompt, 0.0F);
  EXPECT_TRUE(audio->otherAudioWasPlayingWhenSpeechStarted());
  EXPECT_TRUE(toneBecomes(kLowered));
  EXPECT_TRUE(toneBecomes(kToneAmplitude));
}

TEST_F(Restoring, AFolderThatIsNotTheUsersAloneIsToldOnceAndMusicIsRestoredAllTheSame) {
  startServer();
  const auto player = server.music();
  ASSERT_TRUE(toneBecomes(kToneAmplitude));
  const std::string folder = server.folder() / "shared";
  std::filesystem::create_directory(folder);
  ::chmod(folder.c_str(), 0755);
  ZRLinuxOptions options;
  const auto sound = std::make_shared<ZRLinuxSoundOptions>();
  sound->stateFolder = folder;
  options.sound = sound;
  ZRPlatform platform = makeLinuxPlatform(options);
  const auto told = std::make_shared<ZRFakeLog>();
  platform.log = told;
  ASSERT_TRUE(ZRPlatformInstall(platform));
  audio = ZRAudio::init();
  for (int prompt = 0; prompt < 2; ++prompt) {
    say("Turn left", 0.0F);
    EXPECT_TRUE(isMusicLowered());
    EXPECT_TRUE(eventually([] { return isMusicAtFullVolume(); }));
  }
  EXPECT_THAT(told->lines, testing::ElementsAre(HasSubstr(folder)));
  EXPECT_TRUE(std::filesystem::is_empty(folder));
}

TEST(Notes, AreTakenFromAFolderAndFilesOfThisUserAlone) {
  const PrivateServer session;
  const std::string folder = session.folder() / "notes";
  const auto note = [&folder] { std::ofstream(folder + "/ducked-x") << "1 2 1 65536 k\n"; };
  std::filesystem::create_directory(folder);
  note();
  for (const mode_t mode : {0777U, 0750U, 0701U}) {
    ::chmod(folder.c_str(), mode);
    DuckFile file(folder);
    EXPECT_FALSE(file.hasNotesOfDead());
    EXPECT_FALSE(file.write("text"));
  }
  ::chmod(folder.c_str(), 0700);
  EXPECT_TRUE(DuckFile(folder).hasNotesOfDead());
  std::filesystem::rename(folder + "/ducked-x", folder + "/kept");
  std::filesystem::create_symlink("kept", folder + "/ducked-y");
  EXPECT_FALSE(DuckFile(folder).hasNotesOfDead());
  note();
  if (::chown((folder + "/ducked-x").c_str(), 65534, 65534) == 0) {
    EXPECT_FALSE(DuckFile(folder).hasNotesOfDead());
  } else {
    GTEST_SKIP() << "only root can make another user's file";
  }
}

}  // namespace
