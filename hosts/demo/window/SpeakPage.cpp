// SPDX-License-Identifier: Apache-2.0
#include "SpeakPage.h"

#include <ZRCore/ZRPlatform.h>
#include <trip/OutputText.h>

#include <utility>

#include "Names.h"

namespace demo {

SpeakPage::SpeakPage(std::function<std::string()> lastFault)
    : ui_("speak"),
      desk_({*ZRAudio::sharedInstance(), *ZRPlatformInUse().speech, *ZRPlatformInUse().audioSession,
             *ZRPlatformInUse().mainQueue, std::move(lastFault)}) {
  const Ref<GtkStringList> names(gtk_string_list_new(nullptr));
  for (const SpeechDesk::Voice& voice : desk_.voices()) gtk_string_list_append(names.get(), voice.name.c_str());
  adw_combo_row_set_model(ui_.get<AdwComboRow>(ADW_TYPE_COMBO_ROW, "voice"), G_LIST_MODEL(names.get()));
  gtk_widget_set_visible(ui_.widget("voice"), desk_.canSpeak());
  for (const char* const id : {"speak", "stop"}) gtk_widget_set_sensitive(ui_.widget(id), desk_.canSpeak());

  connect<void(GtkButton*)>(ui_.widget("speak"), "clicked", [this](GtkButton*) { speak(); });
  connect<void(AdwEntryRow*)>(ui_.widget("text"), "entry-activated", [this](AdwEntryRow*) { speak(); });
  connect<void(GtkButton*)>(ui_.widget("stop"), "clicked", [this](GtkButton*) {
    desk_.stop();
    step();
  });
  auto* const volume = ui_.get<GtkAdjustment>(GTK_TYPE_ADJUSTMENT, "volume");
  connect<void(GtkAdjustment*)>(volume, "value-changed", [this](GtkAdjustment* changed) {
    desk_.setVolume(static_cast<float>(gtk_adjustment_get_value(changed)));
  });
  nameScrolledParts(widget(), "Prompt");
  nameChoices(ui_.widget("voice"), "Voice");
  step();
}

void SpeakPage::speak() {
  const auto valueOf = [this](const char* id) {
    return static_cast<float>(gtk_adjustment_get_value(ui_.get<GtkAdjustment>(GTK_TYPE_ADJUSTMENT, id)));
  };
  desk_.speak({.text = gtk_editable_get_text(GTK_EDITABLE(ui_.widget("text"))),
               .voice = adw_combo_row_get_selected(ui_.get<AdwComboRow>(ADW_TYPE_COMBO_ROW, "voice")),
               .rate = valueOf("rate"),
               .volume = valueOf("volume"),
               .interrupts = gtk_switch_get_active(ui_.toggle("interrupts")) == TRUE});
  step();
}

void SpeakPage::step() {
  desk_.step();
  gtk_label_set_text(ui_.label("status"), desk_.statusText().c_str());
  const std::string fault = desk_.faultText();
  gtk_label_set_text(ui_.label("fault"), trip::asUtf8(fault).c_str());
  gtk_widget_set_visible(ui_.widget("fault"), !fault.empty());
  const char* const icons[] = {"audio-volume-muted-symbolic", "audio-volume-high-symbolic",
                               "audio-volume-low-symbolic"};
  gtk_image_set_from_icon_name(ui_.get<GtkImage>(GTK_TYPE_IMAGE, "music"),
                               icons[static_cast<std::size_t>(desk_.otherAudio())]);
}

std::string SpeakPage::state() const {
  return "speaking=" + std::to_string(static_cast<int>(desk_.isSpeaking())) +
         " music=" + std::to_string(static_cast<int>(desk_.otherAudio())) + " unheard=" + desk_.faultText();
}

}  // namespace demo
