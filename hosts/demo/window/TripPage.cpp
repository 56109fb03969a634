// SPDX-License-Identifier: Apache-2.0
#include "TripPage.h"

#include <demo/TripTexts.h>
#include <trip/Words.h>
#include <trip/replay/Recording.h>

#include <algorithm>
#include <cmath>

#include "Names.h"
#include "Receivers.h"

namespace demo {

using trip::TripClients;

namespace {

constexpr std::array<double, 6> kRates{1.0, 2.0, 5.0, 20.0, 60.0, 300.0};
constexpr guint kRateAtStart = 2;

struct ClientText {
  const char *name, *explanation;
};
constexpr std::array<ClientText, TripClients::kCount> kClientTexts{
    {{"Plain", "every fix, filtered"},
     {"Snapped", "the last fix of each batch, put on the way so far"},
     {"Half-way", "listens from a quarter to three quarters"}}};

void setText(GtkLabel* label, const std::string& text) {
  if (text != gtk_label_get_text(label)) gtk_label_set_text(label, text.c_str());
}

/// Where a trip begins whose way nobody knows yet: a few streets around.
trip::Envelope surroundingsOf(ZRMapPoint place) {
  constexpr double kMapPointsAround = 800.0;
  trip::Envelope around;
  around.add({place.x - kMapPointsAround, place.y - kMapPointsAround});
  around.add({place.x + kMapPointsAround, place.y + kMapPointsAround});
  return around;
}

}  // namespace

TripPage::TripPage(std::function<void(const TileWish&)> wishBaseMap)
    : ui_("trip"),
      session_(*ZRPlatformInUse().clock, *ZRPlatformInUse().notificationCenter),
      wishBaseMap_(std::move(wishBaseMap)),
      map_(ui_.get<GtkDrawingArea>(GTK_TYPE_DRAWING_AREA, "map"),
           [this](const trip::MapTransform& view) {
             const auto& snapped = session_.clients().latest(TripClients::snapped);
             return MapContent{session_.route(), session_.track(), places_,
                               snapped ? std::optional(snapped->coordinate()) : std::nullopt,
                               baseMap_ ? baseMap_->show(view) : std::vector<MapTile>()};
           }),
      position_(ui_.get<GtkRange>(GTK_TYPE_RANGE, "position")),
      sources_(ui_.get<AdwComboRow>(ADW_TYPE_COMBO_ROW, "sources")) {
  makeClientRows();
  listenToSources();
  listenToPlayback();
  listenToSpace();
  listenToSwitches();
  listenToBaseMap();
  nameScrolledParts(widget(), "Details");
  nameChoices(GTK_WIDGET(sources_), "Source");
  setName(gtk_widget_get_ancestor(GTK_WIDGET(sources_), GTK_TYPE_LIST_BOX), "Positions");
  nameChoices(ui_.widget("rate"), "Speed of the playback");
  showSource();
}

void TripPage::makeClientRows() {
  auto* const group = ui_.get<AdwPreferencesGroup>(ADW_TYPE_PREFERENCES_GROUP, "clients");
  for (std::size_t i = 0; i < TripClients::kCount; ++i) {
    GtkWidget* const row = adw_action_row_new();
    adw_preferences_row_set_title(ADW_PREFERENCES_ROW(row), kClientTexts[i].name);
    adw_action_row_set_subtitle(ADW_ACTION_ROW(row), kClientTexts[i].explanation);
    clientRows_[i] = {GTK_LABEL(gtk_label_new("0")), GTK_SWITCH(gtk_switch_new())};
    const auto [count, listens] = clientRows_[i];
    gtk_widget_add_css_class(GTK_WIDGET(count), "numeric");
    gtk_widget_set_valign(GTK_WIDGET(listens), GTK_ALIGN_CENTER);
    adw_action_row_add_suffix(ADW_ACTION_ROW(row), GTK_WIDGET(count));
    adw_action_row_add_suffix(ADW_ACTION_ROW(row), GTK_WIDGET(listens));
    adw_action_row_set_activatable_widget(ADW_ACTION_ROW(row), GTK_WIDGET(listens));
    connectNotify(listens, "active", [this, i, listens = listens] {
      session_.clients().setListening(static_cast<TripClients::Which>(i), gtk_switch_get_active(listens));
      showService();
    });
    adw_preferences_group_add(group, row);
  }
}

void TripPage::listenToSources() {
  auto* const names = ui_.get<GtkStringList>(GTK_TYPE_STRING_LIST, "source_names");
  gtk_string_list_append(names, "Recording");
  for (const ReceiverChoice& receiver : kReceivers) gtk_string_list_append(names, receiver.name);
  connectNotify(sources_, "selected", [this] { useSource(adw_combo_row_get_selected(sources_)); });
}

/// @param index  0: the recording that was opened last; the others: the receivers
void TripPage::useSource(std::size_t index) {
  if (index > kReceivers.size() || (index == 0 && !session_.isLive())) return;
  if (index == 0) {
    session_.useLastRecording();
  } else {
    session_.useReceiver(makeReceiver(kReceivers[index - 1]), kReceivers[index - 1].name);
  }
  beginTrip();
}

void TripPage::beginTrip() {
  places_.clear();
  gtk_range_set_range(position_, 0.0, std::max(session_.playback().durationSeconds(), 1.0));
  map_.fit(session_.isLive() ? trip::Envelope() : session_.recording().envelope);
  showSource();
  step();
}

void TripPage::listenToPlayback() {
  auto* const rates = ui_.get<GtkStringList>(GTK_TYPE_STRING_LIST, "rates");
  for (const double rate : kRates) {
    gtk_string_list_append(rates, (std::to_string(static_cast<int>(rate)) + "×").c_str());
  }
  auto* const rate = ui_.get<GtkDropDown>(GTK_TYPE_DROP_DOWN, "rate");
  const auto takeRate = [this, rate] {
    session_.setRate(kRates[std::min<std::size_t>(gtk_drop_down_get_selected(rate), kRates.size() - 1)]);
  };
  gtk_drop_down_set_selected(rate, kRateAtStart);
  takeRate();
  connectNotify(rate, "selected", takeRate);
  connect<gboolean(GtkRange*, GtkScrollType, double)>(position_, "change-value",
                                                      [this](GtkRange*, GtkScrollType, double seconds) -> gboolean {
                                                        seek(seconds);
                                                        return FALSE;
                                                      });
}

/// Whatever has the focus has the key first: a button presses itself with it.
void TripPage::listenToSpace() {
  GtkEventController* const keys = gtk_event_controller_key_new();
  connect<gboolean(GtkEventControllerKey*, guint, guint, GdkModifierType)>(
      keys, "key-pressed", [this](GtkEventControllerKey*, guint key, guint, GdkModifierType held) -> gboolean {
        const bool isSpace = key == GDK_KEY_space || key == GDK_KEY_KP_Space;
        const auto modifiers = held & (GDK_CONTROL_MASK | GDK_ALT_MASK | GDK_SHIFT_MASK | GDK_SUPER_MASK);
        if (!isSpace || modifiers != 0) return GDK_EVENT_PROPAGATE;
        return gtk_widget_activate_action(widget(), "win.play", nullptr);
      });
  gtk_widget_add_controller(widget(), keys);
}

void TripPage::listenToSwitches() {
  GtkSwitch* const background = ui_.toggle("background");
  connectNotify(background, "active", [this, background] {
    session_.setInBackground(gtk_switch_get_active(background));
    showService();
  });
  GtkSwitch* const goesOn = ui_.toggle("background_updates");
  connectNotify(goesOn, "active", [this, goesOn] {
    CLLocationManager_ZR::setShouldUpdateInBackground(gtk_switch_get_active(goesOn));
    showService();
  });
  GtkSwitch* const measured = ui_.toggle("measured");
  gtk_switch_set_active(measured, session_.filtersMeasuredValues());
  connectNotify(measured, "active",
                [this, measured] { session_.setFiltersMeasuredValues(gtk_switch_get_active(measured)); });
}

void TripPage::listenToBaseMap() {
  for (const char* const id : {"tiles", "tiles_attribution"}) {
    connect<void(AdwEntryRow*)>(ui_.widget(id), "apply", [this](AdwEntryRow*) {
      const auto text = [this](const char* row) { return gtk_editable_get_text(GTK_EDITABLE(ui_.widget(row))); };
      wishBaseMap_({text("tiles"), text("tiles_attribution")});
    });
  }
}

bool TripPage::useBaseMap(const TileWish& wish) {
  wishFault_.clear();
  try {
    baseMap_ = openBaseMap(wish, [this] { map_.redraw(); });
  } catch (const TileSourceError& error) {
    wishFault_ = std::string("No map tiles: ") + error.what();
  }
  showBaseMap();
  if (!wishFault_.empty()) return false;
  const auto fill = [this](const char* row, const std::string& text) {
    auto* const entry = GTK_EDITABLE(ui_.widget(row));
    if (text != gtk_editable_get_text(entry)) gtk_editable_set_text(entry, text.c_str());
  };
  fill("tiles", wish.tiles);
  fill("tiles_attribution", wish.attribution);
  map_.redraw();
  return true;
}

std::string TripPage::open(const std::string& path) {
  try {
    session_.useRecording(loadRecording(path));
  } catch (const trip::RecordingError& error) {
    return error.what();
  }
  adw_combo_row_set_selected(sources_, 0);
  beginTrip();
  return {};
}

void TripPage::playOrPause() {
  if (session_.playback().isPlaying()) {
    session_.pause();
  } else {
    session_.play();
  }
  step();
}

void TripPage::seek(double seconds) {
  session_.seek(seconds);
  step();
}

void TripPage::playToEnd() { seek(session_.playback().durationSeconds()); }

void TripPage::show(const trip::PlaceMark& place) {
  places_ = {place};
  map_.change([&](MapView& view) { view.show(ZRMapPointForCoordinate(place.coordinate)); });
}

void TripPage::zoom(double factor) {
  map_.change([&](MapView& view) { view.zoomAtCenter(factor); });
}

void TripPage::zoomToFit() {
  trip::Envelope around = session_.isLive() ? trip::Envelope() : session_.recording().envelope;
  for (const TrackPoint& point : session_.track().raw()) around.add(point.at);
  map_.fit(around);
}

void TripPage::showDetails() {
  auto* const flap = ui_.get<AdwFlap>(ADW_TYPE_FLAP, "page");
  adw_flap_set_reveal_flap(flap, !adw_flap_get_reveal_flap(flap));
}

void TripPage::step() {
  const bool hasNews = session_.step();
  if (baseMap_) baseMap_->step();
  showBaseMap();
  showPlayback();
  if (!hasNews) return;
  const auto& raw = session_.track().raw();
  if (raw.empty()) {
    map_.redraw();
  } else if (session_.isLive() && !map_.isFitted()) {
    map_.fit(surroundingsOf(raw.back().at));
  } else {
    map_.follow(raw.back().at);
  }
  showService();
}

void TripPage::showSource() {
  const LoadedRecording& recording = session_.recording();
  const bool hasRecording = !session_.isLive() && !recording.fixes.empty();
  setText(ui_.label("source"), session_.sourceName().empty() ? "No trip" : session_.sourceName());
  setText(ui_.label("source_details"), hasRecording        ? recording.summary()
                                       : session_.isLive() ? "What it reports, as it comes"
                                                           : "Open a recording to play it");
  for (const char* const id : {"play", "position", "rate"}) gtk_widget_set_sensitive(ui_.widget(id), hasRecording);
  showPlayback();
  showService();
}

void TripPage::showPlayback() {
  const Playback& playback = session_.playback();
  if (gtk_range_get_value(position_) != playback.positionSeconds()) {
    gtk_range_set_value(position_, playback.positionSeconds());
  }
  setText(ui_.label("passed"), trip::clockText(playback.positionSeconds()));
  setText(ui_.label("duration"), trip::clockText(playback.durationSeconds()));
  auto* const play = ui_.get<GtkButton>(GTK_TYPE_BUTTON, "play");
  const char* const icon = playback.isPlaying() ? "media-playback-pause-symbolic" : "media-playback-start-symbolic";
  if (g_strcmp0(gtk_button_get_icon_name(play), icon) == 0) return;
  gtk_button_set_icon_name(play, icon);
  gtk_widget_set_tooltip_text(GTK_WIDGET(play), playback.isPlaying() ? "Pause (Space)" : "Play (Space)");
  gtk_accessible_update_property(GTK_ACCESSIBLE(play), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                 playback.isPlaying() ? "Pause" : "Play", -1);
}

void TripPage::showService() {
  setText(ui_.label("now"), session_.failure().empty() ? rowText(session_.latest()) : session_.failure());
  setText(ui_.label("receiver_state"), session_.receiverRuns() ? "the receiver runs" : "the receiver is stopped");
  const TripClients& clients = session_.clients();
  for (std::size_t i = 0; i < TripClients::kCount; ++i) {
    const auto which = static_cast<TripClients::Which>(i);
    setText(clientRows_[i].count, std::to_string(clients.fixes(which)));
    gtk_switch_set_active(clientRows_[i].listens, clients.isListening(which));
  }
}

/// Whose tiles these are, and why parts of them are not there, once for all.
void TripPage::showBaseMap() {
  setText(ui_.label("attribution"), baseMap_ ? baseMap_->source().attribution : "");
  const std::string loadFault = baseMap_ ? baseMap_->fault() : "";
  setText(ui_.label("tiles_fault"), wishFault_.empty() ? loadFault : wishFault_);
  for (const char* const id : {"attribution", "tiles_fault"}) {
    gtk_widget_set_visible(ui_.widget(id), *gtk_label_get_text(ui_.label(id)) != '\0');
  }
}

std::string TripPage::state() const {
  const TripClients& clients = session_.clients();
  const TripTrack& track = session_.track();
  std::string text = "source=" + session_.sourceName();
  const auto add = [&text](const char* name, auto value) {
    text += ' ';
    text += name;
    text += '=' + std::to_string(value);
  };
  add("playing", static_cast<int>(session_.playback().isPlaying()));
  add("position", static_cast<long>(session_.playback().positionSeconds()));
  add("drawn", track.raw().size());
  add("significant", track.significant().size());
  add("jumps", track.jumps().size());
  add("plain", clients.fixes(TripClients::plain));
  add("snapped", clients.fixes(TripClients::snapped));
  add("halfway", clients.fixes(TripClients::halfWay));
  add("runs", static_cast<int>(session_.receiverRuns()));
  add("marked", places_.size());
  add("zoom", std::lround(100.0 * std::log2(map_.view().transform().pixelsPerMapPoint())));
  add("tiles", baseMap_ ? baseMap_->shownTiles() : 0);
  add("awaited", baseMap_ ? baseMap_->wantedTiles() : 0);
  return text + " tilefault=" + gtk_label_get_text(ui_.label("tiles_fault"));
}

}  // namespace demo
