// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_HEADLESS_HEADLESSSCREEN_H
#define ZRCORE_PLATFORM_HEADLESS_HEADLESSSCREEN_H

#include <ZRCore/ZRPlatform.h>

/// A screen that nobody sees, with web views that load nothing.
class HeadlessScreen final : public ZRScreen {
 public:
  std::shared_ptr<UIView> makeView() override;
  std::shared_ptr<UIToolbar> makeToolbar() override;
  std::shared_ptr<UIActivityIndicatorView> makeActivityIndicator(UIActivityIndicatorViewStyle style) override;
  std::shared_ptr<UIWebView> makeWebView(const CGRect& frame) override;
  void present(UIViewController& presenting, const std::shared_ptr<UIViewController>& presented, bool animated,
               std::function<void()> completion) override;
  void dismiss(UIViewController& presenting, bool animated, std::function<void()> completion) override;
};

/// A clipboard that keeps nothing.
class HeadlessPasteboard final : public UIPasteboard {
 public:
  void setString(std::string_view) override {}
};

/// No mail: each message is cancelled, through the main queue of the platform in use.
class HeadlessMail final : public ZRMail {
 public:
  bool canSendMail() const override { return false; }
  void compose(const std::shared_ptr<MFMailComposeViewController>& composer) override;
};

/// No other program.
class HeadlessApplication final : public UIApplication {
 public:
  bool openURL(const NSURL&) override { return false; }
};

#endif
