// SPDX-License-Identifier: Apache-2.0
#include "WebPage.h"

#include <ZRCore/ZRGtkPlatform.h>
#include <ZRCore/ZRWebViewController.h>
#include <demo/WebAddress.h>

#include "Names.h"

namespace demo {

WebPage::WebPage() : ui_("web") {
  connect<void(GtkButton*)>(ui_.widget("open"), "clicked", [this](GtkButton*) { open(); });
  connect<void(GtkEntry*)>(ui_.widget("address"), "activate", [this](GtkEntry*) { open(); });
  connect<void(GtkEditable*)>(ui_.widget("address"), "changed", [this](GtkEditable*) { showFault({}); });
  nameScrolledParts(widget(), "A page of the web");
}

void WebPage::open() {
  GtkWidget* const entry = ui_.widget("address");
  const auto address = webAddress(gtk_editable_get_text(GTK_EDITABLE(entry)));
  if (!address) return showFault(webAddressFault(gtk_editable_get_text(GTK_EDITABLE(entry))));
  ZRGtkOpenWindow(ZRWebViewController::initWithUrl(*address), GTK_WINDOW(gtk_widget_get_root(entry)));
}

void WebPage::showFault(const std::string& fault) {
  GtkWidget* const entry = ui_.widget("address");
  if (fault.empty()) {
    gtk_widget_remove_css_class(entry, "error");
  } else {
    gtk_widget_add_css_class(entry, "error");
  }
  gtk_accessible_update_state(GTK_ACCESSIBLE(entry), GTK_ACCESSIBLE_STATE_INVALID,
                              fault.empty() ? GTK_ACCESSIBLE_INVALID_FALSE : GTK_ACCESSIBLE_INVALID_TRUE, -1);
  gtk_label_set_text(ui_.label("fault"), fault.c_str());
  gtk_widget_set_visible(ui_.widget("fault"), !fault.empty());
}

std::string WebPage::state() const { return std::string("fault=") + gtk_label_get_text(ui_.label("fault")); }

}  // namespace demo
