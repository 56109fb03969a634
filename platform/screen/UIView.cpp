// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/UIToolbar.h>
#include <ZRCore/UIView.h>
#include <ZRCore/UIWebView.h>

#include <utility>

UIView::~UIView() = default;
UIActivityIndicatorView::~UIActivityIndicatorView() = default;
UIWebViewDelegate::~UIWebViewDelegate() = default;
UIWebView::~UIWebView() = default;

namespace {

/// One axis of a subview: its margins in the view around it, its extent, and which of the three give way.
struct Axis {
  double nearMargin;
  double extent;
  double farMargin;
  bool nearFlexible;
  bool extentFlexible;
  bool farFlexible;

  /// Shares out a change of the surrounding extent.
  void stretch(double change) {
    const double measured =
        (nearFlexible ? nearMargin : 0.0) + (extentFlexible ? extent : 0.0) + (farFlexible ? farMargin : 0.0);
    const int flexible = int{nearFlexible} + int{extentFlexible} + int{farFlexible};
    if (flexible == 0) return;
    const auto share = [&](double part) { return change * (measured > 0.0 ? part / measured : 1.0 / flexible); };
    if (extentFlexible) extent += share(extent);
    if (nearFlexible) nearMargin += share(nearMargin);
  }
};

}  // namespace

void UIView::setFrame(const CGRect& frame) {
  const CGRect before = std::exchange(frame_, frame);
  if (before.width == frame.width && before.height == frame.height) return;
  for (const auto& view : subviews_) {
    const CGRect& inner = view->frame();
    const auto gives = [mask = view->autoresizingMask()](UIViewAutoresizing bit) { return (mask & bit) != 0; };
    Axis x{inner.x,
           inner.width,
           before.width - inner.x - inner.width,
           gives(UIViewAutoresizingFlexibleLeftMargin),
           gives(UIViewAutoresizingFlexibleWidth),
           gives(UIViewAutoresizingFlexibleRightMargin)};
    Axis y{inner.y,
           inner.height,
           before.height - inner.y - inner.height,
           gives(UIViewAutoresizingFlexibleTopMargin),
           gives(UIViewAutoresizingFlexibleHeight),
           gives(UIViewAutoresizingFlexibleBottomMargin)};
    x.stretch(frame.width - before.width);
    y.stretch(frame.height - before.height);
    view->setFrame({x.nearMargin, y.nearMargin, x.extent, y.extent});
  }
}

void UIView::addSubview(std::shared_ptr<UIView> view) {
  if (view) subviews_.push_back(std::move(view));
}
