// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_GTK_GTKSERVICES_H
#define ZRCORE_PLATFORM_GTK_GTKSERVICES_H

#include <ZRCore/MFMailComposeViewController.h>
#include <ZRCore/UIApplication.h>
#include <gio/gio.h>

#include <string>

/// Opens the address with that program. @return whether it was started.
bool launch(GAppInfo& program, const std::string& address);

/// Opens addresses with the user's programs.
class GioApplication final : public UIApplication {
 public:
  bool openURL(const NSURL& url) override;
};

/// The display's clipboard.
class DisplayPasteboard final : public UIPasteboard {
 public:
  void setString(std::string_view text) override;
};

/// The user's mail program, through an address with the scheme "mailto". What becomes of a mail there nobody tells, so
/// one that was handed over is reported as cancelled; one that could not be, as failed.
class GioMail final : public ZRMail {
 public:
  bool canSendMail() const override;
  void compose(const std::shared_ptr<MFMailComposeViewController>& composer) override;
};

#endif
