// SPDX-License-Identifier: Apache-2.0
/// @file
/// Test doubles of the screen and of what an application asks of the system around it. Link ZRCore::Fake. One thread.
#ifndef ZRCORE_ZRSCREENFAKE_H
#define ZRCORE_ZRSCREENFAKE_H

#include <ZRCore/ZRPlatform.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A browser with a history and no pages. What is asked of it begins a load at once and waits for the test to end it.
class ZRFakeWebView : public UIWebView {
 public:
  using UIWebView::UIWebView;
  ~ZRFakeWebView() override;

  void loadRequest(const NSURLRequest& request) override;
  void reload() override;
  void stopLoading() override;
  bool canGoBack() const override { return shown_ > 0; }
  bool canGoForward() const override { return shown_ + 1 < history_.size(); }
  void goBack() override;
  void goForward() override;
  std::optional<NSURLRequest> request() const override;
  /// `title` for "document.title", absent for every other script.
  std::optional<std::string> stringByEvaluatingJavaScriptFromString(std::string_view script) const override;

  /// As a user who follows a link.
  void follow(const NSURLRequest& request);
  /// As a server that sends the load on its way elsewhere.
  void redirect(const NSURLRequest& request);
  /// Ends the load with a page of that title.
  void finish(std::string pageTitle);
  /// Ends the load without a page.
  void fail(const NSError& error);

  std::optional<std::string> title;
  /// "loadRequest", "goBack" and so on, in order.
  std::vector<std::string> calls;

 private:
  void start();

  std::vector<NSURLRequest> history_;
  std::size_t shown_ = 0;
};

/// Makes parts that nobody sees, remembers them, and remembers what was presented. Its views are 320 by 600 points.
class ZRFakeScreen : public ZRScreen {
 public:
  /// @param queue  where completions run.
  explicit ZRFakeScreen(std::shared_ptr<ZRMainQueue> queue) : queue_(std::move(queue)) {}
  ~ZRFakeScreen() override;

  std::shared_ptr<UIView> makeView() override;
  std::shared_ptr<UIToolbar> makeToolbar() override;
  std::shared_ptr<UIActivityIndicatorView> makeActivityIndicator(UIActivityIndicatorViewStyle style) override;
  std::shared_ptr<UIWebView> makeWebView(const CGRect& frame) override;
  void present(UIViewController& presenting, const std::shared_ptr<UIViewController>& presented, bool animated,
               std::function<void()> completion) override;
  void dismiss(UIViewController& presenting, bool animated, std::function<void()> completion) override;

  CGRect viewFrame{0.0, 0.0, 320.0, 600.0};
  std::vector<std::shared_ptr<ZRFakeWebView>> webViews;
  std::vector<std::shared_ptr<UIViewController>> presented;
  /// "present animated", "dismiss" and so on, in order.
  std::vector<std::string> calls;

 private:
  std::shared_ptr<ZRMainQueue> queue_;
};

/// A stack that holds nothing and has the bar that the test gives it.
class ZRFakeNavigationController : public UINavigationController {
 public:
  ~ZRFakeNavigationController() override;
  UINavigationBar navigationBar() const override { return bar; }
  void popViewControllerAnimated(bool animated) override { pops.push_back(animated); }

  UINavigationBar bar;
  std::vector<bool> pops;  ///< whether each was animated
};

/// Remembers what was to be opened.
class ZRFakeApplication : public UIApplication {
 public:
  ~ZRFakeApplication() override;
  bool openURL(const NSURL& url) override {
    opened.push_back(url.absoluteString());
    return opens;
  }

  bool opens = true;
  std::vector<std::string> opened;
};

/// A clipboard of its own.
class ZRFakePasteboard : public UIPasteboard {
 public:
  ~ZRFakePasteboard() override;
  void setString(std::string_view text) override { string = text; }

  std::optional<std::string> string;
};

/// Mail that ends as the test says. Composers come to it as they do to every mail service: from the screen.
class ZRFakeMail : public ZRMail {
 public:
  /// @param queue  where outcomes are reported.
  explicit ZRFakeMail(std::shared_ptr<ZRMainQueue> queue) : queue_(std::move(queue)) {}
  ~ZRFakeMail() override;
  bool canSendMail() const override { return canSend; }
  void compose(const std::shared_ptr<MFMailComposeViewController>& composer) override;

  bool canSend = true;
  MFMailComposeResult result = MFMailComposeResult::sent;
  std::vector<std::shared_ptr<MFMailComposeViewController>> composed;

 private:
  std::shared_ptr<ZRMainQueue> queue_;
};

#endif
