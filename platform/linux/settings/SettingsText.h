// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SETTINGSTEXT_H
#define ZRCORE_LINUX_SETTINGSTEXT_H

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <variant>

/// Values by key. Keys and values may hold any bytes.
using Settings = std::map<std::string, std::string, std::less<>>;

/// Why a text cannot be read as settings: the end of a sentence that begins with the file's name.
struct SettingsDamage {
  std::string reason;
};

/// The settings as a key file that a person can read and edit: group "Defaults", percent-escaped but for letters,
/// digits and "-._~". It ends with an empty group: a file without that group was cut short.
std::string textFromSettings(const Settings& settings);

/// The settings that `textFromSettings` wrote, or a person since.
std::variant<Settings, SettingsDamage> settingsFromText(std::string_view text);

#endif
