// SPDX-License-Identifier: Apache-2.0
#include "DialogLayer.h"

#include <algorithm>
#include <cstddef>
#include <functional>

#include "AlertCard.h"

namespace {

constexpr const char* kLayerKey = "zrcore-dialog-layer";

}  // namespace

DialogLayer::DialogLayer(GtkWidget* content) : overlay_(owners::refToNew(gtk_overlay_new())), content_(content) {
  gtk_overlay_set_child(GTK_OVERLAY(overlay_.get()), content);
  g_object_set_data(G_OBJECT(overlay_.get()), kLayerKey, this);
}

DialogLayer::~DialogLayer() {
  while (!dialogs_.empty()) close(dialogs_.back().alert.get());
  g_object_set_data(G_OBJECT(overlay_.get()), kLayerKey, nullptr);
  g_clear_weak_pointer(&focusBefore_);
}

DialogLayer* DialogLayer::around(GtkWidget* widget) {
  for (; widget; widget = gtk_widget_get_parent(widget)) {
    if (gpointer const layer = g_object_get_data(G_OBJECT(widget), kLayerKey)) return static_cast<DialogLayer*>(layer);
  }
  return nullptr;
}

void DialogLayer::present(const void* presenter, const std::shared_ptr<UIAlertController>& alert, Wish wish) {
  if (dialogs_.empty()) {
    GtkRoot* const root = gtk_widget_get_root(overlay_.get());
    g_set_weak_pointer(&focusBefore_, root ? gtk_root_get_focus(root) : nullptr);
    gtk_widget_set_can_focus(content_, FALSE);
  }
  GtkWidget* const scrim = gtk_overlay_new();
  GtkWidget* const shade = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
  gtk_widget_add_css_class(shade, "zr-shade");
  gtk_overlay_set_child(GTK_OVERLAY(scrim), shade);
  if (alert->preferredStyle() == UIAlertControllerStyle::actionSheet) {
    GtkGesture* const click = gtk_gesture_click_new();
    g_signal_connect_swapped(click, "released", G_CALLBACK(+[](DialogLayer* self) { self->cancelTop(); }), this);
    gtk_widget_add_controller(shade, GTK_EVENT_CONTROLLER(click));
  }
  const UIAlertController* const shown = alert.get();
  GtkWidget* const card = makeAlertCard(*alert, [this, shown](std::size_t index) { choose(shown, index); });
  gtk_overlay_add_overlay(GTK_OVERLAY(scrim), card);
  gtk_overlay_add_overlay(GTK_OVERLAY(overlay_.get()), scrim);
  dialogs_.push_back({presenter, alert, scrim});
  if (wish == Wish::ofPage) delayChoices(card);
  focusAlertCard(card);
}

void DialogLayer::dismiss(const void* presenter) {
  const auto isIts = [&](const Dialog& dialog) { return dialog.presenter == presenter; };
  for (auto found = dialogs_.end();
       (found = std::find_if(dialogs_.begin(), dialogs_.end(), isIts)) != dialogs_.end();) {
    close(found->alert.get());
  }
}

bool DialogLayer::cancelTop() {
  if (dialogs_.empty()) return false;
  const auto& actions = dialogs_.back().alert->actions();
  const auto cancel = std::find_if(actions.begin(), actions.end(), [](const UIAlertAction& action) {
    return action.style == UIAlertActionStyle::cancel;
  });
  if (cancel != actions.end()) choose(dialogs_.back().alert.get(), static_cast<std::size_t>(cancel - actions.begin()));
  return true;
}

void DialogLayer::choose(const UIAlertController* alert, std::size_t index) {
  // The handler may present the next dialogue, or end this layer: nothing of it is touched afterwards.
  const std::function<void()> handler = alert->actions()[index].handler;
  close(alert);
  if (handler) handler();
}

void DialogLayer::close(const UIAlertController* alert) {
  const auto found =
      std::find_if(dialogs_.begin(), dialogs_.end(), [&](const Dialog& dialog) { return dialog.alert.get() == alert; });
  if (found == dialogs_.end()) return;
  GtkWidget* const scrim = found->scrim;
  dialogs_.erase(found);
  gtk_overlay_remove_overlay(GTK_OVERLAY(overlay_.get()), scrim);
  if (!dialogs_.empty()) return;
  gtk_widget_set_can_focus(content_, TRUE);
  if (focusBefore_) gtk_widget_grab_focus(focusBefore_);
}
