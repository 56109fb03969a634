// SPDX-License-Identifier: Apache-2.0
#include "Names.h"

namespace demo {

namespace {

void forEachWithin(GtkWidget* widget, const std::function<void(GtkWidget*)>& visit) {
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child)) {
    visit(child);
    forEachWithin(child, visit);
  }
}

/// A line that has not been in view has no text yet.
void nameLine(GtkWidget* line, const std::string& otherwise) {
  std::string text;
  forEachWithin(line, [&text](GtkWidget* part) {
    if (text.empty() && GTK_IS_LABEL(part)) text = gtk_label_get_text(GTK_LABEL(part));
  });
  setName(line, text.empty() ? otherwise : text);
}

void nameChoicesOnce(GtkWidget* combo, const std::string& name) {
  forEachWithin(combo, [&name](GtkWidget* part) {
    const bool isLine = g_strcmp0(G_OBJECT_TYPE_NAME(part), "GtkListItemWidget") == 0;
    if (isLine) nameLine(part, name);
    if (GTK_IS_LIST_VIEW(part) || GTK_IS_TOGGLE_BUTTON(part) || GTK_IS_SCROLLED_WINDOW(part)) setName(part, name);
  });
}

}  // namespace

void setName(GtkWidget* widget, const std::string& name) {
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_PROPERTY_LABEL, name.c_str(), -1);
}

void nameButtons(GtkWidget* widget, const std::string& name) {
  forEachWithin(widget, [&name](GtkWidget* part) {
    if (GTK_IS_BUTTON(part)) setName(part, name);
  });
}

void nameScrolledParts(GtkWidget* widget, const std::string& name) {
  if (GTK_IS_SCROLLED_WINDOW(widget)) setName(widget, name);
  forEachWithin(widget, [&name](GtkWidget* part) {
    if (GTK_IS_SCROLLED_WINDOW(part)) setName(part, name);
  });
}

void nameChoices(GtkWidget* combo, const std::string& name) {
  nameChoicesOnce(combo, name);
  // A list makes its lines when it is laid out, and gives them their texts when they come into view.
  const auto nameSoon = [combo, name] {
    struct Choices {
      Ref<GtkWidget> combo;
      std::string name;
    };
    g_idle_add_full(
        G_PRIORITY_LOW,
        [](gpointer data) -> gboolean {
          const auto& choices = *static_cast<Choices*>(data);
          nameChoicesOnce(choices.combo.get(), choices.name);
          return G_SOURCE_REMOVE;
        },
        new Choices{owners::refTo(combo), name}, [](gpointer data) { delete static_cast<Choices*>(data); });
  };
  const auto nameWhenShown = [&nameSoon](GtkWidget* part) {
    connect<void(GtkWidget*)>(part, "map", [nameSoon](GtkWidget*) { nameSoon(); });
  };
  nameWhenShown(combo);
  forEachWithin(combo, [&nameWhenShown](GtkWidget* part) {
    if (GTK_IS_POPOVER(part)) nameWhenShown(part);
  });
  connectNotify(combo, "selected", nameSoon);
}

}  // namespace demo
