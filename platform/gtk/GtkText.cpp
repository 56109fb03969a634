// SPDX-License-Identifier: Apache-2.0
#include "GtkText.h"

#include <ZRCore/ZRPlatform.h>
#include <glib.h>

#include <memory>
#include <utility>

std::string hostText(std::string_view english) {
  return utf8Text(ZRPlatformInUse().bundle->localizedStringForKey(english).value_or(std::string(english)));
}

std::string utf8Text(std::string_view text) {
  const std::string_view untilNul = text.substr(0, text.find('\0'));
  const std::unique_ptr<char, decltype(&g_free)> valid(
      g_utf8_make_valid(untilNul.data(), static_cast<gssize>(untilNul.size())), g_free);
  return valid.get();
}

std::string shownTitle(std::string_view title) {
  constexpr std::size_t kMostBytes = 1024;
  // Cutting within a character leaves bytes that utf8Text replaces.
  std::string shown = utf8Text(title.substr(0, kMostBytes));
  if (title.size() > kMostBytes) shown += "…";
  for (char& c : shown) {
    if (static_cast<unsigned char>(c) < 0x20) c = ' ';
  }
  return shown;
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
