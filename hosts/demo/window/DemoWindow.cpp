// SPDX-License-Identifier: Apache-2.0
#include "DemoWindow.h"

#include <ZRCore/ZRPlatform.h>

#include <cstdio>
#include <utility>

#include "Names.h"

namespace demo {

namespace {

constexpr double kZoomStep = 1.5;
constexpr guint kLookMilliseconds = 250;

struct Page {
  const char* name;
  const char* title;
  const char* icon;
};
constexpr Page kTrip{"trip", "Trip", "find-location-symbolic"};
constexpr Page kPlaces{"places", "Places", "mark-location-symbolic"};
constexpr Page kSpeak{"speak", "Speak", "audio-speakers-symbolic"};
constexpr Page kWeb{"web", "Web", "web-browser-symbolic"};

GtkFileFilter* filterFor(const char* name, std::initializer_list<const char*> suffixes) {
  GtkFileFilter* const filter = gtk_file_filter_new();
  gtk_file_filter_set_name(filter, name);
  for (const char* const suffix : suffixes) gtk_file_filter_add_suffix(filter, suffix);
  return filter;
}

std::string fileNameOf(const std::string& path) {
  const std::unique_ptr<char, decltype(&g_free)> name(g_filename_display_basename(path.c_str()), g_free);
  return name.get();
}

}  // namespace

DemoWindow::DemoWindow(AdwApplication* application, const Options& options)
    : options_(options),
      ui_("window"),
      window_(ui_.get<GtkWindow>(GTK_TYPE_WINDOW, "window")),
      pages_(ui_.get<AdwViewStack>(ADW_TYPE_VIEW_STACK, "pages")),
      trip_([this](const TileWish& wish) { useBaseMap(wish, true); }),
      places_([this](const trip::PlaceMark& place) {
        showPage(kTrip.name);
        trip_.show(place);
      }),
      speak_(options.lastFault),
      check_([this](const Services& found) {
        found_ = found;
        showMissing();
      }),
      memory_(*ZRPlatformInUse().userDefaults) {
  gtk_window_set_application(window_, GTK_APPLICATION(application));
  addPages();
  addActions();
  showMissing();
  TileWish baseMap = options_.tiles ? TileWish{*options_.tiles, ""} : memory_.baseMap();
  if (options_.tilesAttribution) baseMap.attribution = *options_.tilesAttribution;
  useBaseMap(baseMap, false);
  watch();
  gtk_window_present(window_);
  focusPage();
}

DemoWindow::~DemoWindow() { endWatch(); }

/// Frames only come while something moves; the rest is looked at now and then.
void DemoWindow::watch() {
  lookAgain_ = g_timeout_add(
      kLookMilliseconds,
      [](gpointer self) -> gboolean {
        auto& window = *static_cast<DemoWindow*>(self);
        window.trip_.step();
        if (window.visiblePage() == kSpeak.name) window.speak_.step();
        window.askForFrames();
        window.printState();
        return G_SOURCE_CONTINUE;
      },
      this);
  networkChanged_ = connect<void(GNetworkMonitor*, gboolean)>(g_network_monitor_get_default(), "network-changed",
                                                              [this](GNetworkMonitor*, gboolean) { showMissing(); });
  connect<void(GtkWidget*)>(window_, "destroy", [this](GtkWidget*) { endWatch(); });
}

void DemoWindow::endWatch() {
  if (lookAgain_ == 0) return;
  keepTrip();
  memory_.store();
  g_source_remove(std::exchange(lookAgain_, 0U));
  g_signal_handler_disconnect(g_network_monitor_get_default(), networkChanged_);
}

void DemoWindow::askForFrames() {
  if (hasFrames_ || !trip_.wantsFrames()) return;
  hasFrames_ = true;
  gtk_widget_add_tick_callback(
      GTK_WIDGET(window_),
      [](GtkWidget*, GdkFrameClock*, gpointer self) -> gboolean {
        auto& window = *static_cast<DemoWindow*>(self);
        window.trip_.step();
        window.printState();
        window.hasFrames_ = window.trip_.wantsFrames();
        return window.hasFrames_ ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
      },
      this, nullptr);
}

void DemoWindow::addPages() {
  const auto add = [this](const Page& page, GtkWidget* widget) {
    adw_view_stack_add_titled_with_icon(pages_, widget, page.name, page.title, page.icon);
  };
  add(kTrip, trip_.widget());
  add(kPlaces, places_.widget());
  add(kSpeak, speak_.widget());
  add(kWeb, web_.widget());
  connectNotify(pages_, "visible-child", [this] { showTitle(); });
  showTitle();
  nameButtons(ui_.widget("notice"), "Close this notice");
  connect<void(GtkInfoBar*, int)>(ui_.widget("notice"), "response",
                                  [](GtkInfoBar* notice, int) { gtk_info_bar_set_revealed(notice, FALSE); });
}

void DemoWindow::addActions() {
  GApplication* const application = G_APPLICATION(gtk_window_get_application(window_));
  const auto add = [this, application](const char* name, std::vector<const char*> keys, std::function<void()> run) {
    const Ref<GSimpleAction> action(g_simple_action_new(name, nullptr));
    connect<void(GSimpleAction*, GVariant*)>(action.get(), "activate",
                                             [run = std::move(run)](GSimpleAction*, GVariant*) { run(); });
    g_action_map_add_action(G_ACTION_MAP(window_), G_ACTION(action.get()));
    keys.push_back(nullptr);
    gtk_application_set_accels_for_action(GTK_APPLICATION(application), (std::string("win.") + name).c_str(),
                                          keys.data());
  };
  add("open", {"<Control>o"}, [this] { chooseFor(visiblePage()); });
  add("play", {"<Control>p"}, [this] {
    trip_.playOrPause();
    keepTrip();
    askForFrames();
  });
  add("zoom-in", {"<Control>plus", "<Control>equal", "<Control>KP_Add"}, [this] { trip_.zoom(kZoomStep); });
  add("zoom-out", {"<Control>minus", "<Control>KP_Subtract"}, [this] { trip_.zoom(1.0 / kZoomStep); });
  add("zoom-fit", {"<Control>0", "<Control>KP_0"}, [this] { trip_.zoomToFit(); });
  add("end", {"<Control>End"}, [this] { trip_.playToEnd(); });
  add("details", {"F9"}, [this] { trip_.showDetails(); });
  add("close", {"<Control>w", "<Control>q"}, [this] { gtk_window_close(window_); });
  add("about", {}, [this] { showAbout(); });
  add("page-1", {"<Control>1"}, [this] { showPage(kTrip.name); });
  add("page-2", {"<Control>2"}, [this] { showPage(kPlaces.name); });
  add("page-3", {"<Control>3"}, [this] { showPage(kSpeak.name); });
  add("page-4", {"<Control>4"}, [this] { showPage(kWeb.name); });

  const Ui shortcuts("shortcuts");
  gtk_application_window_set_help_overlay(GTK_APPLICATION_WINDOW(window_),
                                          shortcuts.get<GtkShortcutsWindow>(GTK_TYPE_SHORTCUTS_WINDOW, "shortcuts"));
  const char* const keys[] = {"<Control>question", "<Control>F1", nullptr};
  gtk_application_set_accels_for_action(GTK_APPLICATION(application), "win.show-help-overlay", keys);
}

void DemoWindow::open(const std::string& path) {
  const bool isAnswer = path.ends_with(".json") || path.ends_with(".geojson");
  openFor(isAnswer ? kPlaces.name : kTrip.name, path);
}

/// As a person wishes.
void DemoWindow::openFor(const std::string& page, const std::string& path) {
  gtk_info_bar_set_revealed(ui_.get<GtkInfoBar>(GTK_TYPE_INFO_BAR, "notice"), FALSE);
  showPage(page);
  if (!openIn(page, path)) return;
  if (page == kPlaces.name) return memory_.keepPlaces(path);
  keepsTrip_ = true;
  keepTrip();
}

void DemoWindow::openTheRest() {
  const auto openAgain = [this](const Page& page, const std::string& file, const std::string& sample) {
    if (opened_.contains(page.name)) return false;
    if (openIn(page.name, file.empty() ? sample : file)) return true;
    if (!file.empty()) openIn(page.name, sample);
    return false;
  };
  openAgain(kPlaces, memory_.places(), options_.samples + "/places/nominatim/along-the-drive.json");
  const SessionMemory::Trip last = memory_.trip();
  if (!openAgain(kTrip, last.file, sampleDrive())) return;
  keepsTrip_ = true;
  trip_.seek(last.positionSeconds);
}

/// @param isKept  whether the next start finds it
void DemoWindow::useBaseMap(const TileWish& wish, bool isKept) {
  if (trip_.useBaseMap(wish) && isKept) memory_.keepBaseMap(wish);
}

std::string DemoWindow::sampleDrive() const { return options_.samples + "/drive.csv"; }

void DemoWindow::keepTrip() {
  if (!keepsTrip_ || trip_.isLive()) return;
  const std::string& file = opened_[kTrip.name];
  memory_.keepTrip({file == sampleDrive() ? "" : file, trip_.positionSeconds()});
}

void DemoWindow::chooseFor(const std::string& page) {
  const bool isAnswer = page == kPlaces.name;
  GtkFileFilter* const filter =
      isAnswer ? filterFor("Geocoder's answers", {"json", "geojson"})
               : filterFor("Recordings", {"csv", "gpx", "nmea", "nma", "log", "txt", "json", "jsonl", "gz"});
  const std::string target = isAnswer ? kPlaces.name : kTrip.name;
  chooseFile(window_, isAnswer ? "Open an Answer" : "Open a Recording", opened_[target], filter,
             [this, target](const std::string& path) { openFor(target, path); });
}

/// @return whether it is open now; if not, it is said why.
bool DemoWindow::openIn(const std::string& page, const std::string& path) {
  const std::string fault = page == kPlaces.name ? places_.open(path) : trip_.open(path);
  if (fault.empty()) {
    opened_[page] = path;
  } else {
    say(fileNameOf(path) + " " + fault);
  }
  return fault.empty();
}

std::string DemoWindow::visiblePage() const { return adw_view_stack_get_visible_child_name(pages_); }

void DemoWindow::showPage(const std::string& page) {
  adw_view_stack_set_visible_child_name(pages_, page.c_str());
  focusPage();
}

/// The keys go where they are of use.
void DemoWindow::focusPage() {
  const std::string page = visiblePage();
  if (page == kTrip.name) trip_.focusMap();
  if (page == kPlaces.name) places_.focusList();
  if (page == kSpeak.name) speak_.focusText();
  if (page == kWeb.name) web_.focusAddress();
}

void DemoWindow::showTitle() {
  AdwViewStackPage* const page = adw_view_stack_get_page(pages_, adw_view_stack_get_visible_child(pages_));
  const std::string title = adw_view_stack_page_get_title(page);
  gtk_window_set_title(window_, (title + " – ZRCore Demo").c_str());
  adw_view_switcher_title_set_title(ui_.get<AdwViewSwitcherTitle>(ADW_TYPE_VIEW_SWITCHER_TITLE, "switcher_title"),
                                    title.c_str());
  const std::string name = visiblePage();
  gtk_widget_set_visible(ui_.widget("open"), name == kTrip.name || name == kPlaces.name);
}

void DemoWindow::showMissing() {
  Services services = found_;
  services.hasSpeech = speak_.canSpeak();
  services.hasNetwork = g_network_monitor_get_network_available(g_network_monitor_get_default());
  const std::string text = missingServicesText(services);
  gtk_label_set_text(ui_.label("missing"), text.c_str());
  gtk_widget_set_visible(ui_.widget("missing"), !text.empty());
}

/// Above the pages, where it covers nothing, and until somebody has read it.
void DemoWindow::say(const std::string& text) {
  gtk_label_set_text(ui_.label("notice_text"), text.c_str());
  gtk_info_bar_set_revealed(ui_.get<GtkInfoBar>(GTK_TYPE_INFO_BAR, "notice"), TRUE);
}

void DemoWindow::showAbout() {
  adw_show_about_window(window_, "application-name", "ZRCore Demo", "application-icon", "org.zrcore.Demo", "version",
                        ZRCORE_VERSION, "license-type", GTK_LICENSE_APACHE_2_0, "copyright",
                        "© 2026 The ZRCore authors", "comments",
                        "Shows what the core of a mapping and navigation kit makes of positions, addresses, "
                        "prompts and pages.",
                        nullptr);
}

/// What the notice above the pages says, if it is there.
std::string DemoWindow::said() const {
  const bool isThere = gtk_info_bar_get_revealed(ui_.get<GtkInfoBar>(GTK_TYPE_INFO_BAR, "notice")) == TRUE;
  return isThere ? gtk_label_get_text(ui_.label("notice_text")) : "";
}

/// For whoever tests the window from outside, and sees no more than a person would.
void DemoWindow::printState() {
  if (!options_.printsState) return;
  const std::string page = visiblePage();
  const guint windows = g_list_model_get_n_items(gtk_window_get_toplevels());
  const std::string state = "page=" + page + " windows=" + std::to_string(windows) + " " + trip_.state() + " " +
                            places_.state() + " " + speak_.state() + " " + web_.state() + " said=" + said() +
                            " missing=" + gtk_label_get_text(ui_.label("missing")) + "\n";
  if (state == printedState_) return;
  printedState_ = state;
  std::fputs(state.c_str(), stdout);
  std::fflush(stdout);
}

}  // namespace demo
