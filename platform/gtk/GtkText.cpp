// SPDX-License-Identifier: Apache-2.0
#include "GtkText.h"

#include <ZRCore/ZRPlatform.h>
#include <glib.h>

#include <utility>

#include <policy/web/WebText.h>

std::string hostText(std::string_view english) {
  return utf8Text(ZRPlatformInUse().bundle->localizedStringForKey(english).value_or(std::string(english)));
}

std::string utf8Text(std::string_view text) {
  const std::string_view untilNul = text.substr(0, text.find('\0'));
  g_autofree char* valid = g_utf8_make_valid(untilNul.data(), static_cast<gssize>(untilNul.size()));
  return valid;
}

std::string shownText(std::string_view text, std::size_t mostBytes) {
  constexpr std::size_t kLongestCharacter = 4;  // cutting within one leaves bytes that utf8Text replaces
  return policy::shownText(utf8Text(text.substr(0, mostBytes + kLongestCharacter)), mostBytes);
}

void runLater(std::function<void()> work) {
  if (!work) return;
  const auto run = [](gpointer closure) -> gboolean {
    (*static_cast<std::function<void()>*>(closure))();
    return G_SOURCE_REMOVE;
  };
  g_idle_add_full(G_PRIORITY_DEFAULT, run, new std::function<void()>(std::move(work)),
                  [](gpointer closure) { delete static_cast<std::function<void()>*>(closure); });
}
