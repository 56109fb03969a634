// SPDX-License-Identifier: Apache-2.0
// The page of the in-app browser: what it is built of, how it lies, and how it follows a page's load.
#include <gmock/gmock.h>

#include "WithBrowser.h"

using testing::ElementsAre;

namespace {

constexpr const char* kBack = "\xE2\x97\x80\xEF\xB8\x8E";
constexpr const char* kForward = "\xE2\x96\xB6\xEF\xB8\x8E";

class WebViewController : public WithBrowser {
 protected:
  /// The title of an item that can be pressed, "off" for a blank one that cannot.
  static std::string look(const UIBarButtonItem& item) {
    const std::string title = item.title().value_or("");
    if (item.isEnabled()) return title;
    return title.empty() ? "off" : title + " off";
  }
  std::vector<std::string> arrows() const {
    return {look(*controller->backButton()), look(*controller->forwardButton())};
  }
  bool spins() const { return controller->activityIndicator()->isAnimating(); }
};

TEST_F(WebViewController, StartsLoadingTheAddressWhileItIsMade) {
  EXPECT_THAT(page().calls, ElementsAre("loadRequest"));
  EXPECT_EQ(page().request()->URL->absoluteString(), kOpened);
  EXPECT_EQ(page().delegate(), controller);
  EXPECT_TRUE(page().scalesPageToFit());
  EXPECT_EQ(controller->view()->backgroundColor(), UIColor::whiteColor());
  EXPECT_EQ(controller->navigationItem().title(), std::nullopt);
  EXPECT_EQ(controller->activityIndicator(), nullptr);
}

TEST_F(WebViewController, IsBuiltOfAToolbarBelowAndABrowserAbove) {
  EXPECT_THAT(controller->view()->subviews(), ElementsAre(controller->toolBar(), controller->webView()));
  EXPECT_EQ(controller->toolBar()->frame(), (CGRect{0, 556, 320, 44}));
  EXPECT_EQ(controller->toolBar()->autoresizingMask(), 10U);
  EXPECT_EQ(controller->toolBar()->barStyle(), UIBarStyle::black);
  EXPECT_EQ(controller->toolBar()->barTintColor(), UIColor::whiteColor());
  EXPECT_EQ(controller->webView()->frame(), (CGRect{0, 0, 320, 556}));
  EXPECT_EQ(controller->webView()->autoresizingMask(), 18U);

  controller->view()->setFrame({0, 0, 1024, 700});
  EXPECT_EQ(controller->toolBar()->frame(), (CGRect{0, 656, 1024, 44}));
  EXPECT_EQ(controller->webView()->frame(), (CGRect{0, 0, 1024, 656}));
}

TEST_F(WebViewController, HasSevenItemsOfWhichOneSpaceStandsThrice) {
  const auto& items = controller->toolBar()->items();
  ASSERT_EQ(items.size(), 7U);
  const auto space = items[1];
  EXPECT_THAT(items, ElementsAre(controller->refreshButton(), space, controller->backButton(), space,
                                 controller->forwardButton(), space, controller->actionButton()));
  EXPECT_EQ(space->systemItem(), UIBarButtonSystemItem::flexibleSpace);
  EXPECT_EQ(items[0]->systemItem(), UIBarButtonSystemItem::refresh);
  EXPECT_EQ(items[6]->systemItem(), UIBarButtonSystemItem::action);
  for (const auto& item : items) EXPECT_EQ(item->style(), UIBarButtonItemStyle::plain);
}

TEST_F(WebViewController, ItemsDoWhatTheySayAndOnlyWhileTheyAreEnabled) {
  controller->backButton()->press();
  controller->forwardButton()->press();
  controller->refreshButton()->press();
  controller->stopPressed();
  EXPECT_THAT(page().calls, ElementsAre("loadRequest", "reload", "stopLoading"));
  follow(kLinked);
  controller->backButton()->press();
  controller->forwardButton()->press();
  controller->actionButton()->press();
  EXPECT_THAT(page().calls, ElementsAre("loadRequest", "reload", "stopLoading", "goBack", "goForward"));
  EXPECT_EQ(fake.screen->presented.size(), 1U);
}

struct Appearance {
  const char* name;
  UINavigationBar bar;
  CGRect webView;
  UIActivityIndicatorViewStyle spinner;
};

TEST_F(WebViewController, LaysItselfOutUnderTheBarAtEachAppearanceWithANewSpinnerAtRest) {
  using Style = UIActivityIndicatorViewStyle;
  const CGRect bar{0, 20, 320, 44};
  const Appearance rows[] = {
      {"opaque", {false, bar, UIBarStyle::standard}, {0, 0, 320, 556}, Style::gray},
      {"translucent", {true, bar, UIBarStyle::standard}, {0, 64, 320, 492}, Style::gray},
      {"black", {false, bar, UIBarStyle::black}, {0, 0, 320, 556}, Style::white},
      {"black translucent is no black", {true, bar, UIBarStyle::blackTranslucent}, {0, 64, 320, 492}, Style::gray},
  };
  std::shared_ptr<UIActivityIndicatorView> former;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    stack->bar = row.bar;
    controller->viewWillAppear(true);
    EXPECT_EQ(controller->webView()->frame(), row.webView);
    EXPECT_EQ(controller->activityIndicator()->activityIndicatorViewStyle(), row.spinner);
    EXPECT_EQ(controller->navigationItem().rightBarButtonItem()->customView(), controller->activityIndicator());
    EXPECT_NE(controller->activityIndicator(), former);
    EXPECT_FALSE(spins());
    former = controller->activityIndicator();
    former->startAnimating();
  }
  stack.reset();
  controller->viewWillAppear(false);
  EXPECT_EQ(controller->webView()->frame(), (CGRect{0, 0, 320, 556})) << "without a stack";
}

