// SPDX-License-Identifier: Apache-2.0
/// @file
/// What an application asks of the system around it: to open an address, and to keep a text for pasting.
#ifndef ZRCORE_UIAPPLICATION_H
#define ZRCORE_UIAPPLICATION_H

#include <ZRCore/NSURL.h>
#include <ZRCore/ZRExport.h>

#include <memory>
#include <string_view>

/// The running application. Main thread.
class ZR_EXPORT UIApplication {
 public:
  /// That of the platform in use.
  static std::shared_ptr<UIApplication> sharedApplication();
  virtual ~UIApplication();
  /// Hands an address to the program that the user has chosen for its kind.
  /// @return false when there is none.
  virtual bool openURL(const NSURL& url) = 0;
};

/// The clipboard. Main thread.
class ZR_EXPORT UIPasteboard {
 public:
  /// That of the platform in use.
  static std::shared_ptr<UIPasteboard> generalPasteboard();
  virtual ~UIPasteboard();
  /// Replaces what is on the clipboard by a plain text.
  virtual void setString(std::string_view text) = 0;
};

#endif
