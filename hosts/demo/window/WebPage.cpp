// SPDX-License-Identifier: Apache-2.0
#include "WebPage.h"

#include <ZRCore/ZRGtkPlatform.h>
#include <ZRCore/ZRWebViewController.h>
#include <demo/WebAddress.h>

namespace demo {

WebPage::WebPage() : ui_("web") {
  connect<void(GtkButton*)>(ui_.widget("open"), "clicked", [this](GtkButton*) { open(); });
  connect<void(GtkEntry*)>(ui_.widget("address"), "activate", [this](GtkEntry*) { open(); });
  connect<void(GtkEditable*)>(ui_.widget("address"), "changed",
                              [](GtkEditable* address) { gtk_widget_remove_css_class(GTK_WIDGET(address), "error"); });
}

void WebPage::open() {
  GtkWidget* const entry = ui_.widget("address");
  const auto address = webAddress(gtk_editable_get_text(GTK_EDITABLE(entry)));
  if (!address) return gtk_widget_add_css_class(entry, "error");
  ZRGtkOpenWindow(ZRWebViewController::initWithUrl(*address), GTK_WINDOW(gtk_widget_get_root(entry)));
}

}  // namespace demo
