// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRPlatform.h>
#include <ZRCore/ZRWebViewController.h>

namespace {

// Black triangles, each followed by the selector that asks for a text and not for an emoji.
constexpr const char* kBackArrow = "\u25C0\uFE0E";
constexpr const char* kForwardArrow = "\u25B6\uFE0E";

/// What stands above a translucent navigation bar.
constexpr double kStatusBarHeight = 20.0;

/// An arrow that leads nowhere vanishes rather than greying out.
void showArrow(UIBarButtonItem* item, bool leadsSomewhere, const char* arrow) {
  if (!item) return;
  item->setEnabled(leadsSomewhere);
  item->setTitle(leadsSomewhere ? std::optional<std::string>(arrow) : std::nullopt);
}

double heightOf(const std::shared_ptr<UIToolbar>& toolBar) { return toolBar ? toolBar->frame().height : 0.0; }

}  // namespace

ZRWebViewController::ZRWebViewController() = default;
ZRWebViewController::~ZRWebViewController() = default;

std::shared_ptr<ZRWebViewController> ZRWebViewController::initWithUrl(std::optional<NSURL> url) {
  auto controller = std::shared_ptr<ZRWebViewController>(new ZRWebViewController);
  controller->initialiseWithUrl(std::move(url));
  return controller;
}

void ZRWebViewController::initialiseWithUrl(std::optional<NSURL> url) {
  url_ = std::move(url);
  view()->setBackgroundColor(UIColor::whiteColor());  // reading the view builds it, which starts the load
}

void ZRWebViewController::loadView() {
  UIViewController::loadView();
  navigationItem().setTitle(title());
  const CGRect bounds = view()->frame();

  toolBar_ = ZRPlatformInUse().screen->makeToolbar();
  toolBar_->setBarStyle(UIBarStyle::black);
  toolBar_->setBarTintColor(UIColor::whiteColor());
  toolBar_->sizeToFit();
  const double barHeight = heightOf(toolBar_);
  toolBar_->setFrame({0.0, bounds.height - barHeight, bounds.width, barHeight});
  toolBar_->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleTopMargin);
  buildToolBar();
  view()->addSubview(toolBar_);

  webView_ = ZRPlatformInUse().screen->makeWebView({0.0, 0.0, bounds.width, bounds.height - barHeight});
  webView_->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  webView_->setDelegate(std::static_pointer_cast<ZRWebViewController>(shared_from_this()));
  webView_->setScalesPageToFit(true);
  view()->addSubview(webView_);
  webView_->loadRequest(NSURLRequest::requestWithURL(url_));
}

void ZRWebViewController::buildToolBar() {
  const std::weak_ptr<ZRWebViewController> self = std::static_pointer_cast<ZRWebViewController>(shared_from_this());

  refreshButton_ = UIBarButtonItem::initWithBarButtonSystemItemTargetAction(UIBarButtonSystemItem::refresh, self,
                                                                            &ZRWebViewController::refreshPressed);
  refreshButton_->setStyle(UIBarButtonItemStyle::plain);

  // The arrows start unlike, as in every application of the kit: back shows its arrow greyed out, forward shows
  // nothing, until a load begins.
  backButton_ = UIBarButtonItem::initWithTitleStyleTargetAction(kBackArrow, UIBarButtonItemStyle::plain, self,
                                                                &ZRWebViewController::backPressed);
  backButton_->setEnabled(false);
  backButton_->setWidth(refreshButton_->width());
  forwardButton_ = UIBarButtonItem::initWithTitleStyleTargetAction(std::nullopt, UIBarButtonItemStyle::plain, self,
                                                                   &ZRWebViewController::forwardPressed);
  forwardButton_->setEnabled(false);
  forwardButton_->setWidth(refreshButton_->width());

  actionButton_ = UIBarButtonItem::initWithBarButtonSystemItemTargetAction(UIBarButtonSystemItem::action, self,
                                                                           &ZRWebViewController::actionPressed);
  actionButton_->setStyle(UIBarButtonItemStyle::plain);

  const auto space =
      UIBarButtonItem::initWithBarButtonSystemItemTargetAction(UIBarButtonSystemItem::flexibleSpace, nullptr, nullptr);
  toolBar_->setItems({refreshButton_, space, backButton_, space, forwardButton_, space, actionButton_});
}

void ZRWebViewController::viewWillAppear(bool animated) {
  UIViewController::viewWillAppear(animated);
  const auto stack = navigationController();
  const UINavigationBar bar = stack ? stack->navigationBar() : UINavigationBar();
  const double topInset = bar.isTranslucent ? bar.frame.height + kStatusBarHeight : 0.0;

  const CGRect bounds = view()->frame();
  if (webView_) webView_->setFrame({0.0, topInset, bounds.width, bounds.height - heightOf(toolBar_) - topInset});

  activityIndicator_ = ZRPlatformInUse().screen->makeActivityIndicator(
      bar.barStyle == UIBarStyle::black ? UIActivityIndicatorViewStyle::white : UIActivityIndicatorViewStyle::gray);
  navigationItem().setRightBarButtonItem(UIBarButtonItem::initWithCustomView(activityIndicator_));
}

void ZRWebViewController::backPressed() {
  if (webView_) webView_->goBack();
}

void ZRWebViewController::forwardPressed() {
  if (webView_) webView_->goForward();
}

void ZRWebViewController::refreshPressed() {
  if (webView_) webView_->reload();
}

void ZRWebViewController::stopPressed() {
  if (webView_) webView_->stopLoading();
}

void ZRWebViewController::navControllerBack() {
  if (const auto stack = navigationController()) stack->popViewControllerAnimated(true);
}

void ZRWebViewController::updateArrows() {
  showArrow(backButton_.get(), webView_ && webView_->canGoBack(), kBackArrow);
  showArrow(forwardButton_.get(), webView_ && webView_->canGoForward(), kForwardArrow);
}

void ZRWebViewController::webViewDidStartLoad(UIWebView&) {
  if (activityIndicator_) activityIndicator_->startAnimating();  // the first load begins before there is a spinner
  updateArrows();
}

void ZRWebViewController::webViewDidFinishLoad(UIWebView& webView) {
  if (activityIndicator_) activityIndicator_->stopAnimating();
  updateArrows();
  setTitle(webView.stringByEvaluatingJavaScriptFromString("document.title"));
}

// The spinner goes on turning and the buttons stay as they are: showing a failure is the screen's part.
void ZRWebViewController::webViewDidFailLoadWithError(UIWebView&, const NSError&) {}
