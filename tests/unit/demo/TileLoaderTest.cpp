// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRPlatformFake.h>
#include <demo/tiles/TileLoader.h>
#include <gmock/gmock.h>

#include <algorithm>

namespace demo {
namespace {

/// The platform of this process; a picture is "WIDTHxHEIGHT".
ZRFakePlatform& platform() {
  static ZRFakePlatform& fake = [&]() -> ZRFakePlatform& {
    static ZRFakePlatform made;
    for (const auto& [file, across] : {std::pair("tile", 256U), std::pair("fine", 512U), std::pair("huge", 513U)}) {
      UIImage image{across, 1, std::vector<std::uint8_t>(std::size_t{4} * across, 255)};
      made.images->images[file] = std::make_shared<const UIImage>(std::move(image));
    }
    EXPECT_TRUE(ZRPlatformInstall(made.platform()));
    return made;
  }();
  return fake;
}

class TileLoaderTest : public testing::Test {
 protected:
  TileLoaderTest() {
    platform().httpSession->running.clear();
    platform().httpSession->resumed = 0;
    loader = TileLoader::make({.name = "a.example",
                               .addresses = TileTemplate("http://a.example/{z}/{x}/{y}"),
                               .zooms = {},
                               .attribution = "A",
                               .headers = {{"User-Agent", "test"}},
                               .session = platform().httpSession,
                               .isAtHand = [](const NSURL&) { return false; },
                               .forget = [this](const NSURL& tile) { forgotten.push_back(tile.absoluteString()); }},
                              *platform().clock, [this] { ++changes; });
  }

  std::vector<std::shared_ptr<ZRFakeDataTask>>& running() const { return platform().httpSession->running; }
  /// Answers what is on its way, and what is asked for after that.
  template <class Answer>
  void answerAll(const Answer& answer) {
    while (!running().empty()) {
      answer(*running().front());
      platform().mainQueue->run();
    }
  }
  std::vector<MapTile> show(int zoom = 10) { return loader->show(viewOf(zoom)); }

  /// 3 by 3 tiles, the middle one in the middle.
  static trip::MapTransform viewOf(int zoom) {
    const double tile = 67108864.0 / 1024;
    return {{500.5 * tile, 300.5 * tile}, 256.0 / tile * std::ldexp(1.0, zoom - 10), {0.0, 0.0, 700.0, 700.0}};
  }

  std::vector<std::string> forgotten;
  int changes = 0;
  std::shared_ptr<TileLoader> loader;
};

TEST_F(TileLoaderTest, AsksForEachTileOnceAFewAtATimeFromTheMiddle) {
  EXPECT_TRUE(show().empty());
  show();
  ASSERT_EQ(running().size(), TileLoader::kMostRequests);
  EXPECT_EQ(running()[0]->request().URL->absoluteString(), "http://a.example/10/500/300");
  EXPECT_EQ(running()[0]->request().HTTPHeaders, (ZRHTTPHeaders{{"User-Agent", "test"}}));
  running()[0]->answer(200, "tile");
  platform().mainQueue->run();
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(show().size(), 1u);
  EXPECT_EQ(running().size(), TileLoader::kMostRequests);
  answerAll([](ZRFakeDataTask& task) { task.answer(200, "fine"); });
  EXPECT_EQ(show().size(), 9u);
  EXPECT_EQ(platform().httpSession->resumed, 9u);

  const auto closer = show(11);  // parents stand in
  ASSERT_EQ(closer.size(), 16u);
  EXPECT_EQ(closer[0].whole.width, 512.0);
  EXPECT_EQ(loader->wantedTiles(), 16u);
  show(10);
  answerAll([](ZRFakeDataTask& task) { task.answer(200, "tile"); });
  EXPECT_EQ(platform().httpSession->resumed, 9u + TileLoader::kMostRequests) << "what nobody wants is not asked for";
  show(11);
  answerAll([](ZRFakeDataTask& task) { task.answer(200, "tile"); });
  EXPECT_EQ(platform().httpSession->resumed, 9u + 16u) << "what came late was kept";
  EXPECT_EQ(loader->fault(), "");

  show(12);
  const auto cut = running();
  loader.reset();
  for (const auto& task : cut) EXPECT_EQ(task->state(), NSURLSessionTaskState::canceling);
  platform().mainQueue->run();
}

TEST_F(TileLoaderTest, TriesAgainNoSoonerThanItShouldAndSaysOnceWhy) {
  using Answer = void (*)(ZRFakeDataTask&);
  struct Row {
    Answer answer;
    const char* fault;
    bool isForgotten;
  };
  const Row rows[] = {
      {[](ZRFakeDataTask& task) { task.fail(NSURLErrorTimedOut); }, "No map tiles: NSURLErrorDomain", false},
      {[](ZRFakeDataTask& task) { task.answer(403, "tile"); }, "No map tiles: a.example answers HTTP 403", false},
      {[](ZRFakeDataTask& task) { task.answer(500, "words"); }, "No map tiles: a.example answers HTTP 500", false},
      {[](ZRFakeDataTask& task) { task.answer(200, "words"); }, "No map tiles: a.example sends what is no picture",
       true},
      {[](ZRFakeDataTask& task) { task.answer(200, "huge"); }, "No map tiles: a.example sends what is no picture",
       true},
      {[](ZRFakeDataTask& task) { task.answer(404, "words"); }, "No map tiles: a.example has none for this place",
       false},
  };
  std::size_t asked = 0;
  for (double wait = TileLoader::kFirstWaitSeconds; const Row& row : rows) {
    SCOPED_TRACE(row.fault);
    forgotten.clear();
    show();
    answerAll(row.answer);
    EXPECT_THAT(loader->fault(), testing::StartsWith(row.fault));
    EXPECT_EQ(loader->wantedTiles(), 0u);
    EXPECT_EQ(!forgotten.empty(), row.isForgotten);
    asked += 9;
    EXPECT_EQ(platform().httpSession->resumed, asked);
    platform().clock->advance(wait - 0.1);
    loader->step();
    show();
    EXPECT_EQ(platform().httpSession->resumed, asked) << "too soon";
    platform().clock->advance(0.1);
    wait = std::min(2 * wait, TileLoader::kLongestWaitSeconds);
  }
  loader->step();
  EXPECT_EQ(running().size(), TileLoader::kMostRequests);
  EXPECT_NE(loader->fault(), "") << "not while it is tried again";
  running()[0]->answer(200, "tile");
  platform().mainQueue->run();
  EXPECT_EQ(loader->fault(), "") << "where some are missing and others are there, that is the map's edge";
}

TEST(UseOrder, LetsGoWhatWasNotUsedForLongestUnlessItIsNeeded) {
  UseOrder<int> order;
  for (int i = 0; i < 10; ++i) order.use(i, 100);
  EXPECT_TRUE(order.use(0));
  EXPECT_FALSE(order.use(99));
  EXPECT_THAT(order.shrink(600, [](int key) { return key == 2; }), testing::ElementsAre(1, 3, 4, 5));
  EXPECT_EQ(order.bytes(), 600u);
  EXPECT_THAT(order.shrink(0, [](int key) { return key == 2; }), testing::ElementsAre(6, 7, 8, 9, 0));
  order.use(2, 50);
  EXPECT_EQ(order.bytes(), 50u);
}

}  // namespace
}  // namespace demo
