// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <trip/OutputText.h>
#include <trip/outputs/FileOutput.h>
#include <trip/outputs/GpxRecording.h>
#include <trip/outputs/OutputError.h>
#include <trip/outputs/Outputs.h>
#include <trip/outputs/TripJson.h>

#include <csignal>
#include <limits>
#include <nlohmann/json.hpp>
#include <sstream>

#include "OutputsSupport.h"

namespace trip {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::Each;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(TimeText, IsUtcToTheMillisecondAndLosesNoTimeOutsideTheCalendar) {
  const std::pair<double, const char*> rows[] = {
      {0.0, "1970-01-01T00:00:00.000Z"},
      {-0.5, "1969-12-31T23:59:59.500Z"},
      {951782399.9996, "2000-02-29T00:00:00.000Z"},  // rounding carries into the next day, a leap day
      {1778319000.25, "2026-05-09T09:30:00.250Z"},
      {-62135596800.0, "0001-01-01T00:00:00.000Z"},
      {253402300800.0, "253402300800"},
      {-1e300, "-1e+300"},
  };
  for (const auto& [seconds, text] : rows) EXPECT_EQ(timeText(seconds), text);
}

class Csv : public WithFolder {
 protected:
  /// The cells of each line after the header, by column name.
  std::vector<std::map<std::string, std::string>> read() {
    std::istringstream text(contentsOf(folder / "t.csv"));
    std::vector<std::map<std::string, std::string>> rows;
    std::vector<std::string> columns;
    for (std::string line; std::getline(text, line);) {
      std::istringstream cells(line + ",");  // getline swallows a last empty cell otherwise
      std::vector<std::string> values;
      for (std::string cell; std::getline(cells, cell, ',');) values.push_back(cell);
      if (columns.empty()) {
        columns = values;
        continue;
      }
      EXPECT_EQ(values.size(), columns.size()) << line;
      auto& row = rows.emplace_back();
      for (std::size_t i = 0; i < std::min(values.size(), columns.size()); ++i) row[columns[i]] = values[i];
    }
    return rows;
  }
};

TEST_F(Csv, BeginsWithTheColumnsOfARecordingAndReadsBackTheSameNumbers) {
  TripRow row = rowAt(0.1 + 0.2, -179.99999999999997, 0);
  row.altitudeMeters = -3.5;
  row.accuracyMeters = 1e-7;
  row.snapped = CLLocationCoordinate2D{1.0 / 3.0, 2.0};
  row.stable = true;
  const auto csv = makeCsvOutput(folder / "t.csv", false);
  csv->row(row);
  csv->finish({});
  csv->commit();

  EXPECT_THAT(contentsOf(folder / "t.csv"), StartsWith("time,lat,lon,altitude,accuracy,speed,course,"));
  ASSERT_THAT(read(), SizeIs(1));
  const auto cells = read()[0];
  const auto number = [&](const char* name) { return std::stod(cells.at(name)); };
  EXPECT_EQ(number("lat"), row.coordinate.latitude);
  EXPECT_EQ(number("lon"), row.coordinate.longitude);
  EXPECT_EQ(number("altitude"), -3.5);
  EXPECT_EQ(number("accuracy"), 1e-7);
  EXPECT_EQ(number("smooth_speed"), 9.0);
  EXPECT_EQ(number("smooth_course"), 88.0);
  EXPECT_EQ(number("snapped_lat"), 1.0 / 3.0);
  EXPECT_EQ(cells.at("time"), "2023-11-14T22:13:20.000Z");
  EXPECT_EQ(cells.at("significant") + cells.at("jump") + cells.at("stable"), "101");
}

TEST_F(Csv, LeavesCellsOfUnknownValuesEmpty) {
  TripRow row;
  row.speedMetersPerSecond = kNaN;
  row.secondsSince1970 = kNaN;
  row.smoothSpeedMetersPerSecond = -1.0;  // how the filter says "unknown"
  const auto csv = makeCsvOutput(folder / "t.csv", false);
  csv->row(row);
  csv->finish({});
  csv->commit();
  ASSERT_THAT(read(), SizeIs(1));
  for (const char* name :
       {"time", "altitude", "accuracy", "speed", "course", "smooth_speed", "snapped_lat", "snapped_lon"}) {
    EXPECT_EQ(read()[0].at(name), "") << name;
  }
}

class GeoJson : public WithFolder {
 protected:
  json written(const std::vector<TripRow>& rows) {
    const auto output = makeGeoJsonOutput(folder / "t.geojson", true);
    for (const TripRow& row : rows) output->row(row);
    output->finish({});
    output->commit();
    return json::parse(contentsOf(folder / "t.geojson"));
  }
};

TEST_F(GeoJson, HoldsTheRawLineTheSmoothedLineAndTheMarkedFixes) {
  TripRow start = rowAt(10.0, 20.0, 0), still = rowAt(10.5, 20.5, 1), jump = rowAt(11.0, 25.0, 2),
          moved = rowAt(12.0, 21.0, 3);
  start.significant = still.significant = false;
  jump.jump = true;
  jump.altitudeMeters = 100.0;
  moved.speedMetersPerSecond = kNaN;
  const json trip = written({start, still, jump, moved});

  EXPECT_EQ(trip["type"], "FeatureCollection");
  ASSERT_EQ(trip["features"].size(), 4u);
  const json& raw = trip["features"][0];
  EXPECT_EQ(raw["properties"]["name"], "raw");
  EXPECT_EQ(raw["geometry"],
            json::parse(R"({"type":"LineString","coordinates":[[20,10],[20.5,10.5],[25,11],[21,12]]})"));
  const json& smoothed = trip["features"][1];
  EXPECT_EQ(smoothed["properties"]["name"], "smoothed");
  EXPECT_EQ(smoothed["geometry"], json::parse(R"({"type":"LineString","coordinates":[[20,10],[21,12]]})"));

  const json& marked = trip["features"][2];
  EXPECT_EQ(marked["geometry"], json::parse(R"({"type":"Point","coordinates":[25,11]})"));
  EXPECT_EQ(marked["properties"]["jump"], true);
  EXPECT_EQ(marked["properties"]["altitudeMeters"], 100.0);
  EXPECT_EQ(marked["properties"]["time"], "2023-11-14T22:13:22.000Z");
  EXPECT_EQ(trip["features"][3]["properties"]["speedMetersPerSecond"], nullptr);
  EXPECT_EQ(trip["features"][3]["properties"]["smoothSpeedMetersPerSecond"], 9.0);
}

TEST_F(GeoJson, IsValidForTripsTooShortForALine) {
  EXPECT_EQ(written({})["features"], json::array());
  const json one = written({rowAt(10.0, 20.0, 0)});
  EXPECT_EQ(one["features"][0]["geometry"], json::parse(R"({"type":"Point","coordinates":[20,10]})"));
}

TEST_F(GeoJson, IsCutAtTheAntimeridianInBothDirections) {
  const json trip = written({rowAt(0.0, 179.0, 0), rowAt(4.0, -177.0, 1), rowAt(6.0, 179.0, 2)});
  EXPECT_EQ(trip["features"][0]["geometry"], json::parse(R"({"type":"MultiLineString","coordinates":
      [[[179,0],[180,1]], [[-180,1],[-177,4],[-180,5.5]], [[180,5.5],[179,6]]]})"));
}

TEST(SummaryJson, TellsTimesDurationAndClientsAndStaysJsonWhateverTheSourceIsCalled) {
  TripSummary summary;
  summary.source = "a\"\xff\n.gpx";
  summary.fixes = 7;
  summary.firstSecondsSince1970 = 1778319000.0;
  summary.lastSecondsSince1970 = 1778319090.5;
  summary.deliveredByClient = {{"plain", 7}, {"halfway", 3}};
  const json told = json::parse(summaryJson(summary, -1));
  EXPECT_EQ(told["source"], "a\"\ufffd\n.gpx");
  EXPECT_EQ(told["fixes"], 7);
  EXPECT_EQ(told["firstTime"], "2026-05-09T09:30:00.000Z");
  EXPECT_EQ(told["durationSeconds"], 90.5);
  EXPECT_EQ(told["deliveredByClient"], json::parse(R"({"plain":7,"halfway":3})"));

  EXPECT_EQ(told["topSpeedMetersPerSecond"], json::parse(R"({"raw":null,"smoothed":null})"));
  EXPECT_EQ(told["courseChangeDegrees"], json::parse(R"({"fixes":0,"raw":null,"smoothed":null})"));
  summary.effect = {70.0, 20.5, {{4.8, 15.6}}, {{2.8, 9.8}}, 600};
  const json effect = json::parse(summaryJson(summary, -1));
  EXPECT_EQ(effect["topSpeedMetersPerSecond"], json::parse(R"({"raw":70.0,"smoothed":20.5})"));
  EXPECT_EQ(effect["courseChangeDegrees"], json::parse(R"({"fixes":600,
      "raw":{"median":4.8,"percentile90":15.6},"smoothed":{"median":2.8,"percentile90":9.8}})"));

  summary.lastSecondsSince1970.reset();
  const json unknown = json::parse(summaryJson(summary, 2));
  EXPECT_EQ(unknown["lastTime"], nullptr);
  EXPECT_EQ(unknown["durationSeconds"], nullptr);
}

class Outputs : public WithFolder {
 protected:
  static void write(const std::filesystem::path& dir, bool force = false) {
    const auto outputs = makeOutputs(dir, force);
    for (const TripRow& row : markedSampleTrip()) outputs->row(row);
    outputs->finish({});
  }
};

TEST_F(Outputs, AppearUnderTheirNamesOnlyWhenFinishedAndLeaveNothingWhenAbandoned) {
  {
    const auto outputs = makeOutputs(folder, false);
    outputs->row(rowAt(1.0, 2.0, 0));
    EXPECT_THAT(names(), AllOf(SizeIs(5), Each(EndsWith(".partial"))));
  }
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(Outputs, WriteToNoFileThatSomebodyHasPutInTheirWay) {
  std::ofstream(folder / "victim") << "mine";
  for (const char* name : {"trip.csv.partial", "trip.csv.tmp"}) {
    std::filesystem::create_symlink("victim", folder / name);
  }
  write(folder);
  EXPECT_EQ(contentsOf(folder / "victim"), "mine");
  EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(folder / "trip.csv")));

