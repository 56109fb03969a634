// SPDX-License-Identifier: Apache-2.0
/// @file
/// View controllers: what stands behind a page of a screen, and the stack of pages in which it is shown.
#ifndef ZRCORE_UIVIEWCONTROLLER_H
#define ZRCORE_UIVIEWCONTROLLER_H

#include <ZRCore/UIToolbar.h>
#include <ZRCore/UIView.h>
#include <ZRCore/ZRExport.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

/// What a navigation bar shows for one controller. It tells the bar that shows it of each change. Main thread.
class ZR_EXPORT UINavigationItem {
 public:
  const std::optional<std::string>& title() const { return title_; }
  void setTitle(std::optional<std::string> title);
  const std::shared_ptr<UIBarButtonItem>& rightBarButtonItem() const { return rightBarButtonItem_; }
  void setRightBarButtonItem(std::shared_ptr<UIBarButtonItem> item);

  /// Set by the bar that shows the item, to hear of changes; one at a time.
  void setChangeHandler(std::function<void()> handler) { changeHandler_ = std::move(handler); }

 private:
  std::optional<std::string> title_;
  std::shared_ptr<UIBarButtonItem> rightBarButtonItem_;
  std::function<void()> changeHandler_;
};

/// The bar above a stack of controllers, as its screen has made it.
struct UINavigationBar {
  bool isTranslucent = false;  ///< the page lies under it too
  CGRect frame;
  UIBarStyle barStyle = UIBarStyle::standard;
};

/// A stack of controllers, of which the last is shown. A screen or a host derives from it. Main thread.
class ZR_EXPORT UINavigationController {
 public:
  virtual ~UINavigationController();
  virtual UINavigationBar navigationBar() const = 0;
  /// Takes the last controller away. What is called by that controller may go on using itself until it returns.
  virtual void popViewControllerAnimated(bool animated) = 0;
};

/// A page of a screen. Owned by a std::shared_ptr. Main thread.
class ZR_EXPORT UIViewController : public std::enable_shared_from_this<UIViewController> {
 public:
  UIViewController();
  UIViewController(const UIViewController&) = delete;
  UIViewController& operator=(const UIViewController&) = delete;
  virtual ~UIViewController();

  /// The controller's view, which is built by the first call.
  const std::shared_ptr<UIView>& view();
  void setView(std::shared_ptr<UIView> view) { view_ = std::move(view); }
  /// Builds the view: an empty one of the screen's size. Called by `view`.
  virtual void loadView();
  /// Called by the stack each time before it shows the view.
  virtual void viewWillAppear(bool animated);

  const std::optional<std::string>& title() const { return title_; }
  /// Sets the title of the navigation item too.
  void setTitle(std::optional<std::string> title);
  UINavigationItem& navigationItem() { return navigationItem_; }

  /// The stack that the controller is in; null when it is in none.
  std::shared_ptr<UINavigationController> navigationController() const { return navigationController_.lock(); }
  /// Called by the stack.
  void setNavigationController(std::weak_ptr<UINavigationController> controller) {
    navigationController_ = std::move(controller);
  }

  /// Shows `controller` in front of this one, on the screen of the platform in use, which calls `completion` later, if
  /// there is one. A null controller is passed over.
  void presentViewControllerAnimatedCompletion(const std::shared_ptr<UIViewController>& controller, bool animated,
                                               std::function<void()> completion);
  /// Takes away what is shown in front of this controller.
  void dismissViewControllerAnimatedCompletion(bool animated, std::function<void()> completion);

 private:
  std::shared_ptr<UIView> view_;
  std::optional<std::string> title_;
  UINavigationItem navigationItem_;
  std::weak_ptr<UINavigationController> navigationController_;
};

#endif
