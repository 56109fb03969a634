// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_GTK_GTKSCREEN_H
#define ZRCORE_PLATFORM_GTK_GTKSCREEN_H

#include <ZRCore/ZRGtkPlatform.h>
#include <ZRCore/ZRScreen.h>
#include <owners/GLib.h>
#include <webkit/webkit.h>

#include <memory>

using WebSession = owners::Ref<WebKitNetworkSession>;

/// Makes widgets, and shows dialogues where the presenting controller's view lies. What is presented by a controller
/// that is nowhere to be seen is not shown.
class GtkScreen final : public ZRScreen {
 public:
  explicit GtkScreen(ZRGtkOptions options);

  std::shared_ptr<UIView> makeView() override;
  std::shared_ptr<UIToolbar> makeToolbar() override;
  std::shared_ptr<UIActivityIndicatorView> makeActivityIndicator(UIActivityIndicatorViewStyle style) override;
  std::shared_ptr<UIWebView> makeWebView(const CGRect& frame) override;
  void present(UIViewController& presenting, const std::shared_ptr<UIViewController>& presented, bool animated,
               std::function<void()> completion) override;
  void dismiss(UIViewController& presenting, bool animated, std::function<void()> completion) override;

 private:
  const ZRGtkOptions options_;
  WebSession keptSession_;  ///< of all web views, when the host keeps what they store
};

#endif
