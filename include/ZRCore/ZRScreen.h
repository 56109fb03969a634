// SPDX-License-Identifier: Apache-2.0
/// @file
/// The maker of everything that is seen.
#ifndef ZRCORE_ZRSCREEN_H
#define ZRCORE_ZRSCREEN_H

#include <ZRCore/UIToolbar.h>
#include <ZRCore/UIView.h>
#include <ZRCore/UIViewController.h>
#include <ZRCore/UIWebView.h>
#include <ZRCore/ZRExport.h>

#include <functional>
#include <memory>

/// Makes the parts of a screen and shows controllers in front of others. Nothing that it makes is null. Main thread.
class ZR_EXPORT ZRScreen {
 public:
  virtual ~ZRScreen();
  /// A controller's own view, of the size that controllers have on this screen before they are shown.
  virtual std::shared_ptr<UIView> makeView() = 0;
  virtual std::shared_ptr<UIToolbar> makeToolbar() = 0;
  virtual std::shared_ptr<UIActivityIndicatorView> makeActivityIndicator(UIActivityIndicatorViewStyle style) = 0;
  virtual std::shared_ptr<UIWebView> makeWebView(const CGRect& frame) = 0;

  /// Shows `presented` in front of `presenting`: a dialogue, a mail composer. `completion`, if there is one, is called
  /// when it has appeared, never from inside this call.
  virtual void present(UIViewController& presenting, const std::shared_ptr<UIViewController>& presented, bool animated,
                       std::function<void()> completion) = 0;
  /// Takes away what was presented in front of `presenting`, if anything still is; `completion` as above.
  virtual void dismiss(UIViewController& presenting, bool animated, std::function<void()> completion) = 0;
};

#endif
