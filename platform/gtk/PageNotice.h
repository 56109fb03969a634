// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_GTK_PAGENOTICE_H
#define ZRCORE_PLATFORM_GTK_PAGENOTICE_H

#include <gtk/gtk.h>
#include <owners/GLib.h>

#include <functional>
#include <string>

/// What a page view says where a page should be. It lies in front of the page; one that came in part stays in view, and
/// the notice is a bar above it.
class PageNotice {
 public:
  /// In the user's language.
  struct Words {
    std::string title, address, sentence;
    std::string retry, leave;  ///< the buttons; an empty one is not there
  };

  /// What the buttons do.
  struct Actions {
    std::function<void()> retry, leave;
  };

  explicit PageNotice(Actions actions);
  PageNotice(const PageNotice&) = delete;
  PageNotice& operator=(const PageNotice&) = delete;
  ~PageNotice();

  /// To be laid over the page.
  GtkWidget* widget() const { return widget_.get(); }

  void show(const Words& words);
  /// The title and the button alone; the sentence is the title's tooltip.
  void showAbovePage(const Words& words);
  void hide();

 private:
  void fill(GtkWidget* content, GtkAlign vertically);

  const Actions actions_;
  owners::Ref<GtkWidget> widget_;
};

/// Why a page has not come, in a sentence for people.
std::string loadFailureSentence(const GError& error);

#endif
