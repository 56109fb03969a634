// SPDX-License-Identifier: Apache-2.0
#include "HeadlessScreen.h"

#include <utility>

namespace {

class HeadlessWebView final : public UIWebView {
 public:
  using UIWebView::UIWebView;
  void loadRequest(const NSURLRequest&) override {}
  void reload() override {}
  void stopLoading() override {}
  bool canGoBack() const override { return false; }
  bool canGoForward() const override { return false; }
  void goBack() override {}
  void goForward() override {}
  std::optional<NSURLRequest> request() const override { return std::nullopt; }
  std::optional<std::string> stringByEvaluatingJavaScriptFromString(std::string_view) const override {
    return std::nullopt;
  }
};

class HeadlessScreen final : public ZRScreen {
 public:
  std::shared_ptr<UIView> makeView() override { return std::make_shared<UIView>(); }
  std::shared_ptr<UIToolbar> makeToolbar() override { return std::make_shared<UIToolbar>(); }
  std::shared_ptr<UIActivityIndicatorView> makeActivityIndicator(UIActivityIndicatorViewStyle style) override {
    return std::make_shared<UIActivityIndicatorView>(style);
  }
  std::shared_ptr<UIWebView> makeWebView(const CGRect& frame) override {
    return std::make_shared<HeadlessWebView>(frame);
  }
  void present(UIViewController&, const std::shared_ptr<UIViewController>&, bool,
               std::function<void()> completion) override {
    ZRPlatformInUse().mainQueue->post(std::move(completion));
  }
  void dismiss(UIViewController&, bool, std::function<void()> completion) override {
    ZRPlatformInUse().mainQueue->post(std::move(completion));
  }
};

class HeadlessPasteboard final : public UIPasteboard {
 public:
  void setString(std::string_view) override {}
};

class HeadlessMail final : public ZRMail {
 public:
  bool canSendMail() const override { return false; }
  void compose(const std::shared_ptr<MFMailComposeViewController>& composer) override {
    ZRPlatformInUse().mainQueue->post([composer] {
      if (const auto delegate = composer->mailComposeDelegate()) {
        delegate->mailComposeControllerDidFinishWithResultError(*composer, MFMailComposeResult::cancelled,
                                                                std::nullopt);
      }
    });
  }
};

class HeadlessApplication final : public UIApplication {
 public:
  bool openURL(const NSURL&) override { return false; }
};

}  // namespace

void fillHeadlessScreen(ZRPlatform& platform) {
  platform.application = std::make_shared<HeadlessApplication>();
  platform.screen = std::make_shared<HeadlessScreen>();
  platform.pasteboard = std::make_shared<HeadlessPasteboard>();
  platform.mail = std::make_shared<HeadlessMail>();
}
