// SPDX-License-Identifier: Apache-2.0
// Passing an address on: the share menu, the clipboard, mail.
#include <ZRCore/UIAlertController.h>
#include <gmock/gmock.h>

#include "WithBrowser.h"

using testing::ElementsAre;

namespace {

class WebViewSharing : public WithBrowser {
 protected:
  std::shared_ptr<UIAlertController> lastAlert() {
    if (fake.screen->presented.empty()) return nullptr;
    return std::dynamic_pointer_cast<UIAlertController>(fake.screen->presented.back());
  }
  /// Chooses from the share menu, as a screen does.
  void choose(std::size_t index) {
    controller->actionPressed();
    lastAlert()->actions().at(index).handler();
  }
  void expectOKAlert(const char* message) {
    const auto alert = lastAlert();
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->preferredStyle(), UIAlertControllerStyle::alert);
    EXPECT_EQ(alert->title(), std::nullopt);
    EXPECT_EQ(alert->message(), message);
    ASSERT_EQ(alert->actions().size(), 1U);
    EXPECT_EQ(alert->actions()[0].title, "OK");
    EXPECT_EQ(alert->actions()[0].style, UIAlertActionStyle::cancel);
    EXPECT_FALSE(alert->actions()[0].handler);
  }
};

TEST_F(WebViewSharing, SharesTheOpeningAddressUntilThereIsAWayBack) {
  EXPECT_EQ(controller->getUrlString(), kOpened);
  page().redirect({NSURL::URLWithString("http://site/redirected")});
  page().finish("");
  EXPECT_EQ(controller->getUrlString(), kOpened) << "though the page was redirected";
  follow(kLinked);
  EXPECT_EQ(controller->getUrlString(), kLinked);
  controller->backPressed();
  EXPECT_EQ(controller->getUrlString(), kOpened);
}

TEST_F(WebViewSharing, OffersThreeWaysAndCancel) {
  fake.bundle->translations = {{"Copy URL", "Adresse kopieren"}, {"Email URL", ""}};
  controller->actionPressed();
  const auto menu = lastAlert();
  ASSERT_NE(menu, nullptr);
  EXPECT_THAT(fake.screen->calls, ElementsAre("present animated"));
  EXPECT_EQ(menu->preferredStyle(), UIAlertControllerStyle::actionSheet);
  EXPECT_EQ(menu->title(), std::nullopt);
  EXPECT_EQ(menu->message(), std::nullopt);
  std::vector<std::string> titles;
  for (const auto& action : menu->actions()) titles.push_back(action.title);
  EXPECT_THAT(titles, ElementsAre("Open in Safari", "Adresse kopieren", "", "Cancel"));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(menu->actions()[i].style, UIAlertActionStyle::standard);
  EXPECT_EQ(menu->actions()[3].style, UIAlertActionStyle::cancel);
  EXPECT_FALSE(menu->actions()[3].handler);
}

TEST_F(WebViewSharing, ReadsTheAddressWhenAChoiceIsMade) {
  controller->actionPressed();
  const auto menu = lastAlert();
  follow(kLinked);
  menu->actions()[0].handler();
  menu->actions()[1].handler();
  menu->actions()[2].handler();
  EXPECT_THAT(fake.application->opened, ElementsAre(kLinked));
  EXPECT_EQ(fake.pasteboard->string, kLinked);
  EXPECT_EQ(fake.mail->composed.at(0)->messageBody(), kLinked);
}

TEST_F(WebViewSharing, AMenuThatOutlivesItsControllerDoesNothing) {
  controller->actionPressed();
  const auto menu = lastAlert();
  const std::weak_ptr<ZRWebViewController> watched = controller;
  controller.reset();
  ASSERT_TRUE(watched.expired()) << "the menu must not hold it";
  for (int i = 0; i < 3; ++i) menu->actions()[i].handler();
  EXPECT_TRUE(fake.application->opened.empty());
  EXPECT_EQ(fake.pasteboard->string, std::nullopt);
  EXPECT_TRUE(fake.mail->composed.empty());
}

TEST_F(WebViewSharing, MailsTheCurrentAddressUnderThePagesTitle) {
  page().finish("A page");
  controller->emailString("an argument that is not used");
  page().finish("");
  fake.bundle->translations["Here's a Link"] = "Ein Verweis";
  choose(2);
  ASSERT_EQ(fake.mail->composed.size(), 2U);
  const auto& titled = *fake.mail->composed[0];
  EXPECT_EQ(titled.subject(), "A page");
  EXPECT_EQ(titled.messageBody(), kOpened);
  EXPECT_FALSE(titled.isMessageBodyHTML());
  EXPECT_EQ(titled.mailComposeDelegate(), controller);
  EXPECT_EQ(fake.mail->composed[1]->subject(), "Ein Verweis");
}

TEST_F(WebViewSharing, WithoutMailSaysSoAndComposesNothing) {
  fake.mail->canSend = false;
  choose(2);
  EXPECT_TRUE(fake.mail->composed.empty());
  EXPECT_THAT(fake.screen->calls, ElementsAre("present animated", "present animated"));
  expectOKAlert("Your device is not configured to send email. You must go to Settings and add an email account.");
}

TEST_F(WebViewSharing, TellsOfTheMailsThatMayNotHaveGone) {
  struct Outcome {
    int result;
    const char* message;  ///< null: nothing is shown
  };
  const Outcome rows[] = {{0, nullptr},          {1, "Message Saved"},    {2, nullptr},
                          {3, "Message Failed"}, {4, "Message Not Sent"}, {-1, "Message Not Sent"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.result);
    fake.screen->calls.clear();
    fake.mail->result = static_cast<MFMailComposeResult>(row.result);
    controller->emailString(std::nullopt);
    fake.mainQueue->run();
    if (row.message) {
      EXPECT_THAT(fake.screen->calls, ElementsAre("present animated", "dismiss animated", "present animated"));
      expectOKAlert(row.message);
    } else {
      EXPECT_THAT(fake.screen->calls, ElementsAre("present animated", "dismiss animated"));
    }
  }
}

TEST_F(WebViewSharing, LooksUpAnOutcomeThatItDoesNotShow) {
  class Listening : public ZRFakeBundle {
   public:
    std::optional<std::string> localizedStringForKey(std::string_view key) const override {
      asked.emplace_back(key);
      return std::nullopt;
    }
    mutable std::vector<std::string> asked;
  };
  const auto bundle = std::make_shared<Listening>();
  ZRPlatform platform = fake.platform();
  platform.bundle = bundle;
  PlatformTestPeer::forget();
  ASSERT_TRUE(ZRPlatformInstall(platform));
  const auto composer = MFMailComposeViewController::init();
  for (const auto result : {MFMailComposeResult::cancelled, MFMailComposeResult::sent}) {
    controller->mailComposeControllerDidFinishWithResultError(*composer, result, std::nullopt);
  }
  EXPECT_THAT(bundle->asked, ElementsAre("Message Canceled", "Message Sent"));
}

}  // namespace
