// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "RunTool.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;

/// What the tool says about browsers and mail for a user who has only what is in `folder`.
json findings(const ToolFolder& folder) {
  ::setenv("XDG_CONFIG_HOME", folder.path("config").c_str(), 1);
  ::setenv("XDG_DATA_HOME", folder.path("data").c_str(), 1);
  ::setenv("XDG_DATA_DIRS", folder.path("none").c_str(), 1);
  ::setenv("XDG_CONFIG_DIRS", folder.path("none").c_str(), 1);
  const ToolRun run = folder.run({"doctor", "--json"});
  EXPECT_TRUE(run.exitCode == 0 || run.exitCode == 3);
  json bySubject;
  for (const json& finding : json::parse(run.out)) {
    bySubject[finding["subject"].get<std::string>()] = finding;
    EXPECT_EQ(finding["state"] == "usable", finding["remedy"] == "") << finding;
  }
  return bySubject;
}

TEST(DoctorTool, HandlersAreMissingThenBrokenThenUsable) {
  const ToolFolder folder;
  for (const char* name : {"config", "data/applications"}) std::filesystem::create_directories(folder.path(name));
  const json without = findings(folder);
  EXPECT_EQ(without["browser"]["state"], "missing");
  EXPECT_THAT(without["mail"]["remedy"].get<std::string>(), HasSubstr("x-scheme-handler/mailto"));
  EXPECT_TRUE(without.contains("gpsd") && without.contains("GeoClue") && without.contains("adapters"));

  const std::string entry = "[Desktop Entry]\nType=Application\nName=Surf\nMimeType=x-scheme-handler/https;\nExec=";
  folder.file("config/mimeapps.list", "[Default Applications]\nx-scheme-handler/https=surf.desktop;\n");
  folder.file("data/applications/surf.desktop", entry + "/nowhere/surf %u\n");
  const json broken = findings(folder)["browser"];
  EXPECT_EQ(broken["state"], "broken");
  EXPECT_THAT(broken["detail"].get<std::string>(), HasSubstr("surf.desktop"));

  folder.file("data/applications/surf.desktop", entry + "/bin/true %u\n");
  EXPECT_EQ(findings(folder)["browser"]["state"], "usable");

  const ToolRun text = folder.run({"doctor"});
  EXPECT_THAT(text.out, testing::ContainsRegex("usable +browser +surf.desktop"));
  EXPECT_THAT(text.out, testing::ContainsRegex("missing +mail.*\n +\\$ sudo"));
  EXPECT_EQ(text.exitCode, 3);
}

}  // namespace
