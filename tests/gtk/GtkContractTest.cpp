// SPDX-License-Identifier: Apache-2.0
// The screen on GTK keeps the promises that every screen makes.
#include <ZRCore/ZRGtkPlatform.h>
#include <ZRCore/ZRWebViewController.h>
#include <gtk/gtk.h>
#include <stdlib.h>

#include "ScreenContract.h"
#include "VirtualDisplay.h"

namespace {

/// GTK, in this process, on a desktop of its own; each case has a process of its own, and GTK one display.
std::function<void(std::function<bool()>)> gtkOnADesktop() {
  static VirtualDisplay display;
  for (const auto& [name, value] : display.environment()) setenv(name.c_str(), value.c_str(), 1);
  static ZRPlatform platform;
  EXPECT_TRUE(platform.screen || (ZRFillGtkPlatform(platform) && ZRPlatformInstall(platform)));
  return [](const std::function<bool()>& isDone) {
    bool isOver = false;
    const guint end = g_timeout_add_full(
        G_PRIORITY_DEFAULT, 5000,
        [](gpointer over) -> gboolean { return *static_cast<bool*>(over) = true, G_SOURCE_CONTINUE; }, &isOver,
        nullptr);
    while (!isDone() && !isOver) g_main_context_iteration(nullptr, TRUE);
    g_source_remove(end);
  };
}

class OnADesktop : public testing::Test {
 protected:
  void SetUp() override {
    const std::string missing = VirtualDisplay::missing();
    if (!missing.empty()) GTEST_SKIP() << "this machine lacks " << missing << " (scripts/setup installs them)";
    settle = gtkOnADesktop();
    g_log_set_always_fatal(static_cast<GLogLevelFlags>(G_LOG_LEVEL_ERROR | G_LOG_LEVEL_CRITICAL));
  }
  std::function<void(std::function<bool()>)> settle;
};

TEST_F(OnADesktop, AStackShowsItsLastControllerAndLetsGoOfThoseThatArePopped) {
  const auto stack = ZRGtkNavigationController::init();
  std::vector<std::string> titles;
  int emptied = 0;
  stack->setTitleHandler([&](const std::string& title) { titles.push_back(title); });
  stack->setEmptiedHandler([&] { ++emptied; });
  auto first = std::make_shared<UIViewController>();
  auto second = std::make_shared<UIViewController>();
  const std::weak_ptr<UIViewController> watched = second;
  first->setTitle("one\ntwo");
  stack->pushViewController(first, false);
  stack->pushViewController(nullptr, false);
  stack->pushViewController(second, true);
  second->setTitle(std::string(5000, 'x'));
  EXPECT_EQ(titles.front(), "one two") << "a title is one line";
  EXPECT_LT(titles.back().size(), 2000U);
  EXPECT_EQ(second->navigationController(), stack);
  EXPECT_GT(stack->navigationBar().frame.height, 0.0);
  EXPECT_FALSE(stack->navigationBar().isTranslucent);

  struct Leaving : UIViewController {
    void viewWillAppear(bool) override { navigationController()->popViewControllerAnimated(false); }
  };
  stack->pushViewController(std::make_shared<Leaving>(), false);
  EXPECT_THAT(stack->viewControllers(), testing::ElementsAre(first, second)) << "it has left as it came";

  second.reset();
  stack->popViewControllerAnimated(false);
  EXPECT_FALSE(watched.expired()) << "it may have been the one that asked";
  settle([&] { return watched.expired(); });
  EXPECT_TRUE(watched.expired());
  EXPECT_THAT(stack->viewControllers(), testing::ElementsAre(first));
  EXPECT_EQ(titles.back(), "one two");
  stack->popViewControllerAnimated(true);
  stack->popViewControllerAnimated(true);
  EXPECT_EQ(emptied, 0);
  settle([&] { return emptied > 0; });
  EXPECT_EQ(emptied, 1);
  EXPECT_EQ(first->navigationController(), nullptr);
}

TEST_F(OnADesktop, WindowsAreSeenWhileOneIsShown) {
  std::vector<bool> seen;
  auto following = ZRGtkFollowWindows([&](bool isSeen) { seen.push_back(isSeen); });
  EXPECT_THAT(seen, testing::ElementsAre(false)) << "told at once";
  GtkWidget* const first = gtk_window_new();
  GtkWidget* const second = gtk_window_new();
  gtk_window_present(GTK_WINDOW(first));
  settle([&] { return seen.size() == 2; });
  gtk_window_present(GTK_WINDOW(second));
  settle([&] { return gtk_widget_get_mapped(second) != FALSE; });
  gtk_window_destroy(GTK_WINDOW(first));
  EXPECT_THAT(seen, testing::ElementsAre(false, true)) << "the other one is still there";
  gtk_widget_set_visible(second, FALSE);
  settle([&] { return seen.size() == 3; });
  gtk_window_present(GTK_WINDOW(second));
  settle([&] { return seen.size() == 4; });
  EXPECT_THAT(seen, testing::ElementsAre(false, true, false, true));
  following.reset();
  gtk_window_destroy(GTK_WINDOW(second));
  EXPECT_EQ(seen.size(), 4U);
}

TEST_F(OnADesktop, AWindowLetsItsControllerGoWhenItIsClosedOrTheControllerPopped) {
  for (const bool isPopped : {false, true}) {
    auto browser = ZRWebViewController::initWithUrl(NSURL::URLWithString("about:blank"));
    const std::weak_ptr<UIWebView> page = browser->webView();
    const std::weak_ptr<UIViewController> watched = browser;
    GtkWindow* window = ZRGtkOpenWindow(browser);
    ASSERT_NE(window, nullptr);
    g_object_add_weak_pointer(G_OBJECT(window), reinterpret_cast<gpointer*>(&window));
    browser->actionPressed();
    if (isPopped) {
      browser->navControllerBack();
    } else {
      gtk_window_destroy(window);
    }
    browser.reset();
    settle([&] { return watched.expired() && page.expired() && !window; });
    EXPECT_TRUE(watched.expired());
    EXPECT_TRUE(page.expired());
    EXPECT_EQ(window, nullptr);
  }
}

TEST(WithoutADisplay, NothingIsFilled) {
  setenv("DISPLAY", ":no-such-display", 1);
  setenv("GDK_BACKEND", "x11", 1);
  ZRPlatform platform;
  EXPECT_FALSE(ZRFillGtkPlatform(platform));
  EXPECT_EQ(platform.screen, nullptr);
  EXPECT_EQ(platform.mail, nullptr);
}

TEST_F(OnADesktop, AnOlderHostsPlatformIsFilledOnlyAsFarAsItReaches) {
  ZRPlatform older;
  older.size = offsetof(ZRPlatform, screen) + sizeof(older.screen);
  EXPECT_TRUE(ZRFillGtkPlatform(older));
  EXPECT_NE(older.screen, nullptr);
  EXPECT_EQ(older.pasteboard, nullptr);
  EXPECT_EQ(older.mail, nullptr);
}

INSTANTIATE_TEST_SUITE_P(, ScreenContract, testing::Values(ScreenImplementation{"gtk", gtkOnADesktop}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
