// SPDX-License-Identifier: Apache-2.0
/// @file
/// A screen on GTK 4, with the clipboard, mail and other programs beside it: link ZRCore::Gtk.
///
///     ZRPlatform platform = makeLinuxPlatform();
///     if (!ZRFillGtkPlatform(platform)) …           // no display
///     if (!ZRPlatformInstall(platform)) …           // too late: a platform is in use
///     ZRGtkOpenWindow(ZRWebViewController::initWithUrl(address));
///
/// All of it on the thread that runs GTK's main loop, GLib's default main context.
#ifndef ZRCORE_ZRGTKPLATFORM_H
#define ZRCORE_ZRGTKPLATFORM_H

#include <ZRCore/UIViewController.h>
#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRPlatform.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

extern "C" {
struct _GtkWidget;
struct _GtkWindow;
}

/// What a host may say about its screen. Members left alone have the values given here.
struct ZRGtkOptions {
  /// The size of the structure that the host was built with. A library that knows more options takes the others from
  /// its own defaults. Not to be changed.
  std::uint32_t size = sizeof(ZRGtkOptions);

  /// The schemes, in lower case, of the addresses that web views show themselves. What else a user follows, each new
  /// window and each download is handed to the system's own program for it, as `outsideSchemes` says.
  std::vector<std::string> webSchemes = {"http", "https", "about"};
  /// A folder in which web views keep cookies, storage and cache. Empty: each view has its own, in memory, and they end
  /// with it.
  std::string websiteDataFolder;
  /// The schemes, in lower case, of the addresses that the system's programs get without a question. For others the
  /// user is asked, by the program's name: any program may have registered itself for any scheme, and whoever writes a
  /// page chooses what it is given. Addresses that lead into this computer ("file" and its like) never go outside.
  std::vector<std::string> outsideSchemes = {"http", "https", "mailto", "tel", "sms", "geo"};
};

/// Starts GTK and fills `screen`, `pasteboard`, `mail` and `application`, as far as the platform's `size` reaches.
/// @return false, and nothing is filled, when there is no display.
[[nodiscard]] ZR_EXPORT bool ZRFillGtkPlatform(ZRPlatform& platform, const ZRGtkOptions& options = {});

/// A stack of controllers as a widget: a header bar with title, way back and right item, and below it the last
/// controller's view. Dialogues of the controllers lie over it. In it, Alt+Left, Alt+Right, F5 or Ctrl+R and Escape go
/// back and forward in, reload and stop a ZRWebViewController; Escape closes a dialogue first.
class ZR_EXPORT ZRGtkNavigationController : public UINavigationController {
 public:
  static std::shared_ptr<ZRGtkNavigationController> init();
  ~ZRGtkNavigationController() override;

  /// The widget (a `GtkWidget*`), for a window or a page of the host's; it belongs to this object.
  struct _GtkWidget* widget() const;
  void pushViewController(const std::shared_ptr<UIViewController>& controller, bool animated);
  const std::vector<std::shared_ptr<UIViewController>>& viewControllers() const;
  /// Called when the last controller has been popped. With it there is a way back on the first page too.
  void setEmptiedHandler(std::function<void()> handler);
  /// Called with the title of the last controller, as it is shown, whenever it may have changed: for a window's title.
  void setTitleHandler(std::function<void(const std::string& title)> handler);

  UINavigationBar navigationBar() const override;
  void popViewControllerAnimated(bool animated) override;

 private:
  class Impl;
  ZRGtkNavigationController();
  std::unique_ptr<Impl> impl_;
};

/// Tells whether any window of this program is active or visible: at once, and at each change. Main thread, GTK
/// started.
/// @param seen  for instance ZRLifeFollowing::setWindowSeen
/// @return keep it: with its release the following ends.
[[nodiscard]] ZR_EXPORT std::shared_ptr<void> ZRGtkFollowWindows(std::function<void(bool isSeen)> seen);

/// A window's size in logical pixels.
struct ZRGtkWindowSize {
  int width = 420;
  int height = 760;
};

/// Shows `controller` in a window of its own, which has the controller's title, keeps it alive and lets it go when it
/// is closed or the controller is popped.
/// @param parent  a `GtkWindow*` in front of which the window opens; may be null.
/// @return the window (a `GtkWindow*`), which belongs to GTK; null when the platform in use has no GTK screen.
ZR_EXPORT struct _GtkWindow* ZRGtkOpenWindow(const std::shared_ptr<UIViewController>& controller,
                                             struct _GtkWindow* parent = nullptr, ZRGtkWindowSize size = {});

#endif
