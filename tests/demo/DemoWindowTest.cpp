// SPDX-License-Identifier: Apache-2.0
#include <filesystem>
#include <fstream>

#include "DemoScreen.h"
#include "HTTPTestServer.h"

namespace {

constexpr std::uint32_t kSmoothed = 0x0a5fd1, kRoute = 0xd3dde6, kPlace = 0x1a6b3c, kJump = 0xd9580d;
constexpr std::uint32_t kDarkGround = 0x1b2026, kLightGround = 0xf7f9fb, kErrorGround = 0xf4e3e5;
constexpr int kMiddleX = 350, kMiddleY = 360;  // of the map
constexpr int kSliderLeft = 76, kSliderRight = 568, kSliderY = 704;

class DemoWindow : public DemoScreen {
 protected:
  void seekTo(double fraction) {
    click(static_cast<int>(kSliderLeft + fraction * (kSliderRight - kSliderLeft)), kSliderY);
  }
};

TEST_F(DemoWindow, PlaysTheSampleDriveOnAMapThatFollowsMouseAndKeys) {
  start(1024, 768, false);
  EXPECT_EQ(text("page"), "trip");
  EXPECT_THAT(titles(), testing::Contains("Trip – ZRCore Demo"));
  until("the first fix", [&] { return number("drawn") == 1; });
  until("a word about the sound", [&] {  // what else is missing depends on the machine
    return text("missing").find("o sound") != std::string::npos;
  });

  EXPECT_GT(picture("walk-route").find(kRoute).count, 1000u) << "the way lies there before it is gone";
  key("space");
  until("it to play", [&] { return number("playing") == 1 && number("drawn") >= 5; });
  EXPECT_EQ(number("plain"), number("drawn"));
  key("space");
  until("it to rest", [&] { return number("playing") == 0; });

  seekTo(0.9);
  until("the jump forward", [&] { return number("drawn") > 500; });
  EXPECT_GT(number("halfway"), 200);
  EXPECT_GT(number("significant"), 100);
  const auto before = picture("walk-trip").find(kSmoothed);
  EXPECT_GT(before.count, 500u);

  mouse({"mousemove", std::to_string(kMiddleX), std::to_string(kMiddleY), "mousedown", "1", "mousemove_relative", "--",
         "20", "10", "mousemove_relative", "--", "10", "20", "mouseup", "1"});
  const auto dragged = picture("walk-dragged").find(kSmoothed);
  EXPECT_NEAR(dragged.x - before.x, 30.0, 3.0);
  EXPECT_NEAR(dragged.y - before.y, 30.0, 3.0);

  const long zoom = number("zoom");
  mouse({"mousemove", std::to_string(kMiddleX), std::to_string(kMiddleY), "click", "4"});
  until("the wheel to zoom", [&] { return number("zoom") > zoom; });
  key("ctrl+minus");
  key("ctrl+minus");
  until("the keys to zoom", [&] { return number("zoom") < zoom; });
  key("ctrl+0");
  until("the whole trip", [&] { return number("zoom") == zoom; });
  EXPECT_NEAR(picture("walk-whole").find(kSmoothed).x, before.x, 2.0);
}

TEST_F(DemoWindow, TheSwitchesStopTheReceiverInTheBackgroundAndFindTheJumps) {
  start(1024, 768, false);
  until("the first fix", [&] { return number("drawn") == 1; });
  constexpr int kSwitchX = 968, kBackgroundY = 577, kMeasuredY = 686;
  constexpr std::uint32_t kIsOn = 0x3584e4;
  untilDrawn("the switches", kSwitchX - 13, kMeasuredY, kIsOn);
  click(kSwitchX, kBackgroundY);
  until("the receiver to stop", [&] { return number("runs") == 0; });
  seekTo(0.4);
  until("the trip to go on", [&] { return number("position") > 250; });
  EXPECT_EQ(number("drawn"), 1);
  click(kSwitchX, kBackgroundY);
  until("the receiver to run", [&] { return number("runs") == 1; });
  seekTo(0.9);
  until("fixes", [&] { return number("drawn") > 200; });
  EXPECT_EQ(number("jumps"), 1);  // the other was lost in the background
  EXPECT_GT(picture("walk-jumps").find(kJump).count, 20u);

  click(kSwitchX, kMeasuredY);  // back to the service's own way, which finds none
  seekTo(0.5);
  until("the jump to be taken back", [&] { return number("jumps") == 0; });
  seekTo(0.9);
  until("the same fixes again", [&] { return number("drawn") > 200; });
  EXPECT_EQ(number("jumps"), 0);
}

TEST_F(DemoWindow, APlaceThatIsTappedIsShownOnTheMapAndAPromptThatNobodyHearsIsSaidToBeOne) {
  start(1024, 768, false);
  key("ctrl+2");
  until("the places", [&] { return text("page") == "places"; });
  EXPECT_THAT(titles(), testing::Contains("Places – ZRCore Demo"));
  EXPECT_EQ(number("listed"), 6);
  EXPECT_EQ(picture("walk-places").find(kPlace).count, 0u);
  click(400, 240);
  until("the map", [&] { return text("page") == "trip" && number("marked") == 1; });
  const auto mark = picture("walk-place").find(kPlace);
  EXPECT_GT(mark.count, 80u);
  EXPECT_NEAR(mark.x, kMiddleX + 40, 60.0);  // in the middle, with its name to the right
  EXPECT_NEAR(mark.y, kMiddleY, 20.0);

  key("ctrl+3");
  until("the prompt", [&] { return text("page") == "speak"; });
  key("Return");
  until("a word", [&] { return text("unheard").find("The prompt was not heard: ") != std::string::npos; });
  picture("walk-unheard");
  key("ctrl+question");
  until("the shortcuts", [&] { return number("windows") == 2; });
}

TEST_F(DemoWindow, OpensFilesItIsGivenBearsDamagedOnesAndTakesUpTheLast) {
  start(1024, 768, false, {ZRCORE_SAMPLES "/places/nominatim/damaged.json", ZRCORE_SAMPLES "/README.md"});
  until("the damaged answer", [&] { return text("answer") == "damaged.json"; });
  EXPECT_GT(number("listed"), 0);
  EXPECT_EQ(text("page"), "trip");         // a text is taken for a recording,
  EXPECT_EQ(text("source"), "drive.csv");  // and the sample is there when it is none
  EXPECT_THAT(text("said"), testing::HasSubstr("README.md"));
  picture("walk-notice");
  seekTo(0.5);
  until("a jump in spite of the notice", [&] { return number("position") > 300; });

  const std::string chosen = display->folder() / "short.csv";
  {
    std::ofstream file(chosen);
    file << "time,lat,lon\n";
    for (int second = 0; second <= 100; ++second) file << second << ',' << 46.0 + second * 1e-4 << ",7\n";
  }
  key("ctrl+o");
  until("the file chooser", [&] { return number("windows") == 2; });
  picture("walk-chooser");  // its list has come by then
  mouse({"type", "--delay", "0", chosen});
  key("Return");
  until("the chosen recording", [&] { return text("source") == "short.csv" && text("said").empty(); });
  seekTo(0.5);
  until("a jump", [&] { return number("position") > 40; });
  const long position = number("position");
  key("ctrl+q");
  EXPECT_EQ(exitCode(), 0);

  start(1024, 768, false);
  until("the last recording", [&] { return text("source") == "short.csv" && number("position") == position; });
  EXPECT_EQ(text("answer"), "damaged.json");
  EXPECT_EQ(number("playing"), 0);
  std::filesystem::rename(chosen, chosen + ".away");
  start(1024, 768, false);
  until("the sample in its place", [&] { return text("source") == "drive.csv"; });
  EXPECT_THAT(text("said"), testing::HasSubstr("short.csv"));
}

/// The parts that the keyboard can reach and that a screen reader cannot tell: names of classes are none.
std::vector<std::string> namelessOf(const std::vector<AccessibleTree::Part>& parts) {
  std::vector<std::string> nameless;
  for (const AccessibleTree::Part& part : parts) {
    const bool hasName = !part.name.empty() && !part.name.starts_with("Gtk") && !part.name.starts_with("Adw");
    if (part.isFocusable && (!hasName || part.name.find('_') != std::string::npos)) {
      nameless.push_back(part.role + " '" + part.name + "' in " + part.around);
    }
  }
  return nameless;
}

TEST_F(DemoWindow, EveryPartHasANameAndTheBrowserSpeaksTheDemonstrationsWords) {
  if (!AccessibleTree::isInstalled()) GTEST_SKIP() << "this machine lacks dbus-daemon";
  HTTPTestServer server;
  server.stop();  // its port refuses
  AccessibleTree& tree = startTree();
  start(1024, 768, false);
  until("the first fix", [&] { return number("drawn") == 1; });
  const auto parts = tree.parts();
  EXPECT_GT(parts.size(), 150u);
  EXPECT_THAT(namelessOf(parts), testing::IsEmpty());

  key("ctrl+4");
  until("the page", [&] { return text("page") == "web"; });
  mouse({"type", "--delay", "0", "no address"});
  key("Return");
  until("a word about it", [&] { return text("fault").find("\u201Cno address\u201D") != std::string::npos; });
  EXPECT_GT(picture("walk-no-address").find(kErrorGround).count, 5000u);
  EXPECT_EQ(titles().size(), 1u);
  key("ctrl+a");
  mouse({"type", "--delay", "0", server.url("/")});
  key("Return");
  until("the browser", [&] { return number("windows") == 2; });
  EXPECT_TRUE(tree.waitFor("Try again"));
  EXPECT_TRUE(tree.waitFor(server.url("/")));
  EXPECT_TRUE(tree.press("Share"));
  EXPECT_TRUE(tree.waitFor("Open in Browser"));
  EXPECT_THAT(namelessOf(tree.partsOfNewestWindow()), testing::IsEmpty());

  EXPECT_TRUE(tree.press("Menu"));
  EXPECT_TRUE(tree.press("About ZRCore Demo"));
  EXPECT_TRUE(tree.waitFor(ZRCORE_VERSION));
  EXPECT_TRUE(tree.waitFor("Apache License, Version 2.0"));
}

struct Look {
  const char* name;
  int width, height;
  bool isDark;
};

class DemoLooks : public DemoWindow, public testing::WithParamInterface<Look> {};

/// The pictures are for people; what is checked is that each page fits and follows the colours.
TEST_P(DemoLooks, EachPageIsDrawn) {
  const auto& [name, width, height, isDark] = GetParam();
  start(width, height, isDark);
  until("the first fix", [&] { return number("drawn") == 1; });
  key("ctrl+End");
  until("the end of the trip", [&] { return number("drawn") > 600; });
  const Pixels trip = picture(std::string("trip-") + name);
  const std::size_t map = static_cast<std::size_t>(width * height) / 3;
  EXPECT_GT(trip.find(isDark ? kDarkGround : kLightGround).count, map);
  for (const auto& [shortcut, page] :
       {std::pair("ctrl+2", "places"), std::pair("ctrl+3", "speak"), std::pair("ctrl+4", "web")}) {
    key(shortcut);
    until(page, [&, expected = std::string(page)] { return text("page") == expected; });
    EXPECT_FALSE(picture(std::string(page) + "-" + name) == trip);
  }
  if (width > 400) return;
  key("ctrl+1");
  key("F9");
  picture(std::string("details-") + name);
}

INSTANTIATE_TEST_SUITE_P(, DemoLooks,
                         testing::Values(Look{"phone-light", 360, 720, false}, Look{"phone-dark", 360, 720, true},
                                         Look{"desktop-light", 1024, 768, false},
                                         Look{"desktop-dark", 1024, 768, true}),
                         [](const auto& instance) {
                           std::string name = instance.param.name;
                           name[name.find('-')] = '_';
                           return name;
                         });

}  // namespace
