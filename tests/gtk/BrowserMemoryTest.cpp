// What two hundred pages leave behind.
#include <fstream>
#include <iostream>
#include <sstream>

#include "BrowserWindow.h"

namespace {

/// What a process keeps for itself of the memory, its share of what it shares included, in kilobytes.
long proportionalKilobytes(pid_t process) {
  std::ifstream sums("/proc/" + std::to_string(process) + "/smaps_rollup");
  for (std::string line; std::getline(sums, line);) {
    if (line.starts_with("Pss:")) return std::stol(line.substr(4));
  }
  return 0;
}

struct Kilobytes {
  long host = 0;  ///< the program itself
  long all = 0;   ///< with the processes of WebKit
};

std::string numbered(const char* text, int number) { return std::string(text).append(std::to_string(number)); }

TEST_F(BrowserWindow, TwoHundredPagesLeaveNoMemoryBehind) {
  // Pages that lead to one another by themselves, each with something to draw and to remember.
  constexpr int kWarmUp = 60;
  constexpr int kMeasured = 200;
  for (int i = 0; i <= kWarmUp + kMeasured; ++i) {
    std::ostringstream body;
    for (int row = 0; row < 200; ++row) body << "<p>Row " << row << " of " << i;
    const bool waitsForAKey = i == kWarmUp;
    body << "<script>const next=()=>location='/" << i + 1 << "';"
         << (waitsForAKey              ? "onkeydown=next"
             : i < kWarmUp + kMeasured ? "onload=()=>setTimeout(next)"
                                       : "")
         << "</script>";
    page(numbered("/", i), numbered("Page ", i), body.str());
  }
  const auto measured = [this] {
    Kilobytes sum;
    sum.host = proportionalKilobytes(host->pid());
    for (const pid_t process : processesBelow(host->pid())) sum.all += proportionalKilobytes(process);
    return sum;
  };
  open(at("/0"));
  const auto untilPage = [this](int number) {
    const std::string title = numbered("Page ", number);
    until(title.c_str(), [&](const json& report) { return report["title"] == title && !report["spins"]; });
  };
  untilPage(kWarmUp);
  const Kilobytes before = measured();
  display->click(170, 30);  // the bar: the page has the keys all the same
  display->key("a");
  untilPage(kWarmUp + kMeasured);
  const Kilobytes after = measured();
  std::cout << "memory after " << kWarmUp << " pages: host " << before.host << " kB, with WebKit's processes "
            << before.all << " kB; after " << kMeasured << " more: " << after.host << " kB, " << after.all << " kB\n";
  EXPECT_LT(after.host, before.host + before.host / 20 + 4096) << "the program itself";
  EXPECT_LT(after.all, before.all + before.all / 5) << "with WebKit's caches, which have a limit";
}

}  // namespace
