// SPDX-License-Identifier: Apache-2.0
#include "OutsidePrograms.h"

#include <gio/gio.h>
#include <owners/GLib.h>

#include <memory>

#include "GtkServices.h"
#include "GtkText.h"

namespace {

constexpr std::size_t kLongestAskedAddress = 200;  // bytes

using Program = std::shared_ptr<GAppInfo>;

/// Null when none has registered itself.
Program programFor(const std::string& address) {
  return owners::Ref<GAppInfo>(g_app_info_get_default_for_uri_scheme(address.substr(0, address.find(':')).c_str()));
}

std::shared_ptr<UIAlertController> makeAlert(const std::string& title, const std::string& address) {
  return UIAlertController::alertControllerWithTitleMessagePreferredStyle(
      title, shownText(address, kLongestAskedAddress), UIAlertControllerStyle::alert);
}

void say(DialogLayer& layer, const void* presenter, const char* sentence, const std::string& address) {
  const auto alert = makeAlert(hostText(sentence), address);
  alert->addAction(UIAlertAction::actionWithTitleStyleHandler(hostText("OK"), UIAlertActionStyle::cancel, nullptr));
  layer.present(presenter, alert);
}

}  // namespace

void sayThatNoProgramOpens(DialogLayer& layer, const void* presenter, const std::string& address) {
  say(layer, presenter, "No program opens this address", address);
}

void sayThatNothingOpens(DialogLayer& layer, const void* presenter, const std::string& address) {
  say(layer, presenter, "This address is not opened", address);
}

void askToOpenOutside(DialogLayer& layer, const void* presenter, const std::string& address) {
  const Program program = programFor(address);
  if (!program) return sayThatNoProgramOpens(layer, presenter, address);
  std::string title = hostText("Open with %@?");
  const std::string name = shownText(utf8Text(g_app_info_get_display_name(program.get())), kLongestAskedAddress);
  if (const auto at = title.find("%@"); at != std::string::npos) title.replace(at, 2, name);
  const auto alert = makeAlert(title, address);
  const auto open = [&layer, presenter, program, address] {
    if (!launch(*program, address)) sayThatNoProgramOpens(layer, presenter, address);
  };
  alert->addAction(UIAlertAction::actionWithTitleStyleHandler(hostText("Open"), UIAlertActionStyle::standard, open));
  alert->addAction(UIAlertAction::actionWithTitleStyleHandler(hostText("Cancel"), UIAlertActionStyle::cancel, nullptr));
  layer.present(presenter, alert, DialogLayer::Wish::ofPage);
}
