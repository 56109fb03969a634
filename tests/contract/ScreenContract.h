// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_CONTRACT_SCREENCONTRACT_H
#define ZRCORE_TESTS_CONTRACT_SCREENCONTRACT_H

// What every screen promises, and the mail behind it. Instantiated by each program that has one.
#include <ZRCore/UIAlertController.h>
#include <ZRCore/ZRPlatform.h>
#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <ostream>
#include <vector>

struct ScreenImplementation {
  const char* name;
  /// Installs a platform with the screen under test.
  /// @return how to let it do what it has put off, until the condition holds or nothing more comes.
  std::function<std::function<void(std::function<bool()>)>()> install;
};

inline void PrintTo(const ScreenImplementation& implementation, std::ostream* out) { *out << implementation.name; }

class ScreenContract : public testing::TestWithParam<ScreenImplementation> {
 protected:
  std::function<void(std::function<bool()>)> settle = GetParam().install();
  ZRScreen& screen = *ZRPlatformInUse().screen;
};

TEST_P(ScreenContract, PartsKeepWhatTheyAreTold) {
  const auto view = screen.makeView();
  const auto toolbar = screen.makeToolbar();
  const auto spinner = screen.makeActivityIndicator(UIActivityIndicatorViewStyle::white);
  ASSERT_TRUE(view && toolbar && spinner);
  toolbar->sizeToFit();
  EXPECT_GT(toolbar->frame().height, 0.0);
  const auto item = UIBarButtonItem::initWithCustomView(spinner);
  const auto space =
      UIBarButtonItem::initWithBarButtonSystemItemTargetAction(UIBarButtonSystemItem::flexibleSpace, nullptr, nullptr);
  toolbar->setItems({item, space, space});
  toolbar->setItems({space, item, space, space});
  EXPECT_THAT(toolbar->items(), testing::ElementsAre(space, item, space, space));
  view->addSubview(toolbar);
  view->addSubview(nullptr);
  toolbar->setFrame({1, 2, 3, 4});
  EXPECT_THAT(view->subviews(), testing::ElementsAre(toolbar));
  EXPECT_EQ(toolbar->frame(), (CGRect{1, 2, 3, 4}));
  EXPECT_EQ(spinner->activityIndicatorViewStyle(), UIActivityIndicatorViewStyle::white);
  EXPECT_FALSE(spinner->isAnimating());
  spinner->startAnimating();
  EXPECT_TRUE(spinner->isAnimating());
}

TEST_P(ScreenContract, AWebViewBeforeItsFirstLoadHasNoPageAndNowhereToGo) {
  const auto webView = screen.makeWebView({0, 0, 100, 100});
  ASSERT_NE(webView, nullptr);
  EXPECT_EQ(webView->frame(), (CGRect{0, 0, 100, 100}));
  webView->loadRequest(NSURLRequest::requestWithURL(std::nullopt));
  webView->goBack();
  webView->goForward();
  webView->reload();
  webView->stopLoading();
  EXPECT_FALSE(webView->canGoBack());
  EXPECT_FALSE(webView->canGoForward());
  EXPECT_FALSE(webView->request());
  EXPECT_EQ(webView->stringByEvaluatingJavaScriptFromString("document.title").value_or(""), "");
  EXPECT_EQ(webView->stringByEvaluatingJavaScriptFromString("no such script"), std::nullopt);
}

TEST_P(ScreenContract, CompletionsComeOnceAndNeverInsideTheCall) {
  const auto controller = std::make_shared<UIViewController>();
  const auto alert =
      UIAlertController::alertControllerWithTitleMessagePreferredStyle("t", "m", UIAlertControllerStyle::alert);
  std::vector<const char*> order;
  controller->presentViewControllerAnimatedCompletion(alert, true, [&] { order.push_back("presented"); });
  controller->presentViewControllerAnimatedCompletion(nullptr, true, [&] { order.push_back("nothing"); });
  controller->dismissViewControllerAnimatedCompletion(true, [&] { order.push_back("dismissed"); });
  controller->dismissViewControllerAnimatedCompletion(false, nullptr);
  EXPECT_TRUE(order.empty());
  settle([&] { return order.size() == 2; });
  EXPECT_THAT(order, testing::ElementsAre(testing::StrEq("presented"), testing::StrEq("dismissed")));
}

TEST_P(ScreenContract, AMailsOutcomeIsReportedOnceAndLaterAndItsDelegateHeldWeakly) {
  struct Listener : MFMailComposeViewControllerDelegate {
    int calls = 0;
    void mailComposeControllerDidFinishWithResultError(MFMailComposeViewController&, MFMailComposeResult,
                                                       const std::optional<NSError>&) override {
      ++calls;
    }
  };
  const auto listener = std::make_shared<Listener>();
  const auto composer = MFMailComposeViewController::init();
  composer->setMailComposeDelegate(listener);
  ZRPlatformInUse().mail->compose(composer);
  EXPECT_EQ(listener->calls, 0);
  settle([&] { return listener->calls > 0; });
  EXPECT_EQ(listener->calls, 1);

  auto gone = std::make_shared<Listener>();
  composer->setMailComposeDelegate(gone);
  ZRPlatformInUse().mail->compose(composer);
  gone.reset();
  bool isLater = false;
  ZRPlatformInUse().screen->dismiss(*composer, false, [&] { isLater = true; });
  settle([&] { return isLater; });
  EXPECT_TRUE(isLater) << "the outcome, of which nobody is told, has come before";
  EXPECT_EQ(listener->calls, 1);
}

#endif
