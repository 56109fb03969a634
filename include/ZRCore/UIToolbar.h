// SPDX-License-Identifier: Apache-2.0
/// @file
/// Toolbars and what stands in them.
#ifndef ZRCORE_UITOOLBAR_H
#define ZRCORE_UITOOLBAR_H

#include <ZRCore/UIView.h>
#include <ZRCore/ZRExport.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The platform's own items, of which a screen knows the picture.
enum class UIBarButtonSystemItem : int { flexibleSpace = 5, action = 9, refresh = 13 };
enum class UIBarButtonItemStyle : int { plain = 0, done = 2 };
enum class UIBarStyle : int { standard = 0, black = 1, blackTranslucent = 2 };

/// What sends `action` to a target that is held weakly.
template <class Target>
std::function<void()> ZRTargetAction(std::weak_ptr<Target> target, void (Target::*action)()) {
  return [target = std::move(target), action] {
    if (const auto held = target.lock()) (held.get()->*action)();
  };
}

/// A button (or a space, or any view) in a bar. It keeps what it is told, and tells the bar that shows it of each
/// change. Main thread.
class ZR_EXPORT UIBarButtonItem {
 public:
  /// One of the platform's own buttons, which calls `action` of `target` when it is pressed; the target is held weakly.
  template <class Target>
  static std::shared_ptr<UIBarButtonItem> initWithBarButtonSystemItemTargetAction(UIBarButtonSystemItem systemItem,
                                                                                  std::weak_ptr<Target> target,
                                                                                  void (Target::*action)()) {
    return make(systemItem, std::nullopt, UIBarButtonItemStyle::plain, ZRTargetAction(std::move(target), action));
  }
  /// One without an action, as spaces are.
  static std::shared_ptr<UIBarButtonItem> initWithBarButtonSystemItemTargetAction(UIBarButtonSystemItem systemItem,
                                                                                  std::nullptr_t, std::nullptr_t) {
    return make(systemItem, std::nullopt, UIBarButtonItemStyle::plain, nullptr);
  }
  /// A button with a text, or without one, which calls `action` of `target` when it is pressed.
  template <class Target>
  static std::shared_ptr<UIBarButtonItem> initWithTitleStyleTargetAction(std::optional<std::string> title,
                                                                         UIBarButtonItemStyle style,
                                                                         std::weak_ptr<Target> target,
                                                                         void (Target::*action)()) {
    return make(std::nullopt, std::move(title), style, ZRTargetAction(std::move(target), action));
  }
  static std::shared_ptr<UIBarButtonItem> initWithCustomView(std::shared_ptr<UIView> view);

  const std::optional<UIBarButtonSystemItem>& systemItem() const { return systemItem_; }
  const std::shared_ptr<UIView>& customView() const { return customView_; }

  const std::optional<std::string>& title() const { return title_; }
  void setTitle(std::optional<std::string> title);
  UIBarButtonItemStyle style() const { return style_; }
  void setStyle(UIBarButtonItemStyle style);
  bool isEnabled() const { return isEnabled_; }
  void setEnabled(bool enabled);
  /// In points; 0, as at first, leaves the width to the bar.
  double width() const { return width_; }
  void setWidth(double width);
  /// What a screen reader says; without one, the title.
  const std::optional<std::string>& accessibilityLabel() const { return accessibilityLabel_; }
  void setAccessibilityLabel(std::optional<std::string> label);

  /// What a bar does with a press. Nothing while the item is disabled or when its target has gone.
  void press() const;
  /// Set by the bar that shows the item, to hear of changes; one at a time.
  void setChangeHandler(std::function<void()> handler) { changeHandler_ = std::move(handler); }

 private:
  UIBarButtonItem() = default;
  static std::shared_ptr<UIBarButtonItem> make(std::optional<UIBarButtonSystemItem> systemItem,
                                               std::optional<std::string> title, UIBarButtonItemStyle style,
                                               std::function<void()> action);
  void changed() const;

  std::optional<UIBarButtonSystemItem> systemItem_;
  std::shared_ptr<UIView> customView_;
  std::optional<std::string> title_;
  UIBarButtonItemStyle style_ = UIBarButtonItemStyle::plain;
  bool isEnabled_ = true;
  double width_ = 0.0;
  std::optional<std::string> accessibilityLabel_;
  std::function<void()> action_;
  std::function<void()> changeHandler_;
};

/// A bar of items. Main thread.
class ZR_EXPORT UIToolbar : public UIView {
 public:
  using Items = std::vector<std::shared_ptr<UIBarButtonItem>>;

  UIToolbar();
  ~UIToolbar() override;

  UIBarStyle barStyle() const { return barStyle_; }
  void setBarStyle(UIBarStyle style) { barStyle_ = style; }
  const std::optional<UIColor>& barTintColor() const { return barTintColor_; }
  void setBarTintColor(const std::optional<UIColor>& color) { barTintColor_ = color; }

  /// Gives the bar the height that bars have on its screen; 44 points where the screen says nothing else.
  virtual void sizeToFit();

  /// From left to right; one item may stand more than once when it is a space.
  const Items& items() const { return items_; }
  virtual void setItems(Items items) { items_ = std::move(items); }

 private:
  UIBarStyle barStyle_ = UIBarStyle::standard;
  std::optional<UIColor> barTintColor_;
  Items items_;
};

#endif
