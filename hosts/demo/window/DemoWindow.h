// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_WINDOW_DEMOWINDOW_H
#define ZRCORE_HOSTS_DEMO_WINDOW_DEMOWINDOW_H

#include <demo/SessionMemory.h>

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "MachineCheck.h"
#include "PlacesPage.h"
#include "SpeakPage.h"
#include "TripPage.h"
#include "WebPage.h"

namespace demo {

/// The demonstration's window. Its owner lets it go when the application has ended, no earlier: widgets report changes
/// until their last moment.
class DemoWindow {
 public:
  struct Options {
    std::string samples;                                 ///< the folder of the samples
    std::optional<std::string> tiles, tilesAttribution;  ///< of the base map, in place of those in the settings
    bool printsState = false;  ///< a line on the standard output whenever something that is shown has changed
    std::function<std::string()> lastFault;  ///< why speech was not heard, as far as anybody knows
  };

  /// Makes the window and shows it, empty.
  DemoWindow(AdwApplication* application, const Options& options);
  DemoWindow(const DemoWindow&) = delete;
  DemoWindow& operator=(const DemoWindow&) = delete;
  ~DemoWindow();

  /// Opens a geocoder's answer (named *.json or *.geojson) or a recording, and shows its page.
  void open(const std::string& path);
  /// Opens, where nothing has been opened, what was open when the program ended last, or the samples.
  void openTheRest();
  void close() { gtk_window_close(window_); }

 private:
  void addPages();
  void addActions();
  void watch();
  void endWatch();
  void askForFrames();
  void chooseFor(const std::string& page);
  void openFor(const std::string& page, const std::string& path);
  bool openIn(const std::string& page, const std::string& path);
  std::string sampleDrive() const;
  void useBaseMap(const TileWish& wish, bool isKept);
  void keepTrip();
  std::string visiblePage() const;
  void showPage(const std::string& page);
  void focusPage();
  void showTitle();
  void showMissing();
  void say(const std::string& text);
  std::string said() const;
  void showAbout();
  void printState();

  Options options_;
  Ui ui_;
  GtkWindow* window_;
  AdwViewStack* pages_;
  TripPage trip_;
  PlacesPage places_;
  SpeakPage speak_;
  WebPage web_;
  Services found_{.hasReceiver = true, .hasSound = true};  ///< until the check says otherwise
  MachineCheck check_;
  bool hasFrames_ = false;
  guint lookAgain_ = 0;
  gulong networkChanged_ = 0;
  std::map<std::string, std::string> opened_;  ///< page -> the file opened there last
  SessionMemory memory_;
  bool keepsTrip_ = false;  ///< not a sample in the place of a file that is away
  std::string printedState_;
};

}  // namespace demo

#endif
