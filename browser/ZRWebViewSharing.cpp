// SPDX-License-Identifier: Apache-2.0
// Passing an address on: the share menu and mail.
#include <ZRCore/UIAlertController.h>
#include <ZRCore/ZRPlatform.h>
#include <ZRCore/ZRWebViewController.h>

#include "HostText.h"

using browser::hostText;

namespace {

void openInSystemBrowser(const std::optional<std::string>& address) {
  if (!address) return;
  if (const auto url = NSURL::URLWithString(*address)) UIApplication::sharedApplication()->openURL(*url);
}

struct Outcome {
  const char* text;
  bool isShown;
};

Outcome outcomeOf(MFMailComposeResult result) {
  switch (result) {
    case MFMailComposeResult::cancelled:
      return {"Message Canceled", false};
    case MFMailComposeResult::saved:
      return {"Message Saved", true};
    case MFMailComposeResult::sent:
      return {"Message Sent", false};
    case MFMailComposeResult::failed:
      return {"Message Failed", true};
  }
  return {"Message Not Sent", true};
}

}  // namespace

std::optional<std::string> ZRWebViewController::getUrlString() const {
  std::optional<NSURL> address = url_;
  if (webView_ && webView_->canGoBack()) {
    const auto request = webView_->request();
    address = request ? request->URL : std::nullopt;
  }
  return address ? std::optional(address->absoluteString()) : std::nullopt;
}

void ZRWebViewController::actionPressed() {
  const auto menu = UIAlertController::alertControllerWithTitleMessagePreferredStyle(
      std::nullopt, std::nullopt, UIAlertControllerStyle::actionSheet);
  // The menu may outlive its controller, and reads the address when a choice is made.
  const std::weak_ptr<ZRWebViewController> self = std::static_pointer_cast<ZRWebViewController>(shared_from_this());
  const auto add = [&](const char* title, void (*act)(ZRWebViewController&)) {
    menu->addAction(
        UIAlertAction::actionWithTitleStyleHandler(hostText(title), UIAlertActionStyle::standard, [self, act] {
          if (const auto controller = self.lock()) act(*controller);
        }));
  };
  add("Open in Safari", [](ZRWebViewController& browser) { openInSystemBrowser(browser.getUrlString()); });
  add("Copy URL", [](ZRWebViewController& browser) { browser.copyToPasteBoard(browser.getUrlString()); });
  add("Email URL", [](ZRWebViewController& browser) { browser.emailString(browser.getUrlString()); });
  menu->addAction(UIAlertAction::actionWithTitleStyleHandler(hostText("Cancel"), UIAlertActionStyle::cancel, nullptr));
  present(menu);
}

void ZRWebViewController::copyToPasteBoard(const std::optional<std::string>& text) {
  if (text) UIPasteboard::generalPasteboard()->setString(*text);
}

void ZRWebViewController::emailString(const std::optional<std::string>&) {
  if (!MFMailComposeViewController::canSendMail()) {
    presentAlert(
        hostText("Your device is not configured to send email. You must go to Settings and add an email account."));
    return;
  }
  const auto composer = MFMailComposeViewController::init();
  composer->setMailComposeDelegate(std::static_pointer_cast<ZRWebViewController>(shared_from_this()));
  const auto title = webView_ ? webView_->stringByEvaluatingJavaScriptFromString("document.title") : std::nullopt;
  composer->setSubject(title && !title->empty() ? *title : hostText("Here's a Link"));
  composer->setMessageBodyIsHTML(getUrlString().value_or(""), false);
  present(composer);
}

void ZRWebViewController::mailComposeControllerDidFinishWithResultError(MFMailComposeViewController&,
                                                                        MFMailComposeResult result,
                                                                        const std::optional<NSError>&) {
  const Outcome outcome = outcomeOf(result);
  std::string text = hostText(outcome.text);  // also where it is not shown: hosts see every lookup
  dismissViewControllerAnimatedCompletion(true, nullptr);
  if (outcome.isShown) presentAlert(std::move(text));
}

void ZRWebViewController::present(const std::shared_ptr<UIViewController>& controller) {
  presentViewControllerAnimatedCompletion(controller, true, nullptr);
}

void ZRWebViewController::presentAlert(std::string message) {
  const auto alert = UIAlertController::alertControllerWithTitleMessagePreferredStyle(std::nullopt, std::move(message),
                                                                                      UIAlertControllerStyle::alert);
  alert->addAction(UIAlertAction::actionWithTitleStyleHandler(hostText("OK"), UIAlertActionStyle::cancel, nullptr));
  present(alert);
}
