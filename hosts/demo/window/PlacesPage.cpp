// SPDX-License-Identifier: Apache-2.0
#include "PlacesPage.h"

#include <place/PlaceFile.h>

#include <utility>

#include "Names.h"

namespace demo {

namespace {

GtkWidget* lineOf(const std::string& text, const char* style) {
  GtkWidget* const label = gtk_label_new(text.c_str());
  gtk_label_set_xalign(GTK_LABEL(label), 0.0F);
  gtk_label_set_wrap(GTK_LABEL(label), TRUE);
  gtk_label_set_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
  if (style != nullptr) gtk_widget_add_css_class(label, style);
  return label;
}

GtkWidget* rowOf(const PlaceList::Entry& entry) {
  GtkWidget* const texts = gtk_box_new(GTK_ORIENTATION_VERTICAL, 3);
  gtk_widget_set_hexpand(texts, TRUE);
  const std::string heading = entry.primary.empty() ? "(no address)" : entry.primary;
  gtk_box_append(GTK_BOX(texts), lineOf(heading, "heading"));
  if (!entry.secondary.empty()) gtk_box_append(GTK_BOX(texts), lineOf(entry.secondary, nullptr));
  if (!entry.singleLine.empty()) {
    GtkWidget* const line = lineOf(entry.singleLine, "caption");
    gtk_widget_add_css_class(line, "dim-label");
    gtk_box_append(GTK_BOX(texts), line);
  }
  GtkWidget* const box = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 12);
  for (const auto set : {gtk_widget_set_margin_top, gtk_widget_set_margin_bottom, gtk_widget_set_margin_start,
                         gtk_widget_set_margin_end}) {
    set(box, 12);
  }
  gtk_box_append(GTK_BOX(box), texts);
  if (entry.mark) gtk_box_append(GTK_BOX(box), gtk_image_new_from_icon_name("mark-location-symbolic"));

  GtkWidget* const row = gtk_list_box_row_new();
  gtk_list_box_row_set_child(GTK_LIST_BOX_ROW(row), box);
  gtk_list_box_row_set_activatable(GTK_LIST_BOX_ROW(row), entry.mark.has_value());
  setName(row, entry.singleLine.empty() ? heading : entry.singleLine);
  gtk_widget_set_tooltip_text(row, entry.mark ? "Show on the map" : "This place has no position");
  return row;
}

}  // namespace

PlacesPage::PlacesPage(std::function<void(const trip::PlaceMark&)> show) : ui_("places"), show_(std::move(show)) {
  const auto activated = [this](GtkListBox*, GtkListBoxRow* row) {
    const auto& mark = places_.entries[static_cast<std::size_t>(gtk_list_box_row_get_index(row))].mark;
    if (mark) show_(*mark);
  };
  connect<void(GtkListBox*, GtkListBoxRow*)>(ui_.widget("list"), "row-activated", activated);
  gtk_stack_set_visible_child_name(GTK_STACK(widget()), "empty");
  nameScrolledParts(widget(), "Places");
}

std::string PlacesPage::open(const std::string& path) {
  try {
    places_ = loadPlaces(path);
  } catch (const place::FileError& error) {
    return error.what();
  }
  auto* const list = ui_.get<GtkListBox>(GTK_TYPE_LIST_BOX, "list");
  while (GtkWidget* const row = gtk_widget_get_first_child(GTK_WIDGET(list))) gtk_list_box_remove(list, row);
  for (const PlaceList::Entry& entry : places_.entries) gtk_list_box_append(list, rowOf(entry));
  gtk_label_set_text(ui_.label("title"), places_.name.c_str());
  gtk_label_set_text(ui_.label("details"), places_.summary().c_str());
  const std::unique_ptr<char, decltype(&g_free)> markup(
      g_markup_escape_text((places_.name + ": " + places_.summary()).c_str(), -1), g_free);
  adw_status_page_set_description(ui_.get<AdwStatusPage>(ADW_TYPE_STATUS_PAGE, "empty"), markup.get());
  gtk_stack_set_visible_child_name(GTK_STACK(widget()), places_.entries.empty() ? "empty" : "list");
  return {};
}

void PlacesPage::focusList() {
  GtkWidget* const first = gtk_widget_get_first_child(ui_.widget("list"));
  if (first != nullptr) gtk_widget_grab_focus(first);
}

std::string PlacesPage::state() const {
  return "answer=" + places_.name + " listed=" + std::to_string(places_.entries.size());
}

}  // namespace demo
