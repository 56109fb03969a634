// SPDX-License-Identifier: Apache-2.0
#include "PageNotice.h"

#include <adwaita.h>

#include <utility>

#include "GtkText.h"

namespace {

constexpr std::size_t kLongestNoticedAddress = 300;  // bytes

GtkWidget* makeLabel(const std::string& text) {
  GtkWidget* const label = gtk_label_new(text.c_str());
  gtk_label_set_wrap(GTK_LABEL(label), TRUE);
  gtk_label_set_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
  return label;
}

/// Nothing for a button without a label.
void appendButton(GtkWidget* box, const std::string& label, const std::function<void()>& pressed) {
  if (label.empty()) return;
  GtkWidget* const button = gtk_button_new_with_label(label.c_str());
  gtk_widget_set_halign(button, GTK_ALIGN_CENTER);
  gtk_widget_set_valign(button, GTK_ALIGN_CENTER);
  if (gtk_orientable_get_orientation(GTK_ORIENTABLE(box)) == GTK_ORIENTATION_VERTICAL) {
    gtk_widget_add_css_class(button, "pill");
  }
  const auto press = +[](GtkButton*, gpointer action) { (*static_cast<const std::function<void()>*>(action))(); };
  g_signal_connect(button, "clicked", G_CALLBACK(press), const_cast<std::function<void()>*>(&pressed));
  gtk_box_append(GTK_BOX(box), button);
}

}  // namespace

PageNotice::PageNotice(Actions actions)
    : actions_(std::move(actions)),
      widget_(owners::refToNew(GTK_WIDGET(
          g_object_new(ADW_TYPE_BIN, "visible", FALSE, "accessible-role", GTK_ACCESSIBLE_ROLE_ALERT, nullptr)))) {
  gtk_widget_add_css_class(widget_.get(), "zr-notice");
}

PageNotice::~PageNotice() {
  hide();  // an animation may keep the widget for a moment, and the button must not outlive this object
}

void PageNotice::fill(GtkWidget* content, GtkAlign vertically) {
  adw_bin_set_child(ADW_BIN(widget_.get()), content);
  gtk_widget_set_valign(widget_.get(), vertically);
  gtk_widget_set_visible(widget_.get(), TRUE);
}

void PageNotice::show(const Words& words) {
  GtkWidget* const page = adw_status_page_new();
  adw_status_page_set_icon_name(ADW_STATUS_PAGE(page), "dialog-warning-symbolic");
  adw_status_page_set_title(ADW_STATUS_PAGE(page), words.title.c_str());
  // The keyboard can be in what scrolls it, for which the toolkit has no name.
  gtk_accessible_update_property(GTK_ACCESSIBLE(gtk_widget_get_first_child(page)), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                 words.title.c_str(), -1);
  GtkWidget* const box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 18);
  for (const std::string& text : {words.sentence, shownText(words.address, kLongestNoticedAddress)}) {
    if (text.empty()) continue;
    GtkWidget* const label = makeLabel(text);
    gtk_label_set_justify(GTK_LABEL(label), GTK_JUSTIFY_CENTER);
    gtk_box_append(GTK_BOX(box), label);
  }
  if (!words.address.empty()) gtk_widget_add_css_class(gtk_widget_get_last_child(box), "dim-label");
  appendButton(box, words.retry, actions_.retry);
  appendButton(box, words.leave, actions_.leave);
  adw_status_page_set_child(ADW_STATUS_PAGE(page), box);
  fill(page, GTK_ALIGN_FILL);
}

void PageNotice::showAbovePage(const Words& words) {
  GtkWidget* const box = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 6);
  gtk_widget_add_css_class(box, "zr-bar");
  GtkWidget* const label = makeLabel(words.title);
  gtk_widget_set_tooltip_text(label, words.sentence.c_str());
  gtk_widget_set_hexpand(label, TRUE);
  gtk_label_set_xalign(GTK_LABEL(label), 0.0F);
  gtk_box_append(GTK_BOX(box), label);
  appendButton(box, words.retry, actions_.retry);
  appendButton(box, words.leave, actions_.leave);
  fill(box, GTK_ALIGN_START);
}

void PageNotice::hide() {
  gtk_widget_set_visible(widget_.get(), FALSE);
  adw_bin_set_child(ADW_BIN(widget_.get()), nullptr);
}

std::string loadFailureSentence(const GError& error) {
  struct Row {
    GQuark domain;
    int code;
    const char* sentence;
  };
  const char* const kUnreachable = "The server cannot be reached. Is there a network?";
  const char* const kUnknown = "No server of this name is known, or there is no network.";
  const Row rows[] = {
      {G_RESOLVER_ERROR, G_RESOLVER_ERROR_NOT_FOUND, kUnknown},
      {G_RESOLVER_ERROR, G_RESOLVER_ERROR_TEMPORARY_FAILURE, kUnknown},
      {G_IO_ERROR, G_IO_ERROR_HOST_NOT_FOUND, kUnknown},
      {G_IO_ERROR, G_IO_ERROR_HOST_UNREACHABLE, kUnreachable},
      {G_IO_ERROR, G_IO_ERROR_NETWORK_UNREACHABLE, kUnreachable},
      {G_IO_ERROR, G_IO_ERROR_CONNECTION_REFUSED, "The server refuses the connection."},
      {G_IO_ERROR, G_IO_ERROR_TIMED_OUT, "The server has not answered in time."},
  };
  if (error.domain == G_TLS_ERROR) {
    return hostText("The server cannot prove that it is the one it claims to be; nothing was sent to it.");
  }
  for (const Row& row : rows) {
    if (g_error_matches(&error, row.domain, row.code)) return hostText(row.sentence);
  }
  return utf8Text(error.message);
}