  std::filesystem::create_symlink("/dev/null", folder / "device");
  for (const bool force : {true, false}) EXPECT_THROW(makeCsvOutput(folder / "device", force), OutputError);
}

TEST_F(Outputs, HoldTheirFolderAgainstASecondRunWhichIsToldWhoHasIt) {
  const auto first = makeOutputs(folder, false);
  try {
    makeOutputs(folder, true);
    FAIL();
  } catch (const OutputError& error) {
    EXPECT_EQ(error.path(), folder);
    EXPECT_THAT(error.cause(), HasSubstr("process " + std::to_string(::getpid()) + " "));
  }
  first->finish({});
  EXPECT_THAT(names(), SizeIs(5));
}

TEST_F(Outputs, AreMadeInANewFolderAndAreTheSameBytesEachTime) {
  write(folder / "a" / "new");
  write(folder / "b");
  for (const char* name : {"summary.json", "trip.csv", "trip.geojson", "trip.png"}) {
    EXPECT_TRUE(contentsOf(folder / "a" / "new" / name) == contentsOf(folder / "b" / name)) << name;
  }
  EXPECT_THAT(std::distance(std::filesystem::directory_iterator(folder / "b"), {}), 5);
}

TEST_F(Outputs, RefuseToReplaceAnyFileBeforeTheyWriteAnything) {
  for (const char* name : {"summary.json", "trip.csv", "trip.geojson", "trip.png", "trip.svg"}) {
    SCOPED_TRACE(name);
    const auto dir = folder / name;
    std::filesystem::create_directory(dir);
    std::filesystem::create_symlink("nowhere", dir / name);  // even a dangling link is somebody's
    try {
      makeOutputs(dir, false);
      FAIL();
    } catch (const OutputError& error) {
      EXPECT_EQ(error.path(), dir / name);
      EXPECT_THAT(error.what(), HasSubstr("already exists"));
      EXPECT_THAT(error.remedy(), HasSubstr("--force"));
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir), {}), 1);
    write(dir, true);
    EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(dir / name)));
  }
}

