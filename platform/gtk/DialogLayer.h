// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_GTK_DIALOGLAYER_H
#define ZRCORE_PLATFORM_GTK_DIALOGLAYER_H

#include <ZRCore/UIAlertController.h>
#include <gtk/gtk.h>
#include <owners/GLib.h>

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

  GtkWidget* widget() const { return overlay_.get(); }
  /// The layer that `widget` lies in; null when it lies in none.
  static DialogLayer* around(GtkWidget* widget);

  /// Who wants a dialogue. A page may have placed its link so that the second click of a double one falls on a choice:
  /// but for "Cancel", the choices of its dialogues wait for half a second.
  enum class Wish { ofHost, ofPage };

  /// @param presenter  who may dismiss it; never followed
  void present(const void* presenter, const std::shared_ptr<UIAlertController>& alert, Wish wish = Wish::ofHost);
  /// Closes, without a choice, what `presenter` has presented.
  void dismiss(const void* presenter);
  bool hasDialog() const { return !dialogs_.empty(); }
  /// Makes the top dialogue's cancel choice, if there is a dialogue and it has one. @return whether there is a
  /// dialogue.
  bool cancelTop();

 private:
  struct Dialog {
    const void* presenter;
    std::shared_ptr<UIAlertController> alert;
    GtkWidget* scrim;
  };

  void choose(const UIAlertController* alert, std::size_t index);
  void close(const UIAlertController* alert);

  owners::Ref<GtkWidget> overlay_;
  GtkWidget* content_;
  GtkWidget* focusBefore_ = nullptr;
  std::vector<Dialog> dialogs_;
};

#endif
