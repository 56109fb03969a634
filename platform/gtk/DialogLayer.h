// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_GTK_DIALOGLAYER_H
#define ZRCORE_PLATFORM_GTK_DIALOGLAYER_H

#include <ZRCore/UIAlertController.h>
#include <gtk/gtk.h>

#include <memory>
#include <vector>

/// Shows dialogues over a widget, one on top of the other, with everything below dimmed and out of reach. They lie
/// within the window, so that they fit a telephone, and the host's window whatever it is.
class DialogLayer {
 public:
  explicit DialogLayer(GtkWidget* content);
  ~DialogLayer();
  DialogLayer(const DialogLayer&) = delete;
  DialogLayer& operator=(const DialogLayer&) = delete;

  GtkWidget* widget() const { return overlay_; }
  /// The layer that `widget` lies in; null when it lies in none.
  static DialogLayer* around(GtkWidget* widget);

  void present(const UIViewController& presenting, const std::shared_ptr<UIAlertController>& alert);
  /// Closes, without a choice, what `presenting` has presented.
  void dismiss(const UIViewController& presenting);
  bool hasDialog() const { return !dialogs_.empty(); }
  /// Makes the top dialogue's cancel choice, if there is a dialogue and it has one. @return whether there is a dialogue.
  bool cancelTop();

 private:
  struct Dialog {
    const UIViewController* presenting;
    std::shared_ptr<UIAlertController> alert;
    GtkWidget* scrim;
  };

  void choose(const UIAlertController* alert, std::size_t index);
  void close(const UIAlertController* alert);

  GtkWidget* overlay_;
  GtkWidget* content_;
  GtkWidget* focusBefore_ = nullptr;
  std::vector<Dialog> dialogs_;
};

#endif
