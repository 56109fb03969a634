// SPDX-License-Identifier: Apache-2.0
#include "GtkServices.h"

#include <gtk/gtk.h>

#include <string>

#include <policy/web/MailtoAddress.h>
#include "GtkText.h"

namespace {

/// @return absent when a program was started.
std::optional<NSError> launch(const std::string& address) {
  g_autoptr(GdkAppLaunchContext) context = gdk_display_get_app_launch_context(gdk_display_get_default());
  g_autoptr(GError) error = nullptr;
  g_app_info_launch_default_for_uri(address.c_str(), G_APP_LAUNCH_CONTEXT(context), &error);
  if (!error) return std::nullopt;
  return NSError{g_quark_to_string(error->domain), error->code, {{NSLocalizedDescriptionKey, error->message}}};
}

}  // namespace

bool launch(GAppInfo& program, const std::string& address) {
  g_autoptr(GdkAppLaunchContext) context = gdk_display_get_app_launch_context(gdk_display_get_default());
  std::string text = address;
  GList addresses{text.data(), nullptr, nullptr};
  return g_app_info_launch_uris(&program, &addresses, G_APP_LAUNCH_CONTEXT(context), nullptr) != FALSE;
}

bool GioApplication::openURL(const NSURL& url) { return !launch(url.absoluteString()); }

void DisplayPasteboard::setString(std::string_view text) {
  gdk_clipboard_set_text(gdk_display_get_clipboard(gdk_display_get_default()), utf8Text(text).c_str());
}

bool GioMail::canSendMail() const {
  g_autoptr(GAppInfo) program = g_app_info_get_default_for_uri_scheme("mailto");
  return program != nullptr;
}

void GioMail::compose(const std::shared_ptr<MFMailComposeViewController>& composer) {
  const auto failure = launch(policy::mailtoAddress(composer->subject(), composer->messageBody()));
  runLater([composer, failure] {
    const auto result = failure ? MFMailComposeResult::failed : MFMailComposeResult::cancelled;
    if (const auto delegate = composer->mailComposeDelegate()) {
      delegate->mailComposeControllerDidFinishWithResultError(*composer, result, failure);
    }
  });
}
