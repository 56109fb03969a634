// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_WINDOW_PLACESPAGE_H
#define ZRCORE_HOSTS_DEMO_WINDOW_PLACESPAGE_H

#include <demo/PlaceList.h>

#include "Gtk.h"

namespace demo {

/// A geocoder's answer as a list; a place that is tapped is shown on the map.
class PlacesPage {
 public:
  explicit PlacesPage(std::function<void(const trip::PlaceMark&)> show);
  PlacesPage(const PlacesPage&) = delete;
  PlacesPage& operator=(const PlacesPage&) = delete;

  GtkWidget* widget() const { return ui_.widget("page"); }
  void focusList();

  /// Opens the answer at `path`. @return what is wrong with it; empty when it is open, if with faults.
  std::string open(const std::string& path);

  /// What the page shows, for observers outside: "answer=… listed=6".
  std::string state() const;

 private:
  Ui ui_;
  std::function<void(const trip::PlaceMark&)> show_;
  PlaceList places_;
};

}  // namespace demo

#endif
