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

}  // namespace

std::shared_ptr<UIView> HeadlessScreen::makeView() { return std::make_shared<UIView>(); }
std::shared_ptr<UIToolbar> HeadlessScreen::makeToolbar() { return std::make_shared<UIToolbar>(); }

std::shared_ptr<UIActivityIndicatorView> HeadlessScreen::makeActivityIndicator(UIActivityIndicatorViewStyle style) {
  return std::make_shared<UIActivityIndicatorView>(style);
}

std::shared_ptr<UIWebView> HeadlessScreen::makeWebView(const CGRect& frame) {
  return std::make_shared<HeadlessWebView>(frame);
}

void HeadlessScreen::present(UIViewController&, const std::shared_ptr<UIViewController>&, bool,
                             std::function<void()> completion) {
  ZRPlatformInUse().mainQueue->post(std::move(completion));
}

void HeadlessScreen::dismiss(UIViewController&, bool, std::function<void()> completion) {
  ZRPlatformInUse().mainQueue->post(std::move(completion));
}

void HeadlessMail::compose(const std::shared_ptr<MFMailComposeViewController>& composer) {
  ZRPlatformInUse().mainQueue->post([composer] {
    if (const auto delegate = composer->mailComposeDelegate()) {
      delegate->mailComposeControllerDidFinishWithResultError(*composer, MFMailComposeResult::cancelled, std::nullopt);
    }
  });
}
