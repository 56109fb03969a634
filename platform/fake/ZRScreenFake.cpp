// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRScreenFake.h>

#include <utility>

ZRFakeWebView::~ZRFakeWebView() = default;
ZRFakeScreen::~ZRFakeScreen() = default;
ZRFakeNavigationController::~ZRFakeNavigationController() = default;
ZRFakeApplication::~ZRFakeApplication() = default;
ZRFakePasteboard::~ZRFakePasteboard() = default;
ZRFakeMail::~ZRFakeMail() = default;

void ZRFakeWebView::loadRequest(const NSURLRequest& request) {
  calls.emplace_back("loadRequest");
  if (request.URL) follow(request);
}

void ZRFakeWebView::follow(const NSURLRequest& request) {
  if (!history_.empty()) history_.resize(++shown_);
  history_.push_back(request);
  start();
}

void ZRFakeWebView::redirect(const NSURLRequest& request) {
  if (!history_.empty()) history_[shown_] = request;
}

void ZRFakeWebView::reload() {
  calls.emplace_back("reload");
  if (!history_.empty()) start();
}

void ZRFakeWebView::stopLoading() { calls.emplace_back("stopLoading"); }

void ZRFakeWebView::goBack() {
  calls.emplace_back("goBack");
  if (!canGoBack()) return;
  --shown_;
  start();
}

void ZRFakeWebView::goForward() {
  calls.emplace_back("goForward");
  if (!canGoForward()) return;
  ++shown_;
  start();
}

std::optional<NSURLRequest> ZRFakeWebView::request() const {
  return history_.empty() ? std::nullopt : std::optional(history_[shown_]);
}

std::optional<std::string> ZRFakeWebView::stringByEvaluatingJavaScriptFromString(std::string_view script) const {
  return script == "document.title" ? title : std::nullopt;
}

void ZRFakeWebView::start() {
  if (const auto listener = delegate()) listener->webViewDidStartLoad(*this);
}

void ZRFakeWebView::finish(std::string pageTitle) {
  title = std::move(pageTitle);
  if (const auto listener = delegate()) listener->webViewDidFinishLoad(*this);
}

void ZRFakeWebView::fail(const NSError& error) {
  if (const auto listener = delegate()) listener->webViewDidFailLoadWithError(*this, error);
}

std::shared_ptr<UIView> ZRFakeScreen::makeView() { return std::make_shared<UIView>(viewFrame); }

std::shared_ptr<UIToolbar> ZRFakeScreen::makeToolbar() { return std::make_shared<UIToolbar>(); }

std::shared_ptr<UIActivityIndicatorView> ZRFakeScreen::makeActivityIndicator(UIActivityIndicatorViewStyle style) {
  return std::make_shared<UIActivityIndicatorView>(style);
}

std::shared_ptr<UIWebView> ZRFakeScreen::makeWebView(const CGRect& frame) {
  webViews.push_back(std::make_shared<ZRFakeWebView>(frame));
  return webViews.back();
}

void ZRFakeScreen::present(UIViewController&, const std::shared_ptr<UIViewController>& controller, bool animated,
                           std::function<void()> completion) {
  calls.emplace_back(animated ? "present animated" : "present");
  presented.push_back(controller);
  if (const auto composer = std::dynamic_pointer_cast<MFMailComposeViewController>(controller)) {
    ZRPlatformInUse().mail->compose(composer);
  }
  queue_->post(std::move(completion));
}

void ZRFakeScreen::dismiss(UIViewController&, bool animated, std::function<void()> completion) {
  calls.emplace_back(animated ? "dismiss animated" : "dismiss");
  queue_->post(std::move(completion));
}

void ZRFakeMail::compose(const std::shared_ptr<MFMailComposeViewController>& composer) {
  composed.push_back(composer);
  queue_->post([composer, outcome = result] {
    if (const auto delegate = composer->mailComposeDelegate()) {
      delegate->mailComposeControllerDidFinishWithResultError(*composer, outcome, std::nullopt);
    }
  });
}