TEST_F(Outputs, DoNotReplaceAFileThatAppearedMeanwhile) {
  const auto csv = makeCsvOutput(folder / "t.csv", false);
  std::ofstream(folder / "t.csv") << "mine";
  csv->finish({});
  EXPECT_THROW(csv->commit(), OutputError);
  EXPECT_EQ(contentsOf(folder / "t.csv"), "mine");
}

TEST_F(Outputs, SayWhichFolderCannotBeUsed) {
  std::ofstream(folder / "file") << "x";
  try {
    makeOutputs(folder / "file" / "out", false);
    FAIL();
  } catch (const OutputError& error) {
    EXPECT_EQ(error.path(), folder / "file" / "out");
    EXPECT_EQ(error.cause(), std::generic_category().message(ENOTDIR));
    EXPECT_FALSE(error.remedy().empty());
  }
}

/// Files of this process end after so many bytes, as on a full disk, while the object lives.
class FileLimit {
 public:
  explicit FileLimit(rlim_t bytes) : oldHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &old_);
    const rlimit small{bytes, old_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~FileLimit() {
    setrlimit(RLIMIT_FSIZE, &old_);
    std::signal(SIGXFSZ, oldHandler_);
  }

 private:
  rlimit old_{};
  sighandler_t oldHandler_;
};

