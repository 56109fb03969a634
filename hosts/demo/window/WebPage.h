// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_WINDOW_WEBPAGE_H
#define ZRCORE_HOSTS_DEMO_WINDOW_WEBPAGE_H

#include "Gtk.h"

namespace demo {

/// An address, and the in-app browser for it.
class WebPage {
 public:
  WebPage();
  WebPage(const WebPage&) = delete;
  WebPage& operator=(const WebPage&) = delete;

  GtkWidget* widget() const { return ui_.widget("page"); }
  void focusAddress() { gtk_widget_grab_focus(ui_.widget("address")); }

  /// What the page shows, for observers outside: "fault=…".
  std::string state() const;

 private:
  void open();
  void showFault(const std::string& fault);

  Ui ui_;
};

}  // namespace demo

#endif
