// SPDX-License-Identifier: Apache-2.0
// What leads from the in-app browser to other programs.
#include <algorithm>
#include <functional>

#include "BrowserWindow.h"

using testing::ElementsAre;

namespace {

TEST_F(BrowserWindow, SharesWithOtherPrograms) {
  page("/", "A page & more", linkTo("/second"));
  open(at("/"));
  untilEvents({"start", "finish"});

  click("Share");
  until("the menu", [](const json& report) { return report["buttons"].contains("Cancel"); });
  std::vector<std::pair<int, std::string>> order;
  for (const char* const name : {"Open in Safari", "Copy URL", "Email URL", "Cancel"}) {
    ASSERT_TRUE(shows("buttons", name)) << name;
    order.emplace_back(seen["buttons"][name][1], name);
  }
  EXPECT_TRUE(std::is_sorted(order.begin(), order.end())) << "from top to bottom";
  click("Copy URL");
  until("no menu", [](const json& report) { return !report["buttons"].contains("Cancel"); });
  EXPECT_EQ(display->clipboard(), at("/"));

  click("Share");
  click("Open in Safari");
  EXPECT_EQ(display->handedTo("http", 1), at("/") + "\n");

  const char* const kNoMail =
      "Your device is not configured to send email. You must go to Settings and add an email account.";
  click("Share");
  click("Email URL");
  until("an alert", [&](const json& report) { return report["texts"].contains(kNoMail); });
  click("OK");
  until("no alert", [&](const json& report) { return !report["texts"].contains(kNoMail); });

  const std::vector<std::function<void()>> ways{[this] { display->key("Escape"); }, [this] { display->click(40, 150); },
                                                [this] { click("Cancel"); },
                                                [this] { display->key("Return"); }};  // this one chooses the first line
  for (const auto& leave : ways) {
    click("Share");
    until("the menu", [](const json& report) { return report["buttons"].contains("Cancel"); });
    leave();
    until("no menu", [](const json& report) { return !report["buttons"].contains("Cancel"); });
  }
  EXPECT_EQ(display->handedTo("http", 2), at("/") + "\n" + at("/") + "\n");
  EXPECT_THAT(seen["events"], ElementsAre("start", "finish")) << "nothing of it has touched the page";
}

TEST_F(BrowserWindow, MailsThroughTheUsersProgramAndHearsNothingOfTheOutcome) {
  display->registerMail();
  page("/", "Tom &amp; J\xC3\xA9rry?");
  open(at("/?a=1&b=2"));
  untilEvents({"start", "finish"});
  click("Share");
  click("Email URL");
  untilEvents({"start", "finish", "mail 0"});
  const std::string port = std::to_string(server.port());
  EXPECT_EQ(display->handedTo("mailto", 1), "mailto:?subject=Tom%20%26%20J%C3%A9rry%3F&body=http%3A%2F%2F127.0.0.1%3A" +
                                                port + "%2F%3Fa%3D1%26b%3D2\n");
  EXPECT_FALSE(shows("buttons", "OK")) << "an outcome of \"cancelled\" is not worth an alert";
}

TEST_F(BrowserWindow, SendsOutsideWhatAUserFollowsAndNothingThatAScriptAloneAsksFor) {
  display->registerMail();
  const std::string script = "<script>location='mailto:spam@example.org';open('/popup')</script>";
  page("/", "First", linkTo("mailto:a@example.org") + script);
  page("/window", "Second", linkTo("/opened' target='_blank"));
  page("/download", "Third", linkTo("/file"));
  server.on("/file", HTTPTestServer::answering(200, "bytes", "Content-Disposition: attachment; filename=a.bin\r\n"));
  open(at("/"));
  untilEvents({"start", "finish"});
  clickPage();
  EXPECT_EQ(display->handedTo("mailto", 1), "mailto:a@example.org\n");
  open(at("/window"));
  untilEvents({"start", "finish"});
  clickPage();
  EXPECT_EQ(display->handedTo("http", 1), at("/opened") + "\n");
  open(at("/download"));
  untilEvents({"start", "finish"});
  clickPage();
  EXPECT_EQ(display->handedTo("http", 2), at("/opened") + "\n" + at("/file") + "\n");
  page("/download", "The page is still there");
  click("Reload");
  until("the page reloaded", [](const json& report) { return report["title"] == "The page is still there"; });
  open("mailto:host@example.org");
  EXPECT_EQ(display->handedTo("mailto", 2), "mailto:a@example.org\nmailto:host@example.org\n") << "the host's wish";
}

TEST_F(BrowserWindow, AsksBeforeAPageStartsAProgramThatTheHostHasNotNamed) {
  const std::string address = "ssh://-oProxyCommand=touch%20x/";
  page("/", "First", "<a href='ftp://host/file' style='display:block;height:180px'>ftp</a>" + linkTo(address));
  open(at("/"));
  untilEvents({"start", "finish"});
  display->click(170, 120);
  until("a word", [](const json& report) { return report["texts"].contains("ftp://host/file"); });
  EXPECT_TRUE(shows("texts", "This address is not opened"));
  click("OK");
  until("no word", [this](const json&) { return !shows("buttons", "OK"); });
  clickPage();
  until("a word", [](const json& report) { return report["texts"].contains("No program opens this address"); });
  EXPECT_TRUE(shows("texts", address));
  click("OK");

  display->registerProgram("ssh");
  const auto ask = [&] {
    clickPage();
    until("the question", [](const json& report) { return report["texts"].contains("Open with ssh?"); });
    EXPECT_TRUE(shows("texts", address));
  };
  const auto leave = [&] {
    until("no question", [](const json& report) { return !report["texts"].contains("Open with ssh?"); });
  };
  ask();
  display->key("Return");  // the focus is on "Cancel"
  leave();
  ask();
  display->key("Escape");
  leave();
  ask();
  click("Open");
  EXPECT_EQ(display->handedTo("ssh", 1), address + "\n") << "once, and not before";

  open("ssh://host/");  // the host's own wish
  until("the question", [](const json& report) { return report["texts"].contains("Open with ssh?"); });
}

}  // namespace
