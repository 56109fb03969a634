// SPDX-License-Identifier: Apache-2.0
// What two hundred pages leave behind.
#include <fstream>
#include <iostream>
#include <sstream>

#include "BrowserWindow.h"

namespace {

/// What a process has written and shares with nobody, in kilobytes. A share of what is shared would not do: it grows
/// when another program that uses the same libraries ends.
long privateKilobytes(pid_t process) {
  std::ifstream sums("/proc/" + std::to_string(process) + "/smaps_rollup");
  for (std::string line; std::getline(sums, line);) {
    if (line.starts_with("Private_Dirty:")) return std::stol(line.substr(14));
  }
  return 0;
}

struct Kilobytes {
  long host = 0;  ///< the program itself
  long all = 0;   ///< with the processes of WebKit
};

std::string numbered(const char* text, int number) { return std::string(text).append(std::to_string(number)); }

TEST_F(BrowserWindow, TwoHundredPagesLeaveNoMemoryBehind) {
  // Pages that lead to one another by themselves, each with something to draw and to remember. What is made once (for
  // the first key, for the hundred pages that a history holds) is made before the first look.
  constexpr int kFirstKey = 20;
  constexpr int kBefore = 140;
  constexpr int kAfter = kBefore + 200;
  for (int i = 0; i <= kAfter; ++i) {
    std::ostringstream body;
    for (int row = 0; row < 200; ++row) body << "<p>Row " << row << " of " << i;
    const bool waitsForAKey = i == kFirstKey || i == kBefore;
    body << "<script>const next=()=>location='/" << i + 1 << "';"
         << (waitsForAKey ? "onkeydown=next"
             : i < kAfter ? "onload=()=>setTimeout(next)"
                          : "")
         << "</script>";
    page(numbered("/", i), numbered("Page ", i), body.str());
  }
  const auto measured = [this] {
    Kilobytes sum;
    sum.host = privateKilobytes(host->pid());
    for (const pid_t process : processesBelow(host->pid())) sum.all += privateKilobytes(process);
    return sum;
  };
  const auto untilPage = [this](int number) {
    const std::string title = numbered("Page ", number);
    until(title.c_str(), [&](const json& report) { return report["title"] == title && !report["spins"]; });
  };
  const auto goOnTo = [&](int number) {
    display->click(170, 30);  // the bar: the page has the keys all the same
    display->key("a");
    untilPage(number);
  };
  open(at("/0"));
  untilPage(kFirstKey);
  goOnTo(kBefore);
  const Kilobytes before = measured();
  goOnTo(kAfter);
  const Kilobytes after = measured();
  std::cout << "memory after " << kBefore << " pages: host " << before.host << " kB, with WebKit's processes "
            << before.all << " kB; after " << kAfter - kBefore << " more: " << after.host << " kB, " << after.all
            << " kB\n";
  // A page that stays costs far more than this: 40 kB each of the program, 160 kB each with what WebKit caches.
  EXPECT_LT(after.host, before.host + 8 * 1024);
  EXPECT_LT(after.all, before.all + 32 * 1024);
}

}  // namespace
