// SPDX-License-Identifier: Apache-2.0
#include "settings/KeyFileBundle.h"

#include <ZRCore/ZRPrintableText.h>
#include <dlfcn.h>
#include <glib.h>
#include <libintl.h>

#include <filesystem>
#include <utility>

namespace {

constexpr const char* kInformationGroup = "Information";

bool isPlainFileName(std::string_view name) {
  return !name.empty() && name.front() != '.' && name.find_first_of(std::string_view("/\0", 2)) == name.npos;
}

}  // namespace

KeyFileBundle::KeyFileBundle(Places places, ZRLog& log) : places_(std::move(places)) {
  readInformation(log);
  if (places_.textDomain.empty()) return;
  if (!places_.textFolder.empty()) bindtextdomain(places_.textDomain.c_str(), places_.textFolder.c_str());
  bind_textdomain_codeset(places_.textDomain.c_str(), "UTF-8");
}

void KeyFileBundle::readInformation(ZRLog& log) {
  if (places_.informationFile.empty()) return;
  g_autoptr(GKeyFile) file = g_key_file_new();
  g_autoptr(GError) error = nullptr;
  g_auto(GStrv) keys = nullptr;
  if (g_key_file_load_from_file(file, places_.informationFile.c_str(), G_KEY_FILE_NONE, &error)) {
    keys = g_key_file_get_keys(file, kInformationGroup, nullptr, &error);
  }
  if (error) {
    log.writeLine(
        "ZRCore: what the application says about itself cannot be read, so that it goes without identifier, "
        "version and key: \"" +
        places_.informationFile + "\": " + ZRPrintableText(error->message, ZRLongestExcerpt));
    return;
  }
  for (char** key = keys; *key; ++key) {
    g_autofree char* text = g_key_file_get_string(file, kInformationGroup, *key, nullptr);
    information_[*key] = text ? std::optional<std::string>(text) : std::nullopt;
  }
}

bool KeyFileBundle::hasInfoValueForKey(std::string_view key) const { return information_.contains(key); }

std::optional<std::string> KeyFileBundle::infoStringForKey(std::string_view key) const {
  const auto found = information_.find(key);
  return found != information_.end() ? found->second : std::nullopt;
}

std::optional<std::string> KeyFileBundle::bundleIdentifier() const { return infoStringForKey("CFBundleIdentifier"); }

std::optional<std::string> KeyFileBundle::localizedStringForKey(std::string_view key) const {
  // Nothing stands for the catalogue's own header.
  if (places_.textDomain.empty() || key.empty() || key.find('\0') != key.npos) return std::nullopt;
  const std::string untranslated(key);
  const char* const text = dgettext(places_.textDomain.c_str(), untranslated.c_str());
  return text != untranslated.c_str() ? std::optional<std::string>(text) : std::nullopt;
}

std::optional<std::string> KeyFileBundle::frameworkResource(std::string_view name, std::string_view type) const {
  if (places_.resourcesFolder.empty() || !isPlainFileName(name) || !isPlainFileName(type)) return std::nullopt;
  const std::string file = places_.resourcesFolder + '/' + std::string(name) + '.' + std::string(type);
  g_autofree char* content = nullptr;
  gsize length = 0;
  g_autoptr(GError) error = nullptr;
  if (g_file_get_contents(file.c_str(), &content, &length, &error)) return std::string(content, length);
  if (g_error_matches(error, G_FILE_ERROR, G_FILE_ERROR_NOENT)) return std::nullopt;
  return "";
}

std::string installedResourcesFolder() {
  Dl_info library{};
  std::error_code error;
  if (!dladdr(reinterpret_cast<const void*>(&installedResourcesFolder), &library)) return "";
  const std::filesystem::path file = std::filesystem::canonical(library.dli_fname, error);
  if (error) return "";
  return (file.parent_path() / ZRCORE_LIBRARY_TO_RESOURCES).lexically_normal();
}
