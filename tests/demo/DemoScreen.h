// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_DEMO_DEMOSCREEN_H
#define ZRCORE_TESTS_DEMO_DEMOSCREEN_H

#include <gmock/gmock.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "AccessibleTree.h"
#include "VirtualDisplay.h"

/// What a part of the screen looks like.
class Pixels {
 public:
  /// @param file  a PNG
  explicit Pixels(const std::string& file);

  /// How many pixels are about of that colour (0xrrggbb), where, and the middle of them.
  struct Patch {
    std::size_t count = 0;
    double x = 0.0, y = 0.0;
  };
  Patch find(std::uint32_t color) const;
  /// Whether the pixel at (x, y) is about of that colour.
  bool isAt(int x, int y, std::uint32_t color) const;
  bool operator==(const Pixels&) const = default;

 private:
  int width_ = 0;
  std::vector<std::uint32_t> colors_;
};

/// zrcore-demo in a window of a given size, on a desktop of its own. What a test does it does with mouse and keys; what
/// it knows it reads from the screen, the windows' titles and the line that the program prints when something changes.
class DemoScreen : public testing::Test {
 protected:
  void SetUp() override;

  /// @param arguments  files and options
  void start(int width, int height, bool isDark, const std::vector<std::string>& arguments = {});
  /// From the next start on the window tells `tree` of its parts.
  AccessibleTree& startTree();
  /// Reads lines until one fits. Fails the test, and says what for, when none comes.
  void until(const char* what, const std::function<bool()>& fits);
  /// Waits for the program's end. @return its exit code; absent when it was killed, or goes on.
  std::optional<int> exitCode();
  /// A value of the last line: text("page"), number("drawn").
  std::string text(const std::string& name) const;
  long number(const std::string& name) const { return std::atol(text(name).c_str()); }

  void key(const std::string& name) const { display->key(name); }
  void click(int x, int y) const { display->click(x, y); }
  /// Words for xdotool.
  void mouse(const std::vector<std::string>& words) const;
  /// The titles of all windows that can be seen.
  std::vector<std::string> titles() const;
  /// The window, once nothing moves in it any more, kept under this name beside the tests.
  Pixels picture(const std::string& name) const;
  /// Looks until the window is drawn so far that the pixel at (x, y) is about of that colour. What is clicked before
  /// may lie elsewhere.
  void untilDrawn(const char* what, int x, int y, std::uint32_t color) const;

  std::unique_ptr<VirtualDisplay> display;

 private:
  std::unique_ptr<AccessibleTree> tree_;
  int width_ = 0, height_ = 0;
  std::unique_ptr<ChildProcess> program_;
  std::string line_;
};

#endif
