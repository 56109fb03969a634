// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_GTK_BROWSERWINDOW_H
#define ZRCORE_TESTS_GTK_BROWSERWINDOW_H

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ChildProcess.h"
#include "HTTPTestServer.h"
#include "VirtualDisplay.h"

/// zrcore-browse in a window, on a desktop of its own, before a server of pages. What the test does it does with mouse
/// and keys; what it knows it reads from the program's report, which says what can be seen.
class BrowserWindow : public testing::Test {
 protected:
  using json = nlohmann::json;

  void SetUp() override;

  /// A link that fills a page, and more.
  static std::string linkTo(const std::string& address) {
    return "<a href='" + address + "' style='display:block;height:2000px'>follow</a>";
  }

  /// Answers `path` with a page of that title and body.
  void page(const std::string& path, const std::string& title, const std::string& body = "");
  /// The address of a page of the server.
  std::string at(const std::string& path) const { return server.url(path); }

  /// How the server is called beside a page's title.
  std::string serverName() const { return "127.0.0.1:" + std::to_string(server.port()); }

  void open(const std::string& address, const std::vector<std::string>& options = {});
  /// Reads reports until one fits. Fails the test, and says what for, when none comes.
  void until(const char* what, const std::function<bool(const json&)>& fits);
  /// Reads reports until the browser was told this, and nothing since.
  void untilEvents(const std::vector<std::string>& events);
  /// Reads reports until that many loads have finished and none is under way.
  void untilFinished(int loads);
  /// Waits until the screen looks otherwise than it did when this was called before, stands still, and is not blank
  /// where pages begin.
  void untilPainted();
  /// Clicks the button, or the text, of that name.
  void click(const std::string& name);
  /// Follows a link that fills the page.
  void clickPage() { display->click(170, 300); }

  bool shows(const std::string& kind, const std::string& name) const { return seen[kind].contains(name); }
  /// The title of an arrow that can be pressed, "off" for a blank one that cannot.
  std::vector<std::string> arrows() const;
  /// The process of the page, below this one; -1 when there is none.
  pid_t webProcess() const;

  std::unique_ptr<VirtualDisplay> display;
  HTTPTestServer server;
  std::unique_ptr<ChildProcess> host;
  json seen;            ///< the last report
  std::string painted;  ///< how the screen looked when it last stood still

  static constexpr const char* kBack = "\xE2\x97\x80\xEF\xB8\x8E";
  static constexpr const char* kForward = "\xE2\x96\xB6\xEF\xB8\x8E";
};

/// The processes below `ancestor`, itself included.
std::vector<pid_t> processesBelow(pid_t ancestor);
std::string nameOfProcess(pid_t process);

#endif
