// SPDX-License-Identifier: Apache-2.0
#include "GtkScreen.h"

#include <ZRCore/UIAlertController.h>

#include "DialogLayer.h"
#include "FrameView.h"
#include "GtkText.h"
#include "ToolbarView.h"
#include "WebPageView.h"

namespace {

DialogLayer* layerOf(UIViewController& controller) { return DialogLayer::around(HasWidget::of(controller.view())); }

/// A session that keeps its things in `folder`; without a folder, one that forgets them at its end.
WebSession makeSession(const std::string& folder) {
  WebSession session(folder.empty()
                         ? webkit_network_session_new_ephemeral()
                         : webkit_network_session_new((folder + "/data").c_str(), (folder + "/cache").c_str()));
  webkit_network_session_set_tls_errors_policy(session.get(), WEBKIT_TLS_ERRORS_POLICY_FAIL);
  if (!folder.empty()) {
    g_mkdir_with_parents(folder.c_str(), 0700);
    webkit_cookie_manager_set_persistent_storage(webkit_network_session_get_cookie_manager(session.get()),
                                                 (folder + "/cookies.sqlite").c_str(),
                                                 WEBKIT_COOKIE_PERSISTENT_STORAGE_SQLITE);
  }
  return session;
}

}  // namespace

GtkScreen::GtkScreen(ZRGtkOptions options) : options_(std::move(options)) {}

std::shared_ptr<UIView> GtkScreen::makeView() {
  // Until a window gives it another size.
  return std::make_shared<FrameView>(CGRect{0.0, 0.0, 360.0, 640.0});
}

std::shared_ptr<UIToolbar> GtkScreen::makeToolbar() { return std::make_shared<ToolbarView>(); }

std::shared_ptr<UIActivityIndicatorView> GtkScreen::makeActivityIndicator(UIActivityIndicatorViewStyle style) {
  return std::make_shared<SpinnerView>(style);
}

std::shared_ptr<UIWebView> GtkScreen::makeWebView(const CGRect& frame) {
  const policy::WebSchemes schemes{options_.webSchemes, options_.outsideSchemes};
  if (options_.websiteDataFolder.empty()) return std::make_shared<WebPageView>(frame, schemes, makeSession("").get());
  if (!keptSession_) keptSession_ = makeSession(options_.websiteDataFolder);
  return std::make_shared<WebPageView>(frame, schemes, keptSession_.get());
}

void GtkScreen::present(UIViewController& presenting, const std::shared_ptr<UIViewController>& presented, bool,
                        std::function<void()> completion) {
  if (const auto composer = std::dynamic_pointer_cast<MFMailComposeViewController>(presented)) {
    ZRPlatformInUse().mail->compose(composer);
  } else if (const auto alert = std::dynamic_pointer_cast<UIAlertController>(presented)) {
    if (DialogLayer* const layer = layerOf(presenting)) layer->present(&presenting, alert);
  }
  runLater(std::move(completion));
}

void GtkScreen::dismiss(UIViewController& presenting, bool, std::function<void()> completion) {
  if (DialogLayer* const layer = layerOf(presenting)) layer->dismiss(&presenting);
  runLater(std::move(completion));
}
