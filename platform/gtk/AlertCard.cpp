// SPDX-License-Identifier: Apache-2.0
#include "AlertCard.h"

#include "GtkText.h"

namespace {

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
  if (action.style == UIAlertActionStyle::cancel) gtk_widget_add_css_class(button, "zr-cancel");
  if (action.style == UIAlertActionStyle::destructive) gtk_widget_add_css_class(button, "destructive-action");
  g_signal_connect_data(
      button, "clicked",
      G_CALLBACK(+[](GtkButton*, gpointer closure) { (*static_cast<std::function<void()>*>(closure))(); }),
      new std::function<void()>(std::move(chosen)),
      [](gpointer closure, GClosure*) { delete static_cast<std::function<void()>*>(closure); }, GConnectFlags{});
  return button;
}

}  // namespace

GtkWidget* makeAlertCard(const UIAlertController& alert, const std::function<void(std::size_t)>& chosen) {
  GtkWidget* const card = GTK_WIDGET(g_object_new(GTK_TYPE_BOX, "orientation", GTK_ORIENTATION_VERTICAL,
                                                  "accessible-role", GTK_ACCESSIBLE_ROLE_ALERT_DIALOG, nullptr));
  gtk_widget_add_css_class(card, "zr-card");
  gtk_widget_set_halign(card, GTK_ALIGN_CENTER);
  const bool isSheet = alert.preferredStyle() == UIAlertControllerStyle::actionSheet;
  gtk_widget_set_valign(card, isSheet ? GTK_ALIGN_END : GTK_ALIGN_CENTER);
  gtk_widget_set_size_request(card, isSheet ? 320 : 280, -1);

  GtkBox* const box = GTK_BOX(card);
  if (alert.title()) gtk_box_append(box, makeText(*alert.title(), "title-4"));
  if (alert.message()) gtk_box_append(box, makeText(*alert.message(), "zr-message"));
  for (std::size_t i = 0; i < alert.actions().size(); ++i) {
    gtk_box_append(box, makeActionButton(alert.actions()[i], [chosen, i] { chosen(i); }));
  }
  return card;
}

void focusAlertCard(GtkWidget* card) {
  for (GtkWidget* child = gtk_widget_get_first_child(card); child; child = gtk_widget_get_next_sibling(child)) {
    if (GTK_IS_BUTTON(child)) {
      gtk_widget_grab_focus(child);
      return;
    }
  }
}
