// SPDX-License-Identifier: Apache-2.0
// What the tool needs for long trips and large files, and what a kill leaves of a recording.
#include <gtest/gtest.h>
#include <signal.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "RunTool.h"

namespace {

/// A made-up drive of so many fixes, one each second.
std::string longRecording(const ToolFolder& folder, int fixes) {
  const std::string path = folder.path("long.csv");
  std::ofstream file(path);
  file.precision(10);
  file << "time,lat,lon,accuracy,speed,course\n";
  double latitude = 45.0, longitude = 7.0;
  for (int i = 0; i < fixes; ++i) {
    latitude += i / 700 % 2 == 0 ? 1e-4 : -9e-5;
    longitude += i / 300 % 3 == 0 ? -1e-5 : 2e-5;
    file << 1700000000 + i << ',' << latitude << ',' << longitude << ",5,14," << i % 360 << '\n';
  }
  return path;
}

long peakKilobytes(int fixes) {
  const ToolFolder folder;
  const ToolRun run = folder.run({"trip", longRecording(folder, fixes), "--quiet", "--out", folder.path("out")});
  EXPECT_EQ(run.exitCode, 0) << run.err;
  return run.peakKilobytes;
}

TEST(TripMemory, AMillionFixesTakeNoMoreThanAHundredThousand) {
  const long some = peakKilobytes(100'000), many = peakKilobytes(1'000'000);
  RecordProperty("peakKilobytesOf100000", static_cast<int>(some));
  RecordProperty("peakKilobytesOf1000000", static_cast<int>(many));
  EXPECT_LE(static_cast<double>(many), 1.2 * static_cast<double>(some));
}

struct Shape {
  const char* name;
  std::string head, unit, tail;  // a "#" in the unit is a number that grows
};

/// A document of a sixteenth of fifty megabytes, so that what doubles in size is as empty as it is there. It never
/// stands in this process, whose size a child's peak begins with.
std::string fileOf(const ToolFolder& folder, const Shape& shape) {
  const std::string path = folder.path("a.json");
  std::ofstream file(path);
  file << shape.head;
  const std::size_t number = shape.unit.find('#');
  for (int i = 0; file.tellp() < 3'125'000; ++i) {
    if (number == shape.unit.npos) {
      file << shape.unit;
    } else {
      file << shape.unit.substr(0, number) << i << shape.unit.substr(number + 1);
    }
  }
  file << shape.tail;
  return path;
}

TEST(PlaceMemory, IsAtMostEightBytesAByteWhateverTheShape) {
  const std::string text(60'000, 'a');
  std::string levels = "1";
  for (int i = 0; i < 4000; ++i) levels = "[{\"\":" + levels + "}]";
  const Shape shapes[] = {
      {"objects", "[1", ",{}", "]"},
      {"arrays", "[1", ",[]", "]"},
      {"numbers", "[1", ",1", "]"},
      {"objects_in_objects", "[1", R"(,{"a":{}})", "]"},
      {"objects_with_a_wrong_end", "[1", ",\n{}", "}"},
      {"levels", "[1", "," + levels, "]"},
      {"keys", "{\"zip\":1", ",\"#\":{}", "}"},
      {"unknown_keys", "[1", ",{\"zip\":1,\"#\":1}", "]"},
      {"results", "[1", R"(,{"zip":"1"})", "]"},
      {"cities", "[1", R"(,{"lon":"1","lat":"2","osm_id":3,"address":{"city":"a","country":"b"}})", "]"},
      {"long_texts", "[1", R"(,{"city":")" + text + R"(","state":")" + text + "\"}", "]"},
      {"one_text", R"({"city":")", "aaaaaaaa", "\"}"},
      {"one_text_without_an_end", R"({"city":")", "aaaaaaaa", ""},
      {"blanks", "", "\n\n\n\n\n\n\n\n", "x"},
      {"one_number", "[1", "11111111", "]"},
  };
  // The allocator gives blocks of 32 MiB back at once; a sixteenth of that here.
  ASSERT_EQ(::setenv("MALLOC_MMAP_THRESHOLD_", "2097152", 1), 0);
  const ToolFolder folder;
  const auto peakBytes = [](const std::string& file) {
    const ToolStreams streams{.out = "/dev/null", .err = "/dev/null"};
    return 1024 * static_cast<double>(waitForTool(startTool({"place", file, "--geojson"}, streams)).peakKilobytes);
  };
  const double empty = peakBytes(folder.file("empty.json", "[]"));
  for (const Shape& shape : shapes) {
    const std::string file = fileOf(folder, shape);
    const double bytesAByte = (peakBytes(file) - empty) / static_cast<double>(std::filesystem::file_size(file));
    RecordProperty(std::string("bytesAByteOf_") + shape.name, std::to_string(bytesAByte));
    EXPECT_GE(bytesAByte, 0.25) << shape.name << ": less than the bytes themselves was measured";
    EXPECT_LE(bytesAByte, 8.0) << shape.name;
  }
}

TEST(WatchKills, AKillAtAnyMomentLeavesAWholeRecording) {
  const ToolFolder folder;
  // Fixes that are due at once, because they have one time, in pairs of one place.
  std::string text = "time,lat,lon,accuracy,speed,course\n";
  for (int i = 0; i < 20000; ++i) text += "1778319000,52.5," + std::to_string(13.4 + i / 2 * 1e-5) + ",5,14,90\n";
  const std::string file = folder.file("drive.csv", text);
  for (int lines : {2, 3, 50, 400, 2000, 5000}) {
    const std::string record = folder.path(std::to_string(lines) + ".gpx");
    ToolPipe output;
    const pid_t tool =
        startTool({"watch", "file:" + file, "--record", record}, {"/dev/null", output.path(), folder.path("err")});
    for (int line = 0; line < lines; ++line) output.readLine();
    ::kill(tool, SIGKILL);
    EXPECT_EQ(waitForTool(tool).exitCode, -1);
    const ToolRun read = folder.run({"trip", record, "--json"});
    EXPECT_EQ(read.exitCode, 0) << read.err;
    EXPECT_GE(linesOf(read.out).size(), static_cast<std::size_t>(lines - 1)) << "shown, and not written";
  }
}

}  // namespace
