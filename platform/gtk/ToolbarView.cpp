// SPDX-License-Identifier: Apache-2.0
#include "ToolbarView.h"

#include <adwaita.h>

#include <algorithm>

#include "GtkText.h"

namespace {

/// As wide and high as a finger needs.
constexpr int kTouchPoints = 44;
constexpr int kWidestRow = 640;

const char* iconOf(UIBarButtonSystemItem item) {
  return item == UIBarButtonSystemItem::refresh ? "view-refresh-symbolic" : "emblem-shared-symbolic";
}

/// Brings a button to what its item says.
void showItem(GtkButton* button, const UIBarButtonItem& item) {
  GtkWidget* const widget = GTK_WIDGET(button);
  if (item.systemItem()) {
    gtk_button_set_icon_name(button, iconOf(*item.systemItem()));
  } else {
    gtk_button_set_label(button, utf8Text(item.title().value_or("")).c_str());
  }
  gtk_widget_set_sensitive(widget, item.isEnabled());
  gtk_widget_set_size_request(widget, std::max(kTouchPoints, wholePoints(item.width())), -1);
  const std::string label = utf8Text(item.accessibilityLabel().value_or(item.title().value_or("")));
  gtk_accessible_update_property(GTK_ACCESSIBLE(button), GTK_ACCESSIBLE_PROPERTY_LABEL, label.c_str(), -1);
  // Nothing is said about an arrow that is not there.
  gtk_widget_set_tooltip_text(widget, item.isEnabled() && !label.empty() ? label.c_str() : nullptr);
}

GtkWidget* makeButton(const std::shared_ptr<UIBarButtonItem>& item) {
  GtkWidget* const button = gtk_button_new();
  gtk_widget_add_css_class(button, "flat");
  gtk_widget_add_css_class(button, "zr-item");
  const std::weak_ptr<UIBarButtonItem> weak = item;
  g_signal_connect_data(
      button, "clicked", G_CALLBACK(+[](GtkButton*, gpointer data) {
        if (const auto held = static_cast<std::weak_ptr<UIBarButtonItem>*>(data)->lock()) held->press();
      }),
      new std::weak_ptr<UIBarButtonItem>(weak),
      [](gpointer data, GClosure*) { delete static_cast<std::weak_ptr<UIBarButtonItem>*>(data); }, GConnectFlags{});
  const std::shared_ptr<GWeakRef> shown(new GWeakRef, [](GWeakRef* ref) {
    g_weak_ref_clear(ref);
    delete ref;
  });
  g_weak_ref_init(shown.get(), button);
  item->setChangeHandler([shown, weak] {
    const auto held = weak.lock();
    const owners::Ref<GtkButton> alive(static_cast<GtkButton*>(g_weak_ref_get(shown.get())));
    if (alive && held) showItem(alive.get(), *held);
  });
  showItem(GTK_BUTTON(button), *item);
  return button;
}

}  // namespace

GtkWidget* makeBarItemWidget(const std::shared_ptr<UIBarButtonItem>& item) {
  if (GtkWidget* const own = HasWidget::of(item->customView())) return own;
  if (item->systemItem() != UIBarButtonSystemItem::flexibleSpace) return makeButton(item);
  GtkWidget* const space = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
  gtk_widget_set_hexpand(space, TRUE);
  return space;
}

ToolbarView::ToolbarView() : Shown(adw_clamp_new()), row_(gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0)) {
  adw_clamp_set_maximum_size(ADW_CLAMP(widget()), kWidestRow);
  adw_clamp_set_child(ADW_CLAMP(widget()), row_);
  gtk_widget_add_css_class(widget(), "toolbar");
  gtk_widget_add_css_class(widget(), "zr-toolbar");
}

ToolbarView::~ToolbarView() { removeItems(); }

void ToolbarView::removeItems() {
  while (GtkWidget* const child = gtk_widget_get_first_child(row_)) gtk_box_remove(GTK_BOX(row_), child);
}

void ToolbarView::sizeToFit() {
  int height = 0;
  gtk_widget_measure(widget(), GTK_ORIENTATION_VERTICAL, -1, nullptr, &height, nullptr, nullptr);
  CGRect fitting = frame();
  fitting.height = std::max(height, kTouchPoints);
  setFrame(fitting);
}

void ToolbarView::setItems(Items items) {
  removeItems();
  for (const auto& item : items) gtk_box_append(GTK_BOX(row_), makeBarItemWidget(item));
  UIToolbar::setItems(std::move(items));
}

SpinnerView::SpinnerView(UIActivityIndicatorViewStyle style) : Shown(gtk_spinner_new(), style) {
  if (style == UIActivityIndicatorViewStyle::gray) gtk_widget_add_css_class(widget(), "dim-label");
  gtk_widget_set_opacity(widget(), 0.0);  // at rest it cannot be seen, and keeps its place
}

void SpinnerView::startAnimating() {
  UIActivityIndicatorView::startAnimating();
  gtk_widget_set_opacity(widget(), 1.0);
  gtk_spinner_start(GTK_SPINNER(widget()));
  gtk_accessible_update_state(GTK_ACCESSIBLE(widget()), GTK_ACCESSIBLE_STATE_BUSY, TRUE, -1);
}

void SpinnerView::stopAnimating() {
  UIActivityIndicatorView::stopAnimating();
  rest();
}

void SpinnerView::rest() {
  gtk_widget_set_opacity(widget(), 0.0);
  gtk_spinner_stop(GTK_SPINNER(widget()));
  gtk_accessible_update_state(GTK_ACCESSIBLE(widget()), GTK_ACCESSIBLE_STATE_BUSY, FALSE, -1);
}
