// SPDX-License-Identifier: Apache-2.0
// What is installed starts wherever it lies, and loads nothing from where it should not.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "ChildProcess.h"
#ifdef ZRCORE_TESTS_WINDOW
#include "VirtualDisplay.h"
#endif

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::vector<std::string> pieces(const std::string& text, char separator) {
  std::vector<std::string> found;
  std::istringstream rest(text + separator);
  for (std::string piece; std::getline(rest, piece, separator);) found.push_back(piece);
  return found;
}

/// The lines with `word` of what a program prints that looks into a file.
std::vector<std::string> linesWith(const std::string& word, const ChildProcess::Arguments& program) {
  // An empty path is none: the loader looks where the files say, and in the system's folders.
  const auto output = ChildProcess::output(program, {{"LD_LIBRARY_PATH", ""}, {"LC_ALL", "C.UTF-8"}});
  std::vector<std::string> found = pieces(output.value_or(""), '\n');
  std::erase_if(found, [&](const std::string& line) { return line.find(word) == line.npos; });
  return found;
}

TEST(Built, LooksForOurLibrariesBesideItselfAndNeverInTheWorkingDirectory) {
  for (const std::string& file : pieces(ZRCORE_SHIPPED, ' ')) {
    SCOPED_TRACE(file);
    const auto entries = linesWith("RUNPATH", {"readelf", "--dynamic", "--wide", file});
    ASSERT_EQ(entries.size(), 1u);
    const std::size_t begin = entries[0].find('[') + 1;
    const std::string path = entries[0].substr(begin, entries[0].find(']') - begin);
    for (const std::string& element : pieces(path, ':')) EXPECT_THAT(element, StartsWith("$ORIGIN")) << path;
  }
}

TEST(Built, IsHardened) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "sanitizers see more";
#endif
  for (const std::string& file : pieces(ZRCORE_SHIPPED, ' ')) {
    SCOPED_TRACE(file);
    const auto has = [&](const char* word, const char* table) {
      return !linesWith(word, {"readelf", table, "--wide", file}).empty();
    };
    EXPECT_TRUE(has("GNU_RELRO", "--segments"));
    EXPECT_TRUE(has("BIND_NOW", "--dynamic") || has("NOW", "--dynamic"))
        << "all symbols are bound before RELRO is sealed";
    EXPECT_FALSE(has(" RWE ", "--segments")) << "what is written is not run";
    EXPECT_TRUE(has("__stack_chk_fail", "--dyn-syms"));
#if defined(__x86_64__)
    EXPECT_FALSE(linesWith("endbr64", {"objdump", "--disassemble", "--section=.text", file}).empty());
#endif
  }
#ifdef NDEBUG  // the checks need an optimizing compiler; where lengths are not known to it: reading descriptors
  const auto files = pieces(ZRCORE_SHIPPED, ' ');
  EXPECT_TRUE(std::any_of(files.begin(), files.end(), [](const std::string& file) {
    return !linesWith("_chk@", {"readelf", "--dyn-syms", "--wide", file}).empty();
  }));
#endif
}

/// All that was built, installed to a prefix that nobody knows of, which was moved once more.
class Installed : public testing::Test {
 protected:
  void SetUp() override {
    folder = fs::path(ZRCORE_FOLDER) / testing::UnitTest::GetInstance()->current_test_info()->name();
    prefix = folder / "moved here";
    fs::remove_all(folder);
    ASSERT_TRUE(ChildProcess::output({ZRCORE_CMAKE, "--install", ZRCORE_BUILD, "--prefix", folder / "first"}));
    fs::rename(folder / "first", prefix);
  }

  fs::path folder, prefix;
};

TEST_F(Installed, LoadsOurLibrariesFromItsOwnPrefix) {
  int files = 0;
  for (const char* const part : {"bin", ZRCORE_LIBRARIES}) {
    for (const auto& entry : fs::directory_iterator(prefix / part)) {
      const bool isLoaded = part == std::string("bin") || entry.path().string().ends_with(".so." ZRCORE_VERSION);
      if (!isLoaded) continue;
      ++files;
      for (const std::string& line : linesWith("libZRCore", {"ldd", entry.path()})) {
        EXPECT_THAT(line, HasSubstr(" => " + prefix.string())) << entry.path();
      }
    }
  }
  EXPECT_GE(files, 3);
}

TEST_F(Installed, ReplaysATrip) {
  const std::string tool = prefix / "bin/zrcore";
  EXPECT_EQ(linesWith("zrcore", {tool, "--version"}), std::vector<std::string>{"zrcore " ZRCORE_VERSION});
  EXPECT_EQ(linesWith("latitude", {tool, "trip", ZRCORE_SAMPLES "/drive.csv", "--json"}).size(), 656u);
}

#ifdef ZRCORE_TESTS_WINDOW
TEST_F(Installed, OpensTheWindowWithTheSamplesThatWereInstalledToo) {
  if (!VirtualDisplay::missing().empty()) GTEST_SKIP() << "this machine lacks " << VirtualDisplay::missing();
  // Another answer than that of the sources, from which a program that was built here would read otherwise.
  std::ofstream(prefix / "share/zrcore/samples/places/nominatim/along-the-drive.json")
      << R"([{"lat":"46.8","lon":"7.4","address":{"road":"Lindenweg","country_code":"ch"}}])";
  const VirtualDisplay display;
  auto environment = display.environment();
  environment["LD_LIBRARY_PATH"] = "";
  environment["PULSE_SERVER"] = "unix:" + (display.folder() / "no-sound").string();
  ChildProcess window({prefix / "bin/zrcore-demo", "--print-state"}, environment, folder / "window.log");
  const auto state = window.readLine(std::chrono::seconds(60));
  ASSERT_TRUE(state) << std::ifstream(folder / "window.log").rdbuf();
  EXPECT_THAT(*state, AllOf(HasSubstr("source=drive.csv"), HasSubstr("listed=1 ")));
}
#endif

}  // namespace
