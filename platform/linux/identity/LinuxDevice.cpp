// SPDX-License-Identifier: Apache-2.0
#include "identity/LinuxDevice.h"

#include <glib.h>
#include <sys/utsname.h>
#include <text/ASCII.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string_view>

namespace {

std::optional<std::string> contentOf(const std::string& file) {
  g_autofree char* content = nullptr;
  gsize length = 0;
  if (!g_file_get_contents(file.c_str(), &content, &length, nullptr)) return std::nullopt;
  return std::string(content, length);
}

/// The value of a line `name=value` in the first of the files that exists, quoted as for a shell; absent when it is
/// empty.
std::optional<std::string> assignmentIn(std::initializer_list<std::string> files, std::string_view name) {
  for (const std::string& file : files) {
    const auto content = contentOf(file);
    if (!content) continue;
    g_auto(GStrv) lines = g_strsplit(content->c_str(), "\n", -1);
    for (char** line = lines; *line; ++line) {
      std::string_view text = *line;
      if (!text.starts_with(name) || text.substr(name.size(), 1) != "=") continue;
      g_autofree char* value = g_shell_unquote(*line + name.size() + 1, nullptr);
      if (value && *value) return value;
    }
    return std::nullopt;
  }
  return std::nullopt;
}

/// The 16 bytes that 32 hexadecimal digits stand for; absent for any other text, and for zeros.
std::optional<std::array<guint8, 16>> machineKey(const std::optional<std::string>& content) {
  const std::string_view digits = content ? std::string_view(*content).substr(0, content->find('\n')) : "";
  std::array<guint8, 16> key{};
  if (digits.size() != 2 * key.size() || !std::ranges::all_of(digits, text::isHexDigit)) return {};
  for (std::size_t i = 0; i < key.size(); ++i) {
    key[i] = static_cast<guint8>(g_ascii_xdigit_value(digits[2 * i]) * 16 + g_ascii_xdigit_value(digits[2 * i + 1]));
  }
  const bool isNull = std::all_of(key.begin(), key.end(), [](guint8 byte) { return byte == 0; });
  return isNull ? std::nullopt : std::optional(key);
}

std::optional<std::string> vendorIdentifier(const std::optional<std::string>& machineId,
                                            const std::optional<std::string>& application) {
  const auto key = machineKey(machineId);
  if (!key || !application) return std::nullopt;
  g_autofree char* hash =
      g_compute_hmac_for_data(G_CHECKSUM_SHA256, key->data(), key->size(),
                              reinterpret_cast<const guchar*>(application->data()), application->size());
  std::string uuid(hash, 32);
  uuid[12] = '4';                                         // the version
  uuid[16] = "89ab"[g_ascii_xdigit_value(uuid[16]) % 4];  // the variant, in the two highest bits
  for (const std::size_t hyphen : {20U, 16U, 12U, 8U}) uuid.insert(hyphen, 1, '-');
  return text::upperCase(std::move(uuid));
}

/// "de" of "de_DE.UTF-8"; absent for "C" and "POSIX", which are not languages.
std::optional<std::string> languageOf(const std::optional<std::string>& locale) {
  if (!locale) return std::nullopt;
  const std::string code = locale->substr(0, locale->find_first_of("_.@"));
  const bool isCode =
      (code.size() == 2 || code.size() == 3) && code.find_first_not_of("abcdefghijklmnopqrstuvwxyz") == code.npos;
  return isCode ? std::optional(code) : std::nullopt;
}

std::optional<std::string> machine() {
  utsname names{};
  if (uname(&names) != 0 || names.machine[0] == '\0') return std::nullopt;
  return names.machine;
}

}  // namespace

LinuxDevice::LinuxDevice(const std::string& rootFolder, const std::optional<std::string>& application)
    : vendor_(vendorIdentifier(contentOf(rootFolder + "/etc/machine-id"), application)),
      version_(assignmentIn({rootFolder + "/etc/os-release", rootFolder + "/usr/lib/os-release"}, "VERSION_ID")),
      machine_(machine()),
      language_(
          languageOf(assignmentIn({rootFolder + "/etc/locale.conf", rootFolder + "/etc/default/locale"}, "LANG"))) {}
