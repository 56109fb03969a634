// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_GTK_TOOLBARVIEW_H
#define ZRCORE_PLATFORM_GTK_TOOLBARVIEW_H

#include <ZRCore/UIToolbar.h>

#include <memory>

#include "FrameView.h"

/// What shows one item of a bar: a button, a space, or the item's own view. It follows the item's changes for as long
/// as the item lives, or until the next call for the same item.
/// @return a floating widget, or the own view's.
GtkWidget* makeBarItemWidget(const std::shared_ptr<UIBarButtonItem>& item);

/// A row of buttons. Its colours are the theme's, whatever style and tint it is given: a bar in colours of its own
/// would stand out against every desktop, and in the dark.
class ToolbarView final : public Shown<UIToolbar> {
 public:
  ToolbarView();
  ~ToolbarView() override;

  void sizeToFit() override;
  void setItems(Items items) override;

 private:
  void removeItems();

  GtkWidget* row_;  ///< of the items; in a wide window they stay within reach of one another
};

/// A spinner in the colours of the bar it stands in, which are legible on it in both styles; grey is dimmed.
class SpinnerView final : public Shown<UIActivityIndicatorView> {
 public:
  explicit SpinnerView(UIActivityIndicatorViewStyle style);
  void startAnimating() override;
  void stopAnimating() override;
  /// Comes to rest in the eye alone: what the screen's owner was told goes on until the next start.
  void rest();
};

#endif
