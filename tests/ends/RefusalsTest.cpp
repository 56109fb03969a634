// SPDX-License-Identifier: Apache-2.0
// What becomes of the tool's work when the system refuses it one thing, whichever that is.
#include <gmock/gmock.h>
#include <sys/syscall.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <map>
#include <set>
#include <stdexcept>
#include <string_view>

#include "FaultProtocol.h"
#include "FaultyRun.h"

using testing::AnyOf;
using testing::HasSubstr;

namespace {

using Files = std::map<std::string, std::string>;

const std::vector<Refusal>& refusals() {
  static const std::vector<Refusal> all{
      {"open",
       {SYS_openat,
#ifdef SYS_open
        SYS_open
#endif
       },
       EMFILE},
      {"write", {SYS_write, SYS_pwrite64, SYS_writev}, ENOSPC},
      {"read", {SYS_read, SYS_pread64}, EIO},
      {"fsync", {SYS_fsync, SYS_fdatasync}, EIO},
      {"rename",
       {SYS_renameat2, SYS_linkat,
#ifdef SYS_rename
        SYS_rename, SYS_link
#endif
       },
       EROFS},
      {"mmap", {SYS_mmap}, ENOMEM},
      {"socket", {SYS_socket}, EMFILE},
      {"connect", {SYS_connect}, ENETUNREACH},
      {"memory", {}, ENOMEM},
  };
  return all;
}

/// A run of the tool that writes into the folder "out", and what it leaves when nothing is refused.
struct Work {
  const char* name;
  std::vector<std::string> arguments;
};

class Refusals : public testing::TestWithParam<const char*> {
 protected:
  Refusals() {
    std::string table = "lat,lon,time\n";
    for (int i = 0; i < 20; ++i) {
      table += "46.8,7." + std::to_string(100 + i) + ",2026-05-09T09:00:" + std::to_string(10 + i) + "Z\n";
    }
    const std::string trip = folder.file("trip.csv", table), out = folder.path("out");
    const std::string packaged = folder.file("tile_config.json", R"({"mapconfig":{"1":{
      "geofence":{"sslurl":"a"},"traffic":{"sslurl":"b"},"geocode":{"sslurl":"c"},"directions":{"url":"d"},
      "guidance":{"url":"e"}}}})");
    works_ = {{"trip", {"trip", trip, "--out", out}},
              {"place", {"place", "--json", ZRCORE_SAMPLES "/places/photon/house.json"}},
              {"config", {"config", "--key", "k", "--base", "http://127.0.0.1:1", "--fallback", packaged}},
              {"say", {"say", "Turn left", "--to", "wav:" + out + "/say.wav"}}};
  }

  Files filesLeft() const {
    Files files;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path("out"))) {
      files[entry.path().filename()] = textOfFile(entry.path());
    }
    return files;
  }

  ToolRun run(const Refusal& refusal, long which) {
    std::filesystem::remove_all(folder.path("out"));
    std::filesystem::create_directory(folder.path("out"));
    return runRefusing(refusal, which, work().arguments, folder, requests_);
  }

  const Work& work() const {
    for (const Work& one : works_) {
      if (std::string_view(one.name) == GetParam()) return one;
    }
    throw std::logic_error("no such work");
  }

  void expectSoundEnd(const ToolRun& run, const ToolRun& whole, const Files& wholeFiles) const;

  ToolFolder folder;
  long requests_ = 0;  ///< of the last run

 private:
  std::vector<Work> works_;
};

/// A picture whose font could not be read is another one, but has its end.
bool isWhole(const std::string& name, const std::string& content, const std::string& expected) {
  if (name.ends_with(".png")) return content.size() > 8 && content.substr(content.size() - 8, 4) == "IEND";
  return name.ends_with(".svg") ? content.ends_with("</svg>\n") : content == expected;
}

void Refusals::expectSoundEnd(const ToolRun& run, const ToolRun& whole, const Files& wholeFiles) const {
  EXPECT_THAT(run.exitCode, AnyOf(0, 1, 2, 3)) << "no crash";
  const Files files = filesLeft();
  for (const auto& [name, content] : files) {
    EXPECT_TRUE(wholeFiles.contains(name)) << name << " is left over";
    EXPECT_TRUE(isWhole(name, content, wholeFiles.contains(name) ? wholeFiles.at(name) : "")) << "half: " << name;
  }
  EXPECT_TRUE(!files.contains("summary.json") || files.size() == wholeFiles.size()) << "vouched for, but not there";
  if (run.exitCode == 0) {
    EXPECT_EQ(run.out, whole.out);
    EXPECT_EQ(files.size(), wholeFiles.size());
  } else {
    EXPECT_THAT(run.err, HasSubstr("zrcore: "));
  }
  std::multiset<std::string> told;
  for (const std::string& line : linesOf(run.err)) told.insert(line);
  for (const std::string& line : told) EXPECT_EQ(told.count(line), 1u) << "told more than once: " << line;
}

/// Each of the first ones, then growing steps. ZRCORE_EVERY_REFUSAL in the environment asks for all, for minutes.
long nextAfter(long which) {
  static const bool isEach = std::getenv("ZRCORE_EVERY_REFUSAL") != nullptr;
  return which + 1 + (isEach ? 0 : std::max(0L, which - 16) / 3);
}

TEST_P(Refusals, OfOneThingEndWithAWordAndWholeFiles) {
  for (const Refusal& refusal : refusals()) {
    const ToolRun whole = run(refusal, 0);
    if (whole.exitCode == kNotInjected) GTEST_SKIP() << "this system does not let a process answer calls of another";
    ASSERT_EQ(whole.exitCode, 0) << whole.err;
    const Files wholeFiles = filesLeft();
    const long all = requests_;
    const std::string_view kind = refusal.name;
    if (kind == "open" || kind == "write" || kind == "memory") {
      ASSERT_GT(all, 0) << "of " << kind << " nothing was counted";
    }
    for (long which = 1; which <= all; which = nextAfter(which)) {
      SCOPED_TRACE(std::string(refusal.name) + " " + std::to_string(which) + " of " + std::to_string(all));
      expectSoundEnd(run(refusal, which), whole, wholeFiles);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, Refusals, testing::Values("trip", "place", "config", "say"),
                         [](const auto& one) { return std::string(one.param); });

}  // namespace
