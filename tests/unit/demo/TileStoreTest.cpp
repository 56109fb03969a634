// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRPlatformFake.h>
#include <demo/tiles/KeptTiles.h>
#include <demo/tiles/TileFolder.h>
#include <demo/tiles/TileTemplate.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

#include "TemporaryFolder.h"

namespace demo {
namespace {

namespace fs = std::filesystem;

constexpr double kNow = 1e9;

TEST(TileFolder, KeepsWhatWasUsedLatelyInItsRoomAlsoForTheNextProgram) {
  const TemporaryFolder temporary;
  const fs::path folder = temporary.path / "cache" / "tiles";
  const std::string answer(1000, '\n'), first = "http://a.example/1", second = "http://a.example/2",
                                        third = "http://a.example/3";
  {
    TileFolder tiles(folder, 3500);
    EXPECT_TRUE(tiles.keep(first, answer, kNow + 10));
    EXPECT_TRUE(tiles.keep(second, answer, kNow + 10));
    EXPECT_TRUE(tiles.keep(third, answer, kNow + 10));
    EXPECT_EQ(tiles.read(first), answer);
    EXPECT_TRUE(tiles.isGood(second, kNow));
  }
  struct stat facts {};
  ASSERT_EQ(::stat(folder.c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0777U, 0700U);

  TileFolder tiles(folder, 3500);
  EXPECT_TRUE(tiles.isGood(first, kNow + 9));
  EXPECT_FALSE(tiles.isGood(first, kNow + 11));
  EXPECT_EQ(tiles.read(second), answer);
  EXPECT_TRUE(tiles.keep("http://a.example/4", answer, kNow + 10));
  EXPECT_EQ(tiles.read(third), std::nullopt) << "used longest ago";
  EXPECT_EQ(tiles.read(first), answer);
  EXPECT_LE(tiles.bytes(), 3500u);
  EXPECT_FALSE(tiles.keep("http://a.example/5", std::string(TileFolder::kMostAnswerBytes + 1, 'a'), kNow));
  tiles.forget(first);
  EXPECT_EQ(tiles.read(first), std::nullopt);
}

TEST(TileFolder, TakesNothingThatIsCutShortOrAnothersAndNoFolderThatIsNotTheUsersOwn) {
  const TemporaryFolder temporary;
  const std::string address = "http://a.example/1";
  TileFolder(temporary.path / "tiles").keep(address, "answer", kNow);
  const fs::path file = fs::directory_iterator(temporary.path / "tiles")->path();
  const std::string whole = contentOf(file);
  for (std::size_t size = 0; size <= whole.size() + 1; ++size) {
    std::ofstream(file) << (whole + '!').substr(0, size);
    const bool isWhole = size == whole.size();
    EXPECT_EQ(TileFolder(temporary.path / "tiles").read(address).has_value(), isWhole) << size;
  }
  std::string others = whole;
  others.replace(others.find("example/1"), 9, "example/2");
  std::ofstream(file) << others;
  EXPECT_EQ(TileFolder(temporary.path / "tiles").read(address), std::nullopt);

  fs::create_directory_symlink(temporary.path / "tiles", temporary.path / "link");
  temporary.write("file", "");
  EXPECT_THROW(TileFolder(temporary.path / "link"), TileSourceError);
  EXPECT_THROW(TileFolder(temporary.path / "file"), TileSourceError);
  EXPECT_THROW(TileFolder("/proc/none/tiles"), TileSourceError);
}

/// Asks for one address through kept tiles, and says what came: "200 body", "404 body", "fault".
class KeptTilesTest : public testing::Test {
 protected:
  using Answer = std::function<void(ZRFakeDataTask&)>;

  std::string ask(const Answer& answer) {
    std::string came = "nothing";
    const auto task = kept.dataTaskWithRequest(
        {NSURL::URLWithString("http://a.example/1")}, [&](const auto& data, const auto& response, const auto& error) {
          came = error ? "fault" : std::to_string(response->statusCode) + ' ' + *data;
        });
    task->resume();
    EXPECT_EQ(came, "nothing") << "never from inside the call";
    if (!fake.httpSession->running.empty()) answer(*fake.httpSession->running.at(0));
    fake.mainQueue->run();
    return came;
  }
  static void fail(ZRFakeDataTask& task) { task.fail(NSURLErrorCannotConnectToHost); }
  static Answer answering(int status, const char* body) {
    return [status, body](ZRFakeDataTask& task) { task.answer(status, body); };
  }

  TemporaryFolder temporary;
  ZRFakePlatform fake;
  KeptTiles kept{fake.platform(), std::make_shared<TileFolder>(temporary.path / "tiles")};
};

TEST_F(KeptTilesTest, AreGivenWhileTheyAreGoodAndWhenTheServerCannotGiveAny) {
  EXPECT_EQ(ask(fail), "fault");
  EXPECT_EQ(ask(answering(404, "none")), "404 none");
  EXPECT_EQ(ask(answering(200, "first")), "200 first");
  EXPECT_EQ(fake.httpSession->resumed, 3u);
  EXPECT_EQ(ask(answering(200, "second")), "200 first");
  EXPECT_EQ(fake.httpSession->resumed, 3u) << "asked again for what was good";
  fake.clock->advance(8 * 86400.0);
  EXPECT_EQ(ask(fail), "200 first");
  EXPECT_EQ(ask(answering(503, "busy")), "200 first");
  EXPECT_EQ(ask(answering(404, "gone")), "404 gone");
  EXPECT_EQ(ask(answering(200, "second")), "200 second");
  EXPECT_EQ(ask(fail), "200 second");

  for (const bool isGood : {true, false}) {
    std::optional<NSError> fault;
    const auto task = kept.dataTaskWithRequest({NSURL::URLWithString("http://a.example/1")},
                                               [&](const auto&, const auto&, const auto& error) { fault = error; });
    if (!isGood) task->resume();
    task->cancel();
    fake.mainQueue->run();
    EXPECT_EQ(fault.value_or(NSError()).code, NSURLErrorCancelled);
    fake.clock->advance(8 * 86400.0);
  }
}

}  // namespace
}  // namespace demo