TEST_F(Outputs, ReportAFullDiskWhereverItIsMetAndLeaveNoHalfFile) {
  {
    const FileLimit limit(20000);
    EXPECT_THROW(write(folder), OutputError);  // the table alone needs some 70 kB
    EXPECT_THAT(names(), IsEmpty());
  }
  const FileLimit limit(100);
  const auto summary = makeSummaryOutput(folder / "s.json", false);
  EXPECT_THROW(summary->finish({}), OutputError);  // fits into the buffer: only the last flush meets the limit
  EXPECT_FALSE(std::filesystem::exists(folder / "s.json"));
}

TEST_F(Outputs, WithoutOneOfThemAreWholeButHaveNoSummaryNotEvenAnOldOne) {
  write(folder);
  const auto outputs = makeOutputs(folder, true);
  outputs->row(rowAt(1.0, 2.0, 0));
  const FileLimit limit(10000);  // too small for the pictures
  EXPECT_THROW(outputs->finish({}), OutputError);
  EXPECT_FALSE(std::filesystem::exists(folder / "summary.json"));
  EXPECT_TRUE(json::accept(contentsOf(folder / "trip.geojson")));
  EXPECT_LT(contentsOf(folder / "trip.csv").size(), 1000u);
}

TEST_F(Outputs, TellWhileTheyStillHaveRoomForAWholeRowAndTheirEnd) {
  const FileLimit limit(50000);
  const auto outputs = makeOutputs(folder / "new", false);
  GpxRecording gpx(folder / "t.gpx", false);
  EXPECT_FALSE(std::filesystem::exists(folder / "t.gpx")) << "there is no fix yet";
  std::vector<std::pair<TripOutput*, const char*>> all{{outputs.get(), "new/trip.geojson"}, {&gpx, "t.gpx"}};
  for (const auto& [output, name] : all) {
    int rows = 0;
    for (; output->hasRoom(); ++rows) {
      output->row(rowAt(1.0 / 3.0, 1.0 / 7.0 + rows / 1e6, static_cast<std::uint64_t>(rows)));
    }
    EXPECT_GT(rows, 50);
    try {
      output->finish({});
    } catch (const OutputError& error) {
      EXPECT_EQ(error.path().stem(), "trip");  // one of the pictures may be longer, and the summary waits for them
      EXPECT_NE(error.path().extension(), ".geojson");
    }
    EXPECT_LE(std::filesystem::file_size(folder / name), 50000u);
  }
  EXPECT_TRUE(json::accept(contentsOf(folder / "new/trip.geojson")));
  EXPECT_THAT(contentsOf(folder / "t.gpx"), HasSubstr("</gpx>"));
}

TEST(OutputErrors, OfAPathAreNotThoseOfRoomAndRights) {
  for (const int number : {ENOENT, ENOTDIR, EISDIR, ENAMETOOLONG}) {
    EXPECT_TRUE(OutputError::ofSystem("x", number).isOfPath()) << number;
  }
  for (const int number : {EACCES, EPERM, EROFS, ENOSPC, EIO}) {
    EXPECT_FALSE(OutputError::ofSystem("x", number).isOfPath()) << number;
  }
}

}  // namespace
}  // namespace trip
