// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/UIToolbar.h>

namespace {

constexpr double kUsualHeight = 44.0;

}  // namespace

UIToolbar::UIToolbar() = default;
UIToolbar::~UIToolbar() = default;

void UIToolbar::sizeToFit() {
  CGRect fitting = frame();
  fitting.height = kUsualHeight;
  setFrame(fitting);
}

std::shared_ptr<UIBarButtonItem> UIBarButtonItem::make(std::optional<UIBarButtonSystemItem> systemItem,
                                                       std::optional<std::string> title, UIBarButtonItemStyle style,
                                                       std::function<void()> action) {
  auto item = std::shared_ptr<UIBarButtonItem>(new UIBarButtonItem);
  item->systemItem_ = systemItem;
  item->title_ = std::move(title);
  item->style_ = style;
  item->action_ = std::move(action);
  return item;
}

std::shared_ptr<UIBarButtonItem> UIBarButtonItem::initWithCustomView(std::shared_ptr<UIView> view) {
  auto item = make(std::nullopt, std::nullopt, UIBarButtonItemStyle::plain, nullptr);
  item->customView_ = std::move(view);
  return item;
}

void UIBarButtonItem::setTitle(std::optional<std::string> title) {
  title_ = std::move(title);
  changed();
}

void UIBarButtonItem::setStyle(UIBarButtonItemStyle style) {
  style_ = style;
  changed();
}

void UIBarButtonItem::setEnabled(bool enabled) {
  isEnabled_ = enabled;
  changed();
}

void UIBarButtonItem::setWidth(double width) {
  width_ = width;
  changed();
}

void UIBarButtonItem::setAccessibilityLabel(std::optional<std::string> label) {
  accessibilityLabel_ = std::move(label);
  changed();
}

void UIBarButtonItem::press() const {
  if (isEnabled_ && action_) action_();
}

void UIBarButtonItem::changed() const {
  const auto handler = changeHandler_;  // it may set another
  if (handler) handler();
}
