// SPDX-License-Identifier: Apache-2.0
#include "AlertCard.h"

#include <algorithm>
#include <vector>

#include "GtkText.h"

namespace {

constexpr const char* kCancelClass = "zr-cancel";

GtkWidget* makeText(const std::string& text, const char* style) {
  GtkWidget* const label = gtk_label_new(utf8Text(text).c_str());
  gtk_label_set_wrap(GTK_LABEL(label), TRUE);
  gtk_label_set_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
  gtk_label_set_max_width_chars(GTK_LABEL(label), 36);
  gtk_label_set_justify(GTK_LABEL(label), GTK_JUSTIFY_CENTER);
  gtk_widget_add_css_class(label, style);
  return label;
}

GtkWidget* makeActionButton(const UIAlertAction& action, std::function<void()> chosen) {
  GtkWidget* const button = gtk_button_new_with_label(utf8Text(action.title).c_str());
  gtk_widget_add_css_class(button, "flat");
  gtk_widget_add_css_class(button, "zr-action");
  if (action.style == UIAlertActionStyle::cancel) gtk_widget_add_css_class(button, kCancelClass);
  if (action.style == UIAlertActionStyle::destructive) gtk_widget_add_css_class(button, "destructive-action");
  g_signal_connect_data(
      button, "clicked",
      G_CALLBACK(+[](GtkButton*, gpointer closure) { (*static_cast<std::function<void()>*>(closure))(); }),
      new std::function<void()>(std::move(chosen)),
      [](gpointer closure, GClosure*) { delete static_cast<std::function<void()>*>(closure); }, GConnectFlags{});
  return button;
}

std::vector<GtkWidget*> buttonsOf(GtkWidget* card) {
  std::vector<GtkWidget*> buttons;
  for (GtkWidget* child = gtk_widget_get_first_child(card); child; child = gtk_widget_get_next_sibling(child)) {
    if (GTK_IS_BUTTON(child)) buttons.push_back(child);
  }
  return buttons;
}

bool isCancel(GtkWidget* button) { return gtk_widget_has_css_class(button, kCancelClass) != FALSE; }

}  // namespace

GtkWidget* makeAlertCard(const UIAlertController& alert, const std::function<void(std::size_t)>& chosen) {
  GtkWidget* const card = GTK_WIDGET(g_object_new(GTK_TYPE_BOX, "orientation", GTK_ORIENTATION_VERTICAL,
                                                  "accessible-role", GTK_ACCESSIBLE_ROLE_ALERT_DIALOG, nullptr));
  gtk_widget_add_css_class(card, "zr-card");
  gtk_widget_set_halign(card, GTK_ALIGN_CENTER);
  const bool isSheet = alert.preferredStyle() == UIAlertControllerStyle::actionSheet;
  gtk_widget_set_valign(card, isSheet ? GTK_ALIGN_END : GTK_ALIGN_CENTER);
  gtk_widget_set_size_request(card, isSheet ? 320 : 280, -1);

  const std::string name = utf8Text(alert.title().value_or(alert.message().value_or("")));
  if (!name.empty()) {
    gtk_accessible_update_property(GTK_ACCESSIBLE(card), GTK_ACCESSIBLE_PROPERTY_LABEL, name.c_str(), -1);
  }

  GtkBox* const box = GTK_BOX(card);
  if (alert.title()) gtk_box_append(box, makeText(*alert.title(), "title-4"));
  if (alert.message()) gtk_box_append(box, makeText(*alert.message(), "zr-message"));
  for (std::size_t i = 0; i < alert.actions().size(); ++i) {
    gtk_box_append(box, makeActionButton(alert.actions()[i], [chosen, i] { chosen(i); }));
  }
  return card;
}

void focusAlertCard(GtkWidget* card) {
  const std::vector<GtkWidget*> buttons = buttonsOf(card);
  if (buttons.empty()) return;
  const bool isSheet = gtk_widget_get_valign(card) == GTK_ALIGN_END;
  const auto cancel = std::find_if(buttons.begin(), buttons.end(), isCancel);
  gtk_widget_grab_focus(isSheet || cancel == buttons.end() ? buttons.front() : *cancel);
}

void delayChoices(GtkWidget* card) {
  constexpr guint kMilliseconds = 500;
  for (GtkWidget* const button : buttonsOf(card)) gtk_widget_set_sensitive(button, isCancel(button));
  g_timeout_add_full(
      G_PRIORITY_DEFAULT, kMilliseconds,
      [](gpointer held) -> gboolean {
        for (GtkWidget* const button : buttonsOf(GTK_WIDGET(held))) gtk_widget_set_sensitive(button, TRUE);
        return G_SOURCE_REMOVE;
      },
      g_object_ref(card), g_object_unref);
}
