// SPDX-License-Identifier: Apache-2.0
#include "BrowserWindow.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

namespace {

constexpr milliseconds kPatience{60000};  ///< for the next change
constexpr milliseconds kQuiet{60};        ///< three times the program's interval

pid_t parentOf(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("PPid:")) return static_cast<pid_t>(std::stol(line.substr(5)));
  }
  return -1;
}

}  // namespace

std::string nameOfProcess(pid_t process) {
  std::string name;
  std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm"), name);
  return name;
}

std::vector<pid_t> processesBelow(pid_t ancestor) {
  std::vector<pid_t> found;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const std::string name = entry.path().filename();
    pid_t process = -1;
    if (std::from_chars(name.data(), name.data() + name.size(), process).ec != std::errc()) continue;
    for (pid_t above = process; above > 1; above = parentOf(above)) {
      if (above == ancestor) {
        found.push_back(process);
        break;
      }
    }
  }
  return found;
}

void BrowserWindow::SetUp() {
  const std::string missing = VirtualDisplay::missing();
  if (!missing.empty()) GTEST_SKIP() << "this machine lacks " << missing << " (scripts/setup installs them)";
  display = std::make_unique<VirtualDisplay>();
}

void BrowserWindow::page(const std::string& path, const std::string& title, const std::string& body) {
  server.on(path,
            HTTPTestServer::answering(200, "<!doctype html><meta charset=utf-8><title>" + title + "</title>" + body,
                                      "Content-Type: text/html\r\n"));
}

void BrowserWindow::open(const std::string& address, const std::vector<std::string>& options) {
  host.reset();
  ChildProcess::Arguments arguments{ZRCORE_BROWSE, "--size=360x720"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  arguments.push_back(address);
  host = std::make_unique<ChildProcess>(arguments, display->environment(), display->folder() / "host.log");
  seen = {};
}

void BrowserWindow::until(const char* what, const std::function<bool(const json&)>& fits) {
  while (seen.is_null() || !fits(seen)) {
    const auto line = host->readLine(kPatience);
    if (!line) {
      std::stringstream log;
      log << std::ifstream(display->folder() / "host.log").rdbuf();
      FAIL() << "never came: " << what << "\nlast seen: " << seen.dump(1) << "\nits log: " << log.str();
    }
    seen = json::parse(*line);
  }
}

void BrowserWindow::untilEvents(const std::vector<std::string>& events) {
  until(testing::PrintToString(events).c_str(), [&](const json& report) { return report["events"] == events; });
}

void BrowserWindow::untilFinished(int loads) {
  until("the end of a load", [&](const json& report) {
    const auto& events = report["events"];
    return std::count(events.begin(), events.end(), "finish") == loads && !report["spins"];
  });
}

void BrowserWindow::untilPainted() {
  const auto deadline = Clock::now() + kPatience;
  const ChildProcess::Arguments look{
      "import", "-window", "root", "-crop", "360x720+0+0", "-depth", "8", "-format", "%# %[pixel:p{60,80}]", "info:"};
  const auto isBlank = [](const std::string& looks) {
    return looks.find("white") != std::string::npos || looks.find("255)") != std::string::npos;
  };
  std::string before;
  for (std::string now = painted; now == painted || now != before || isBlank(now);) {
    ASSERT_LT(Clock::now(), deadline) << "the screen does not change, or does not stand still: " << now;
    before = std::exchange(now, ChildProcess::output(look, display->environment()).value_or("(255)"));
  }
  painted = before;
}

void BrowserWindow::click(const std::string& name) {
  do {
    until(name.c_str(), [&](const json&) { return shows("buttons", name) || shows("texts", name); });
    if (HasFatalFailure()) return;
    while (const auto line = host->readLine(kQuiet)) seen = json::parse(*line);  // until its place stands still
  } while (!shows("buttons", name) && !shows("texts", name));                    // laid out anew meanwhile
  const json& place = shows("buttons", name) ? seen["buttons"][name] : seen["texts"][name];
  display->click(place[0], place[1]);
}

std::vector<std::string> BrowserWindow::arrows() const {
  std::vector<std::string> looks;
  for (const char* const arrow : {"back", "forward"}) {
    const std::string title = seen[arrow]["title"];
    const bool isEnabled = seen[arrow]["enabled"];
    looks.push_back(isEnabled ? title : title.empty() ? "off" : title + " off");
  }
  return looks;
}

pid_t BrowserWindow::webProcess() const {
  for (const pid_t process : processesBelow(host->pid())) {
    if (nameOfProcess(process).starts_with("WebKitWebProces")) return process;
  }
  return -1;
}
