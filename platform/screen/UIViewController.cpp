// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/MFMailComposeViewController.h>
#include <ZRCore/UIAlertController.h>
#include <ZRCore/UIApplication.h>
#include <ZRCore/UIViewController.h>
#include <ZRCore/ZRPlatform.h>

#include <utility>

UIViewController::UIViewController() = default;
UIViewController::~UIViewController() = default;
UINavigationController::~UINavigationController() = default;
UIAlertController::~UIAlertController() = default;
MFMailComposeViewControllerDelegate::~MFMailComposeViewControllerDelegate() = default;
MFMailComposeViewController::MFMailComposeViewController() = default;
MFMailComposeViewController::~MFMailComposeViewController() = default;
ZRMail::~ZRMail() = default;
ZRScreen::~ZRScreen() = default;
UIApplication::~UIApplication() = default;
UIPasteboard::~UIPasteboard() = default;

namespace {

void tell(const std::function<void()>& changeHandler) {
  const auto handler = changeHandler;  // it may set another
  if (handler) handler();
}

}  // namespace

void UINavigationItem::setTitle(std::optional<std::string> title) {
  title_ = std::move(title);
  tell(changeHandler_);
}

void UINavigationItem::setRightBarButtonItem(std::shared_ptr<UIBarButtonItem> item) {
  rightBarButtonItem_ = std::move(item);
  tell(changeHandler_);
}

const std::shared_ptr<UIView>& UIViewController::view() {
  if (!view_) loadView();
  return view_;
}

void UIViewController::loadView() { view_ = ZRPlatformInUse().screen->makeView(); }

void UIViewController::viewWillAppear(bool) {}

void UIViewController::setTitle(std::optional<std::string> title) {
  title_ = std::move(title);
  navigationItem_.setTitle(title_);
}

void UIViewController::presentViewControllerAnimatedCompletion(const std::shared_ptr<UIViewController>& controller,
                                                               bool animated, std::function<void()> completion) {
  if (controller) ZRPlatformInUse().screen->present(*this, controller, animated, std::move(completion));
}

void UIViewController::dismissViewControllerAnimatedCompletion(bool animated, std::function<void()> completion) {
  ZRPlatformInUse().screen->dismiss(*this, animated, std::move(completion));
}

std::shared_ptr<UIAlertController> UIAlertController::alertControllerWithTitleMessagePreferredStyle(
    std::optional<std::string> title, std::optional<std::string> message, UIAlertControllerStyle style) {
  auto alert = std::shared_ptr<UIAlertController>(new UIAlertController(std::move(message), style));
  alert->setTitle(std::move(title));
  return alert;
}

bool MFMailComposeViewController::canSendMail() { return ZRPlatformInUse().mail->canSendMail(); }

std::shared_ptr<MFMailComposeViewController> MFMailComposeViewController::init() {
  return std::shared_ptr<MFMailComposeViewController>(new MFMailComposeViewController);
}

std::shared_ptr<UIApplication> UIApplication::sharedApplication() { return ZRPlatformInUse().application; }

std::shared_ptr<UIPasteboard> UIPasteboard::generalPasteboard() { return ZRPlatformInUse().pasteboard; }
