// SPDX-License-Identifier: Apache-2.0
/// @file
/// Views: rectangles of a screen, inside one another. A view keeps what it is told; a screen's own views derive from
/// these classes and show it.
#ifndef ZRCORE_UIVIEW_H
#define ZRCORE_UIVIEW_H

#include <ZRCore/ZRExport.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

/// A place in the view around it, in points: x grows to the right, y downwards.
struct CGRect {
  double x = 0.0;
  double y = 0.0;
  double width = 0.0;
  double height = 0.0;

  friend bool operator==(const CGRect&, const CGRect&) = default;
};

/// Each part 0 to 1.
struct UIColor {
  double red = 0.0;
  double green = 0.0;
  double blue = 0.0;
  double alpha = 1.0;

  static constexpr UIColor whiteColor() { return {1.0, 1.0, 1.0, 1.0}; }
  friend bool operator==(const UIColor&, const UIColor&) = default;
};

/// What gives way when the view around a view changes its size: a sum of the bits below.
using UIViewAutoresizing = std::uint32_t;
inline constexpr UIViewAutoresizing UIViewAutoresizingNone = 0;
inline constexpr UIViewAutoresizing UIViewAutoresizingFlexibleLeftMargin = 1;
inline constexpr UIViewAutoresizing UIViewAutoresizingFlexibleWidth = 2;
inline constexpr UIViewAutoresizing UIViewAutoresizingFlexibleRightMargin = 4;
inline constexpr UIViewAutoresizing UIViewAutoresizingFlexibleTopMargin = 8;
inline constexpr UIViewAutoresizing UIViewAutoresizingFlexibleHeight = 16;
inline constexpr UIViewAutoresizing UIViewAutoresizingFlexibleBottomMargin = 32;

/// A rectangle of a screen. Main thread.
class ZR_EXPORT UIView {
 public:
  explicit UIView(const CGRect& frame = {}) : frame_(frame) {}
  UIView(const UIView&) = delete;
  UIView& operator=(const UIView&) = delete;
  virtual ~UIView();

  const CGRect& frame() const { return frame_; }
  /// Moves the view. When its size changes, so do the frames of its subviews, by their masks: along each axis the
  /// flexible ones of near margin, extent and far margin share the change in proportion to what they measure, or evenly
  /// where they measure nothing; with none of them flexible the far margin takes it.
  virtual void setFrame(const CGRect& frame);

  const std::optional<UIColor>& backgroundColor() const { return backgroundColor_; }
  virtual void setBackgroundColor(const std::optional<UIColor>& color) { backgroundColor_ = color; }

  UIViewAutoresizing autoresizingMask() const { return autoresizingMask_; }
  void setAutoresizingMask(UIViewAutoresizing mask) { autoresizingMask_ = mask; }

  /// From back to front.
  const std::vector<std::shared_ptr<UIView>>& subviews() const { return subviews_; }
  /// Puts `view` in front of those added before. Null is passed over.
  virtual void addSubview(std::shared_ptr<UIView> view);

 private:
  CGRect frame_;
  std::optional<UIColor> backgroundColor_;
  UIViewAutoresizing autoresizingMask_ = UIViewAutoresizingNone;
  std::vector<std::shared_ptr<UIView>> subviews_;
};

enum class UIActivityIndicatorViewStyle : int { whiteLarge = 0, white = 1, gray = 2 };

/// A spinner, at rest at first.
class ZR_EXPORT UIActivityIndicatorView : public UIView {
 public:
  explicit UIActivityIndicatorView(UIActivityIndicatorViewStyle style) : style_(style) {}
  ~UIActivityIndicatorView() override;

  UIActivityIndicatorViewStyle activityIndicatorViewStyle() const { return style_; }
  bool isAnimating() const { return isAnimating_; }
  virtual void startAnimating() { isAnimating_ = true; }
  virtual void stopAnimating() { isAnimating_ = false; }

 private:
  UIActivityIndicatorViewStyle style_;
  bool isAnimating_ = false;
};

#endif
