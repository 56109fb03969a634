// SPDX-License-Identifier: Apache-2.0
#include "BrowserChrome.h"

#include <utility>

#include "GtkText.h"
#include "ToolbarView.h"
#include "WebPageView.h"

namespace {

void name(const std::shared_ptr<UIBarButtonItem>& item, const char* english) {
  if (item && !item->accessibilityLabel()) item->setAccessibilityLabel(hostText(english));
}

bool press(const std::shared_ptr<UIBarButtonItem>& item) {
  if (item) item->press();
  return true;
}

}  // namespace

void nameButtons(const ZRWebViewController& browser) {
  name(browser.refreshButton(), "Reload");
  name(browser.backButton(), "Back");
  name(browser.forwardButton(), "Forward");
  name(browser.actionButton(), "Share");
}

std::string hostOf(const ZRWebViewController& browser) {
  const auto page = std::dynamic_pointer_cast<WebPageView>(browser.webView());
  return page ? shownText(page->host()) : "";
}

void followPage(const std::shared_ptr<ZRWebViewController>& browser, std::function<void()> changed) {
  const auto page = std::dynamic_pointer_cast<WebPageView>(browser->webView());
  if (!page) return;
  if (!changed) return page->setChangeHandler({});
  const std::weak_ptr<ZRWebViewController> weak = browser;
  page->setChangeHandler([weak, changed = std::move(changed)] {
    const auto followed = weak.lock();
    if (!followed) return;
    const auto shown = std::dynamic_pointer_cast<WebPageView>(followed->webView());
    const auto spinner = std::dynamic_pointer_cast<SpinnerView>(followed->activityIndicator());
    if (shown && spinner && !shown->isLoading()) spinner->rest();
    changed();
  });
}

bool pressKey(ZRWebViewController& browser, unsigned key, GdkModifierType modifiers) {
  const auto held = static_cast<GdkModifierType>(modifiers & (GDK_CONTROL_MASK | GDK_ALT_MASK | GDK_SHIFT_MASK));
  if ((held == GDK_ALT_MASK && key == GDK_KEY_Left) || key == GDK_KEY_Back) return press(browser.backButton());
  if ((held == GDK_ALT_MASK && key == GDK_KEY_Right) || key == GDK_KEY_Forward) return press(browser.forwardButton());
  const bool isReload = key == GDK_KEY_F5 || key == GDK_KEY_Reload ||
                        (held == GDK_CONTROL_MASK && (key == GDK_KEY_r || key == GDK_KEY_R));
  if (isReload) return press(browser.refreshButton());
  // At other times the key is the page's. (The spinner turns on after a failure.)
  const auto page = std::dynamic_pointer_cast<WebPageView>(browser.webView());
  if (key == GDK_KEY_Escape && page && page->isLoading()) {
    browser.stopPressed();
    return true;
  }
  return false;
}
