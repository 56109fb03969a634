// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_WINDOW_TRIPPAGE_H
#define ZRCORE_HOSTS_DEMO_WINDOW_TRIPPAGE_H

#include <demo/TripSession.h>

#include <array>

#include "BaseMap.h"
#include "MapWidget.h"

namespace demo {

/// A trip on the map, its playback, the clients and the switches of the service.
class TripPage {
 public:
  /// @param wishBaseMap  called when a person has chosen another base map
  explicit TripPage(std::function<void(const TileWish&)> wishBaseMap);
  TripPage(const TripPage&) = delete;
  TripPage& operator=(const TripPage&) = delete;

  GtkWidget* widget() const { return ui_.widget("page"); }

  /// Opens the recording at `path`. @return what is wrong with it; empty when it is open.
  std::string open(const std::string& path);
  void seek(double seconds);
  double positionSeconds() const { return session_.playback().positionSeconds(); }
  bool isLive() const { return session_.isLive(); }
  void playOrPause();
  /// All that is left of the recording, at once.
  void playToEnd();
  /// Draws the trip over that base map.
  /// @return whether it can be had; if not, the page says why, and nothing else changes
  bool useBaseMap(const TileWish& wish);
  /// Marks a place on the map and shows its surroundings.
  void show(const trip::PlaceMark& place);
  void zoom(double factor);
  void zoomToFit();
  void showDetails();
  void focusMap() { gtk_widget_grab_focus(ui_.widget("map")); }

  /// Lets time pass: once a frame, as long as the page wants frames, and otherwise a few times a second, for receivers.
  void step();
  bool wantsFrames() const { return session_.playback().isPlaying(); }

  /// What the page shows, for observers outside: "fixes=12 plain=12 …".
  std::string state() const;

 private:
  void makeClientRows();
  void listenToSwitches();
  void listenToSources();
  void useSource(std::size_t index);
  void beginTrip();
  void listenToPlayback();
  void listenToSpace();
  void listenToBaseMap();
  void showSource();
  void showPlayback();
  void showService();
  void showBaseMap();

  Ui ui_;
  TripSession session_;
  std::vector<trip::PlaceMark> places_;
  std::function<void(const TileWish&)> wishBaseMap_;
  std::shared_ptr<TileLoader> baseMap_;  ///< null: none
  std::string wishFault_;                ///< why the one that was wished last cannot be had
  MapWidget map_;
  GtkRange* position_;
  AdwComboRow* sources_;

  struct ClientRow {
    GtkLabel* count = nullptr;
    GtkSwitch* listens = nullptr;
  };
  std::array<ClientRow, trip::TripClients::kCount> clientRows_;
};

}  // namespace demo

#endif
