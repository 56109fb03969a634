// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_WINDOW_SPEAKPAGE_H
#define ZRCORE_HOSTS_DEMO_WINDOW_SPEAKPAGE_H

#include <demo/SpeechDesk.h>

#include "Gtk.h"

namespace demo {

/// A prompt to speak, how, and what becomes of the music meanwhile.
class SpeakPage {
 public:
  /// @param lastFault  why speech was not heard, as far as anybody knows
  explicit SpeakPage(std::function<std::string()> lastFault);
  SpeakPage(const SpeakPage&) = delete;
  SpeakPage& operator=(const SpeakPage&) = delete;

  GtkWidget* widget() const { return ui_.widget("page"); }
  void focusText() { gtk_widget_grab_focus(ui_.widget("text")); }
  bool canSpeak() const { return desk_.canSpeak(); }

  /// Tells what is heard now: a few times a second.
  void step();

  /// What the page shows, for observers outside: "speaking=1 music=2 unheard=…".
  std::string state() const;

 private:
  void speak();

  Ui ui_;
  SpeechDesk desk_;
};

}  // namespace demo

#endif
