// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "HTTPTestServer.h"
#include "RunTool.h"

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

constexpr const char* kAnswer = R"({"mapconfig":{"1":{
  "geofence":{"sslurl":"https://geofence.test","url":"http://geofence.test"},"traffic":{"sslurl":"https://traffic.test"},
  "geocode":{"sslurl":"https://geocode.test"},"directions":{"sslurl":"https://no.test","url":"http://directions.test"},
  "guidance":{"url":"http://guidance.test"}},
  "7":{"geocode":{"sslurl":7}}}})";

class ConfigCommand : public testing::Test {
 protected:
  ConfigCommand() {
    server.on("/mapconfig", [](const HTTPTestServer::Request& request, HTTPTestServer::Connection& connection) {
      const bool isKnown = request.target.ends_with("&key=good%20key");
      HTTPTestServer::answering(isKnown ? 200 : 403, isKnown ? kAnswer : R"({"error":"unknown key"})")(request,
                                                                                                       connection);
    });
  }

  ToolRun config(std::vector<std::string> more) const {
    more.insert(more.begin(), {"config", "--base", server.url("")});
    if (std::ranges::find(more, "--key") == more.end()) more.insert(more.end(), {"--key", "good key"});
    return folder.run(more);
  }

  ToolFolder folder;
  HTTPTestServer server;
  const std::string packaged = folder.file("tile_config.json", R"({"mapconfig":{"1":{
    "geofence":{"sslurl":"a"},"traffic":{"sslurl":"b"},"geocode":{"sslurl":"c"},"directions":{"url":"d"},
    "guidance":{"url":"e"}}}})");
};

TEST_F(ConfigCommand, SaysWhereTheAddressesCameFromAndWhy) {
  struct Row {
    const char* title;
    std::vector<std::string> more;
    int exitCode;
    std::string out, err;
  };
  const std::string ofService =
      "geofence\thttps://geofence.test\ntraffic\thttps://traffic.test\ngeocode\thttps://geocode.test\n"
      "directions\thttp://directions.test\nguidance\thttp://guidance.test\n";
  const std::string ofFile = "geofence\ta\ntraffic\tb\ngeocode\tc\ndirections\td\nguidance\te\n";
  std::ofstream table(ZRCORE_CONFIG_RUNS);
  const auto check = [&](const Row& row) {
    SCOPED_TRACE(row.title);
    const ToolRun run = config(row.more);
    EXPECT_EQ(run.exitCode, row.exitCode);
    EXPECT_EQ(run.out, row.out);
    EXPECT_THAT(run.err, HasSubstr(row.err));
    table << row.title << " (exit " << run.exitCode << "):\n\n```\n" << run.out << run.err << "```\n\n";
  };
  check({"A fresh answer",
         {"--service", "integration", "--fallback", packaged},
         0,
         ofService,
         "zrcore: from the service: 127.0.0.1:"});
  check({"A wrong key", {"--key", "bad", "--fallback", packaged}, 3, "", "answered HTTP 403 without a configuration"});
  server.on("/mapconfig", HTTPTestServer::answering(500, "<html>oh</html>"));
  check({"An error of the service", {"--fallback", packaged}, 0, ofFile, "answered HTTP 500 with what is no JSON"});
  server.on("/mapconfig", HTTPTestServer::sending("garbage, not HTTP\r\n\r\n"));
  check({"Garbage", {"--fallback", packaged}, 0, ofFile, "does not answer as HTTP has it"});
  server.stop();
  check({"No service, with the packaged file", {"--fallback", packaged}, 0, ofFile, "from the packaged file"});
  check({"No service, without the packaged file", {}, 3, "", "takes no connection"});
}

