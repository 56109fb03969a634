// SPDX-License-Identifier: Apache-2.0
#include "DemoScreen.h"

#include <cairo.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

namespace {

constexpr milliseconds kPatience{60000};
constexpr int kNear = 10;  // of 255: fonts and edges are smoothed, areas and thick lines are not

bool isAbout(std::uint32_t a, std::uint32_t b) {
  const auto isNear = [a, b](int shift) {
    return std::abs(static_cast<int>((a >> shift) & 0xff) - static_cast<int>((b >> shift) & 0xff)) <= kNear;
  };
  return isNear(16) && isNear(8) && isNear(0);
}

}  // namespace

Pixels::Pixels(const std::string& file) {
  cairo_surface_t* const surface = cairo_image_surface_create_from_png(file.c_str());
  EXPECT_EQ(cairo_surface_status(surface), CAIRO_STATUS_SUCCESS) << file;
  width_ = cairo_image_surface_get_width(surface);
  for (int y = 0; y < cairo_image_surface_get_height(surface); ++y) {
    const auto* const bytes = cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface);
    const auto* const row = reinterpret_cast<const std::uint32_t*>(bytes);
    for (int x = 0; x < width_; ++x) colors_.push_back(row[x] & 0xffffff);
  }
  cairo_surface_destroy(surface);
}

Pixels::Patch Pixels::find(std::uint32_t color) const {
  Patch patch;
  for (std::size_t i = 0; i < colors_.size(); ++i) {
    if (!isAbout(colors_[i], color)) continue;
    ++patch.count;
    patch.x += static_cast<double>(i % static_cast<std::size_t>(width_));
    patch.y += static_cast<double>(i / static_cast<std::size_t>(width_));
  }
  if (patch.count == 0) return patch;
  patch.x /= static_cast<double>(patch.count);
  patch.y /= static_cast<double>(patch.count);
  return patch;
}

bool Pixels::isAt(int x, int y, std::uint32_t color) const {
  return isAbout(colors_.at(static_cast<std::size_t>(y * width_ + x)), color);
}

void DemoScreen::SetUp() {
  std::string missing = VirtualDisplay::missing();
  if (!ChildProcess::exists("import")) missing += missing.empty() ? "import" : ", import";
  if (!missing.empty()) GTEST_SKIP() << "this machine lacks " << missing << " (scripts/setup installs them)";
  display = std::make_unique<VirtualDisplay>();
  // Nothing glides or fades: what a picture shows does not depend on when it is taken.
  std::filesystem::create_directories(display->folder() / "config/gtk-4.0");
  std::ofstream(display->folder() / "config/gtk-4.0/settings.ini") << "[Settings]\ngtk-enable-animations=false\n"
                                                                      "gtk-cursor-blink=false\n";
}

void DemoScreen::start(int width, int height, bool isDark, const std::vector<std::string>& arguments) {
  width_ = width;
  height_ = height;
  auto environment = display->environment();
  environment["ADW_DEBUG_COLOR_SCHEME"] = isDark ? "prefer-dark" : "prefer-light";
  environment["GSK_RENDERER"] = "cairo";
  environment["PULSE_SERVER"] = "unix:" + (display->folder() / "no-sound").string();
  if (tree_) {
    environment["GTK_A11Y"] = "atspi";
    environment["AT_SPI_BUS_ADDRESS"] = environment["DBUS_SESSION_BUS_ADDRESS"] = tree_->busAddress();
  }
  line_.clear();
  program_.reset();
  ChildProcess::Arguments command{ZRCORE_DEMO, "--print-state"};
  command.insert(command.end(), arguments.begin(), arguments.end());
  program_ = std::make_unique<ChildProcess>(command, environment);
  until("the window to come up", [] { return true; });
  mouse({"search", "--sync", "--onlyvisible", "--name", "ZRCore Demo", "windowmove", "0", "0", "windowsize", "--sync",
         std::to_string(width), std::to_string(height), "windowfocus", "--sync"});
}

AccessibleTree& DemoScreen::startTree() {
  tree_ = std::make_unique<AccessibleTree>();
  return *tree_;
}

void DemoScreen::until(const char* what, const std::function<bool()>& fits) {
  if (HasFatalFailure()) return;  // what did not come will not come now
  const auto deadline = Clock::now() + kPatience;
  while (line_.empty() || !fits()) {
    const auto left = std::chrono::duration_cast<milliseconds>(deadline - Clock::now());
    const auto line = left.count() > 0 ? program_->readLine(left) : std::nullopt;
    if (!line) FAIL() << "waited in vain for " << what << "; last: " << line_;
    line_ = *line;
  }
}

std::optional<int> DemoScreen::exitCode() { return program_->exitCode(kPatience); }

std::string DemoScreen::text(const std::string& name) const {
  const std::string key = " " + name + "=";
  const std::string line = " " + line_;
  const std::size_t at = line.find(key);
  if (at == std::string::npos) return {};
  const std::size_t begin = at + key.size();
  // Values may have blanks in them: this one ends before the next name, or with the line.
  const std::size_t equals = line.find('=', begin);
  const std::size_t end = equals == std::string::npos ? equals : line.rfind(' ', equals);
  return line.substr(begin, end - begin);
}

void DemoScreen::mouse(const std::vector<std::string>& words) const {
  ChildProcess::Arguments arguments{"xdotool"};
  arguments.insert(arguments.end(), words.begin(), words.end());
  EXPECT_TRUE(ChildProcess::output(arguments, display->environment())) << "xdotool " << words.front();
}

std::vector<std::string> DemoScreen::titles() const {
  std::vector<std::string> titles;
  const auto windows =
      ChildProcess::output({"xdotool", "search", "--onlyvisible", "--name", ""}, display->environment());
  std::istringstream ids(windows.value_or(""));
  for (std::string id; std::getline(ids, id);) {
    auto title = ChildProcess::output({"xdotool", "getwindowname", id}, display->environment()).value_or("");
    while (title.ends_with('\n')) title.pop_back();
    if (!title.empty()) titles.push_back(title);
  }
  return titles;
}

Pixels DemoScreen::picture(const std::string& name) const {
  const std::string file = std::string(ZRCORE_PICTURES) + "/" + name + ".png";
  const auto take = [&] {
    EXPECT_TRUE(display->takePicture(file, width_, height_));
    return Pixels(file);
  };
  const auto deadline = Clock::now() + kPatience;
  Pixels last = take();
  for (;;) {
    Pixels now = take();
    if (now == last || Clock::now() > deadline) return now;
    last = std::move(now);
  }
}

void DemoScreen::untilDrawn(const char* what, int x, int y, std::uint32_t color) const {
  const auto deadline = Clock::now() + kPatience;
  while (!picture("awaited").isAt(x, y, color)) {
    if (Clock::now() > deadline) FAIL() << "looked in vain for " << what;
  }
}
