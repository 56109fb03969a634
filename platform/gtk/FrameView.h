// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_GTK_FRAMEVIEW_H
#define ZRCORE_PLATFORM_GTK_FRAMEVIEW_H

#include <ZRCore/UIView.h>
#include <gtk/gtk.h>
#include <owners/GLib.h>

#include <cmath>
#include <memory>
#include <utility>

/// Points as GTK counts them, within what a screen may measure, whatever a host has reckoned.
inline int wholePoints(double points) {
  return static_cast<int>(std::lround(std::fmin(std::fmax(points, -10000.0), 10000.0)));
}

/// A view that is a widget.
class HasWidget {
 public:
  virtual ~HasWidget() = default;
  GtkWidget* widget() const { return widget_.get(); }

  /// The widget of `view`; null for a view that has none.
  static GtkWidget* of(const std::shared_ptr<UIView>& view) {
    const auto* const holder = dynamic_cast<const HasWidget*>(view.get());
    return holder ? holder->widget() : nullptr;
  }

 protected:
  /// Takes a new widget over.
  explicit HasWidget(GtkWidget* widget) : widget_(owners::refToNew(widget)) {}

 private:
  owners::Ref<GtkWidget> widget_;
};

/// Lets the view around `widget` place it anew.
void frameOfWidgetHasChanged(GtkWidget* widget);

/// One of the seam's views as a widget: Base says what it is, the widget shows it where its frame lies.
template <class Base>
class Shown : public Base, public HasWidget {
 public:
  template <class... Arguments>
  explicit Shown(GtkWidget* widget, Arguments&&... arguments)
      : Base(std::forward<Arguments>(arguments)...), HasWidget(widget) {}

  void setFrame(const CGRect& frame) override {
    Base::setFrame(frame);
    frameOfWidgetHasChanged(widget());
  }
};

/// A plain view, and the only one that shows its subviews: each where its frame lies. It takes the size that GTK gives
/// it as the size of its frame.
class FrameView final : public Shown<UIView> {
 public:
  explicit FrameView(const CGRect& frame);
  ~FrameView() override;

  void addSubview(std::shared_ptr<UIView> view) override;
  void setBackgroundColor(const std::optional<UIColor>& color) override;
};

#endif