TEST_F(ConfigCommand, NamesWhatIsMissingInAConfigurationAndInAFile) {
  const ToolRun partly = config({"--type", "7", "--json"});
  EXPECT_EQ(partly.exitCode, 1);
  const json document = json::parse(partly.out);
  EXPECT_EQ(document["source"], "service");
  EXPECT_EQ(document["status"], 200);
  EXPECT_TRUE(document["addresses"]["geocode"].is_null()) << "a number is no address";
  EXPECT_EQ(linesOf(partly.err).size(), 6U);

  server.stop();
  EXPECT_THAT(config({"--fallback", folder.file("a.json", "{")}).err, HasSubstr("a.json is no JSON"));
  EXPECT_THAT(config({"--fallback", packaged, "--type", "2"}).err, HasSubstr("has no configuration of type 2"));
  EXPECT_EQ(config({"--fallback", folder.path("none.json")}).exitCode, 1);
  EXPECT_EQ(json::parse(config({"--json"}).out)["source"], "none");
}

TEST_F(ConfigCommand, GivesUpOnAServiceThatSaysNothing) {
  server.on("/mapconfig",
            [](const HTTPTestServer::Request&, HTTPTestServer::Connection& connection) { connection.waitForClient(); });
  const ToolRun run = config({"--timeout", "0.2"});
  EXPECT_EQ(run.exitCode, 3);
  EXPECT_THAT(run.err, HasSubstr("sent nothing for 0.2 seconds"));
}

TEST_F(ConfigCommand, AsksTheHostOfTheServiceThatIsNamed) {
  const auto told = [this](std::vector<std::string> more) {
    more.insert(more.begin(), {"config", "--key", "k", "--timeout", "5"});
    return folder.run(more).err;  // no such host exists
  };
  EXPECT_THAT(told({}), HasSubstr(" configuration.zrcore.example.invalid "));
  EXPECT_THAT(told({"--service", "production"}), HasSubstr(" configuration.zrcore.example.invalid "));
  EXPECT_THAT(told({"--service", "integration"}), HasSubstr(" configuration-integration.zrcore.example.invalid "));
}

TEST(ServicesCommands, ShowAddressesAndDates) {
  struct Row {
    std::vector<std::string> arguments;
    int exitCode;
    std::string out;
  };
  const ToolFolder folder;
  for (const Row& row :
       {Row{{"url", "https://a.test/", "b", "q=x y&z", "n=a=b", "e="}, 0, "https://a.test/b?q=x%20y%26z&n=a%3Db&e=\n"},
        Row{{"url", "https://a.test", ""}, 0, "https://a.test\n"}, Row{{"url", "https://a.test/%zz", "b"}, 1, ""},
        Row{{"url", "https://a.test", "b", "no parameter\x1B"}, 2, ""},
        Row{{"url", "https://a.test", "b", "k=1", "k=2"}, 2, ""},
        Row{{"ago", "2016-03-01T12:00:00Z", "--now", "2016-03-02T18:00:00Z"}, 0, "30 hours ago\n"},
        Row{{"ago", "2016-03-03T12:00:00Z", "--now", "2016-03-02T18:00:00Z"}, 1, ""},
        Row{{"ago", "yesterday\x1B"}, 2, ""}, Row{{"config", "--key", "k", "--base", "http://a b"}, 2, ""},
        Row{{"config", "--key", "k", "--base", "127.0.0.1:1"}, 2, ""},
        Row{{"config", "--key", "k", "--base", "http:///"}, 2, ""},
        Row{{"config", "--key", "k", "--base", "http://a?b"}, 2, ""},
        Row{{"config", "--key", "k", "--timeout", "0"}, 2, ""}, Row{{"config"}, 2, ""},
        Row{{"config", "--key", "k", "--timeout", "nan"}, 2, ""}, Row{{"say", "a", "--rate", "nan"}, 2, ""}}) {
    SCOPED_TRACE(row.arguments[1 % row.arguments.size()]);
    const ToolRun run = folder.run(row.arguments);
    EXPECT_EQ(run.exitCode, row.exitCode);
    EXPECT_EQ(run.out, row.out);
    EXPECT_EQ(run.err.empty(), row.exitCode == 0) << run.err;
    EXPECT_THAT(run.err, testing::Not(HasSubstr("\x1B")));
    if (row.exitCode != 0) continue;
    EXPECT_EQ(waitForTool(startTool(row.arguments, {"/dev/null", "/dev/full", folder.path("err")})).exitCode, 3);
  }
}

}  // namespace
