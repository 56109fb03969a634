// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGtkPlatform.h>
#include <ZRCore/ZRPlatformFill.h>
#include <adwaita.h>

#include "GtkScreen.h"
#include "GtkServices.h"

namespace {

constexpr const char* kStyle = R"(
.zr-white { background-color: white; }
.zr-toolbar { padding: 0 6px; min-height: 46px; border-top: 1px solid alpha(@borders, 0.6);
              background-color: @headerbar_bg_color; color: @headerbar_fg_color; }
.zr-item { margin: 6px 0; min-height: 34px; font-size: 120%; }
.zr-shade { background-color: rgba(0, 0, 0, 0.35); }
.zr-card { margin: 12px; padding: 6px; border-radius: 12px; background-color: @popover_bg_color;
           color: @popover_fg_color; box-shadow: 0 2px 12px rgba(0, 0, 0, 0.3); }
.zr-card > .title-4 { margin: 18px 18px 0 18px; }
.zr-message { margin: 18px; }
.zr-action { min-height: 44px; font-weight: normal; }
.zr-cancel { font-weight: bold; }
.zr-notice { background-color: @window_bg_color; color: @window_fg_color; }
.zr-bar { padding: 6px 6px 6px 12px; border-bottom: 1px solid alpha(@borders, 0.6); }
)";

void addStyle() {
  g_autoptr(GtkCssProvider) provider = gtk_css_provider_new();
  gtk_css_provider_load_from_data(provider, kStyle, -1);
  gtk_style_context_add_provider_for_display(gdk_display_get_default(), GTK_STYLE_PROVIDER(provider),
                                             GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

}  // namespace

bool ZRFillGtkPlatform(ZRPlatform& platform, const ZRGtkOptions& options) {
  if (!gtk_init_check()) return false;
  adw_init();
  addStyle();
  ZRPlatformFill(platform, &ZRPlatform::application, std::make_shared<GioApplication>());
  ZRPlatformFill(
      platform, &ZRPlatform::screen,
      std::make_shared<GtkScreen>(ZRReadOptions(options, &ZRGtkOptions::webSchemes, &ZRGtkOptions::websiteDataFolder,
                                                &ZRGtkOptions::outsideSchemes)));
  ZRPlatformFill(platform, &ZRPlatform::pasteboard, std::make_shared<DisplayPasteboard>());
  ZRPlatformFill(platform, &ZRPlatform::mail, std::make_shared<GioMail>());
  return true;
}
