// SPDX-License-Identifier: Apache-2.0
#include "settings/SettingsText.h"

#include <ZRCore/ZRPrintableText.h>
#include <glib.h>

#include <optional>

namespace {

constexpr const char* kDefaultsGroup = "Defaults";
constexpr const char* kEndGroup = "End";
/// A key file knows no empty keys. No other key is escaped so.
constexpr const char* kEmptyKey = "%";

std::string escaped(const std::string& bytes) {
  g_autofree char* text = g_uri_escape_bytes(reinterpret_cast<const guint8*>(bytes.data()), bytes.size(), nullptr);
  return text;
}

std::string escapedKey(const std::string& key) {
  if (key.empty()) return kEmptyKey;
  if (key == "Encoding") return "%45ncoding";  // what GLib takes for the file's own, in a first group
  return escaped(key);
}

std::optional<std::string> unescaped(const char* text) {
  g_autoptr(GBytes) bytes = g_uri_unescape_bytes(text, -1, nullptr, nullptr);
  if (!bytes) return std::nullopt;
  gsize length = 0;
  const auto* const data = static_cast<const char*>(g_bytes_get_data(bytes, &length));
  return std::string(data, length);
}

}  // namespace

std::string textFromSettings(const Settings& settings) {
  std::string text = "# Settings. Written by the application: edit while it does not run.\n[";
  text.append(kDefaultsGroup).append("]\n");
  for (const auto& [key, value] : settings) {
    text.append(escapedKey(key)).append("=");
    text.append(escaped(value)).append("\n");
  }
  return text.append("\n[").append(kEndGroup).append("]\n");
}

std::variant<Settings, SettingsDamage> settingsFromText(std::string_view text) {
  g_autoptr(GKeyFile) file = g_key_file_new();
  g_autoptr(GError) error = nullptr;
  if (text.find('\0') != text.npos) return SettingsDamage{"it has bytes of zero"};
  if (!g_key_file_load_from_data(file, text.data(), text.size(), G_KEY_FILE_NONE, &error)) {
    return SettingsDamage{ZRPrintableText(error->message, ZRLongestExcerpt)};
  }
  g_auto(GStrv) keys = g_key_file_get_keys(file, kDefaultsGroup, nullptr, &error);
  if (!keys) return SettingsDamage{ZRPrintableText(error->message, ZRLongestExcerpt)};
  if (!g_key_file_has_group(file, kEndGroup)) return SettingsDamage{"its end is missing"};
  Settings settings;
  for (char** key = keys; *key; ++key) {
    g_autofree char* value = g_key_file_get_value(file, kDefaultsGroup, *key, nullptr);
    const auto plainKey = *key == std::string_view(kEmptyKey) ? std::string() : unescaped(*key);
    const auto plainValue = value ? unescaped(value) : std::nullopt;
    if (!plainKey || !plainValue) {
      return SettingsDamage{std::string(*key) + " or its value is not percent-escaped rightly"};
    }
    settings.insert_or_assign(*plainKey, *plainValue);
  }
  return settings;
}