// back starts greyed out and forward blank: the first load event evens that out.
TEST_F(WebViewController, FollowsALoadFromItsStartToItsEnd) {
  struct Recorder : ZRWebViewController {
    std::vector<std::string> seen;
    static std::shared_ptr<Recorder> make() {
      const auto self = std::make_shared<Recorder>();
      self->initialiseWithUrl(NSURL::URLWithString(kOpened));
      return self;
    }
    void webViewDidStartLoad(UIWebView&) override {
      seen = {look(*backButton()), look(*forwardButton())};  // before the first event has had any effect
    }
  };
  EXPECT_THAT(Recorder::make()->seen, ElementsAre(std::string(kBack).append(" off"), "off"));
  EXPECT_THAT(arrows(), ElementsAre("off", "off"));

  controller->viewWillAppear(false);
  page().finish("Opened");
  EXPECT_EQ(controller->title(), "Opened");
  EXPECT_EQ(controller->navigationItem().title(), "Opened");

  follow(kLinked);
  EXPECT_TRUE(spins());
  EXPECT_THAT(arrows(), ElementsAre(kBack, "off"));
  EXPECT_EQ(controller->title(), "Opened") << "until the next page has come";
  page().finish("");
  EXPECT_FALSE(spins());
  EXPECT_EQ(controller->title(), "");

  controller->backPressed();
  page().finish("Opened");
  EXPECT_THAT(arrows(), ElementsAre("off", kForward));
}

TEST_F(WebViewController, AFailedLoadChangesNothing) {
  controller->viewWillAppear(false);
  page().finish("Opened");
  follow(kLinked);
  const auto before = arrows();
  page().fail({NSURLErrorDomain, NSURLErrorCannotConnectToHost, {}});
  EXPECT_TRUE(spins());
  EXPECT_EQ(arrows(), before);
  EXPECT_EQ(controller->title(), "Opened");
  EXPECT_TRUE(fake.screen->calls.empty());
}

TEST_F(WebViewController, TakesTheTitleFromThePageThatFinishedAndTheArrowsFromItsOwn) {
  controller->viewWillAppear(false);
  follow(kLinked);
  page().title = "own";
  const auto other = std::make_shared<ZRFakeWebView>(CGRect{});
  other->title = "other";
  controller->backButton()->setEnabled(false);
  controller->webViewDidFinishLoad(*other);
  EXPECT_EQ(controller->title(), "other");
  EXPECT_THAT(arrows(), ElementsAre(kBack, "off"));
}

TEST_F(WebViewController, PopsItselfAnimatedForTheHost) {
  controller->navControllerBack();
  EXPECT_THAT(stack->pops, ElementsAre(true));
  stack.reset();
  controller->navControllerBack();
}

TEST_F(WebViewController, IsHeldByNoneOfItsParts) {
  controller->viewWillAppear(false);
  const auto toolBar = controller->toolBar();
  const std::weak_ptr<ZRWebViewController> watched = controller;
  controller.reset();
  EXPECT_TRUE(watched.expired());
  toolBar->items()[0]->press();
  page().finish("nobody is told");
}

TEST_F(WebViewController, WithoutAnAddressLoadsAndSharesNothing) {
  const auto empty = ZRWebViewController::initWithUrl(std::nullopt);
  EXPECT_EQ(fake.screen->webViews.back()->request(), std::nullopt);
  EXPECT_EQ(empty->getUrlString(), std::nullopt);
  empty->copyToPasteBoard(empty->getUrlString());
  EXPECT_EQ(fake.pasteboard->string, std::nullopt);
}

TEST_F(WebViewController, GoesOnWithoutThePartsThatAHostHasTakenAway) {
  controller->setWebView(nullptr);
  controller->setToolBar(nullptr);
  controller->setBackButton(nullptr);
  controller->viewWillAppear(false);
  controller->backPressed();
  controller->forwardPressed();
  controller->refreshPressed();
  controller->stopPressed();
  controller->webViewDidStartLoad(page());
  EXPECT_EQ(controller->getUrlString(), kOpened);
}

struct Stretch {
  const char* name;
  UIViewAutoresizing mask;
  CGRect after;
};

TEST(AutoresizingTest, TheFlexiblePartsOfAnAxisShareAChangeInProportion) {
  // A view of 100 by 100 grows to 200 by 100; the subview lay at 20 with a width of 30, so that 50 were left.
  const Stretch rows[] = {
      {"none: the far margin takes it", 0, {20, 0, 30, 10}},
      {"left", 1, {120, 0, 30, 10}},
      {"width", 2, {20, 0, 130, 10}},
      {"right", 4, {20, 0, 30, 10}},
      {"left and width", 1 + 2, {60, 0, 90, 10}},
      {"all three", 1 + 2 + 4, {40, 0, 60, 10}},
      {"the other axis", 8 + 16 + 32, {20, 0, 30, 10}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    UIView outer({0, 0, 100, 100});
    const auto inner = std::make_shared<UIView>(CGRect{20, 0, 30, 10});
    inner->setAutoresizingMask(row.mask);
    outer.addSubview(inner);
    outer.setFrame({0, 0, 200, 100});
    EXPECT_EQ(inner->frame(), row.after);
  }
  UIView outer({0, 0, 0, 0});
  const auto inner = std::make_shared<UIView>();
  inner->setAutoresizingMask(UIViewAutoresizingFlexibleTopMargin | UIViewAutoresizingFlexibleHeight);
  outer.addSubview(inner);
  outer.setFrame({0, 0, 0, 80});
  EXPECT_EQ(inner->frame(), (CGRect{0, 40, 0, 40})) << "evenly, where nothing is measured";
}

}  // namespace
