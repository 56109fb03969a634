// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_WINDOW_DEMOWINDOW_H
#define ZRCORE_HOSTS_DEMO_WINDOW_DEMOWINDOW_H

#include <map>
#include <string>

#include "MachineCheck.h"
#include "PlacesPage.h"
#include "SpeakPage.h"
#include "TripPage.h"
#include "WebPage.h"

namespace demo {

/// The demonstration's window. Its owner lets it go when the application has ended, no earlier: widgets tell of changes
/// until their last moment.
class DemoWindow {
 public:
  struct Options {
    std::string samples;       ///< the folder of the samples
    bool printsState = false;  ///< a line on the standard output whenever something that is shown has changed
  };

  /// Makes the window and shows it, with the samples opened.
  DemoWindow(AdwApplication* application, const Options& options);
  DemoWindow(const DemoWindow&) = delete;
  DemoWindow& operator=(const DemoWindow&) = delete;
  ~DemoWindow();

  /// Opens a geocoder's answer (named *.json or *.geojson) or a recording, and shows its page.
  void open(const std::string& path);

 private:
  void addPages();
  void addActions();
  void watch();
  void endWatch();
  void askForFrames();
  void chooseFor(const std::string& page);
  void openIn(const std::string& page, const std::string& path);
  void openSamples();
  std::string visiblePage() const;
  void showPage(const std::string& page);
  void focusPage();
  void showTitle();
  void showMissing();
  void say(const std::string& text);
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
  std::string printedState_;
};

}  // namespace demo

#endif
