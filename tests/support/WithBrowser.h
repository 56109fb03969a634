// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_WITHBROWSER_H
#define ZRCORE_TESTS_SUPPORT_WITHBROWSER_H

#include <ZRCore/ZRWebViewController.h>

#include "WithFakePlatform.h"

/// A web view controller on a screen of 320 by 600 points, opened with `kOpened`, whose first load has begun.
class WithBrowser : public WithFakePlatform {
 protected:
  static constexpr const char* kOpened = "http://site/opened";
  static constexpr const char* kLinked = "http://site/linked";

  void SetUp() override {
    WithFakePlatform::SetUp();
    controller = ZRWebViewController::initWithUrl(NSURL::URLWithString(kOpened));
    stack = std::make_shared<ZRFakeNavigationController>();
    controller->setNavigationController(stack);
  }

  ZRFakeWebView& page() { return *fake.screen->webViews.at(0); }
  void follow(const char* address) { page().follow({NSURL::URLWithString(address)}); }

  std::shared_ptr<ZRWebViewController> controller;
  std::shared_ptr<ZRFakeNavigationController> stack;
};

#endif
