// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRLinuxSound.h>
#include <ZRCore/ZRPlatformFill.h>
#include <gio/gio.h>
#include <gio/gunixsocketaddress.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <vector>

#include "Probes.h"
#include "Waiting.h"

namespace doctor {

namespace {

void appendTo(std::string& list, const char* name) {
  if (!list.empty()) list += ", ";
  list += name;
}

/// Those of the services that should read a document and do not. They stand on libraries that load parts of themselves.
std::string unableToRead(const ZRPlatform& platform) {
  constexpr std::string_view kPicture(
      "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\x08\0\0\0\0\x3a\x7e\x9b\x55"
      "\0\0\0\nIDAT\x78\x9c\x63\x60\0\0\0\2\0\1\x48\xaf\xa4\x71\0\0\0\0IEND\xae\x42\x60\x82",
      67);
  const auto json = platform.json->valueFromJSON("[1]", ZRJSONFragments::refused);
  const auto xml = platform.xml->parserWithData("<a/>");
  std::string failing;
  if (std::holds_alternative<NSError>(json)) appendTo(failing, "json");
  if (!xml || !xml->parse()) appendTo(failing, "xml");
  if (!platform.images->imageWithData(kPicture)) appendTo(failing, "images");
  return failing;
}

}  // namespace

Finding AdaptersProbe::look() {
  constexpr const char* kBuild = "scripts/setup && cmake --workflow --preset check";
  std::string present, absent;
  ZRForEachService([&](const auto& service) {
    if (service.origin == ZRServiceOrigin::system) appendTo(platform_.*service.member ? present : absent, service.name);
  });
  if (!absent.empty()) {
    return {"adapters", State::missing, "this build has none for: " + absent + " (it has: " + present + ")", kBuild};
  }
  const std::string failing = unableToRead(platform_);
  if (!failing.empty()) return {"adapters", State::broken, "they cannot read a small document: " + failing, kBuild};
  return {"adapters", State::usable, present, ""};
}

Finding ReceiversProbe::look() {
  constexpr std::array<std::string_view, 4> kBeginnings{"ttyUSB", "ttyACM", "gps", "ttyGPS"};
  std::vector<std::string> readable, refused;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder_, error)) {
    const std::string name = entry.path().filename().string();
    const bool fits =
        std::any_of(kBeginnings.begin(), kBeginnings.end(), [&](auto text) { return name.starts_with(text); });
    if (!fits) continue;
    const bool mayRead = ::access(entry.path().c_str(), R_OK) == 0;
    (mayRead ? readable : refused).push_back(entry.path().string());
  }
  const auto listed = [](std::vector<std::string> names) {
    std::sort(names.begin(), names.end());
    std::string text;
    for (const auto& name : names) (text += text.empty() ? "" : ", ") += name;
    return text;
  };
  if (!readable.empty()) return {"receivers", State::usable, listed(readable), ""};
  if (!refused.empty()) {
    return {"receivers", State::broken, listed(refused) + ": " + std::strerror(EACCES),
            "sudo usermod -aG dialout \"$USER\""};
  }
  return {"receivers", State::missing, "no serial device in " + folder_.string() + " looks like one",
          "dmesg | tail    # after plugging one in"};
}

Finding VoicesProbe::look() {
  constexpr const char* kInstall = "sudo apt-get install espeak-ng";
  constexpr const char* kReinstall = "sudo apt-get install --reinstall espeak-ng espeak-ng-data";
  const ProgramRun run = runProgram(program_, "--voices", answerSeconds_);
  if (!run.isFound) return {"voices", State::missing, program_ + " is not installed", kInstall};
  if (run.isLate) return {"voices", State::broken, program_ + " does not answer", kReinstall};
  // A heading, then a voice a line.
  const auto lines = std::count(run.output.begin(), run.output.end(), '\n');
  if (run.exitCode != 0 || lines < 2) return {"voices", State::broken, program_ + " has no voices", kReinstall};
  return {"voices", State::usable, program_ + ", " + std::to_string(lines - 1) + " voices", ""};
}

std::string soundServerOfThisUser() {
  const char* const named = std::getenv("PULSE_SERVER");
  if (named != nullptr && *named != '\0') return named;
  return std::string(g_get_user_runtime_dir()) + "/pulse/native";
}

Finding SoundProbe::look() {
  constexpr const char* kStart = "sudo apt-get install pulseaudio && pulseaudio --start";
  constexpr const char* kForget = "unset PULSE_SERVER";
  constexpr std::uint16_t kPort = 4713;
  std::string where = server_;
  const auto strip = [&where](std::string_view scheme) {
    const bool fits = where.starts_with(scheme);
    if (fits) where.erase(0, scheme.size());
    return fits;
  };
  const bool isLocal = strip("unix:") || where.starts_with('/');
  if (!isLocal && !strip("tcp:") && !strip("tcp4:")) strip("tcp6:");
  g_autoptr(GError) error = nullptr;
  g_autoptr(GSocketConnectable) address = isLocal ? G_SOCKET_CONNECTABLE(g_unix_socket_address_new(where.c_str()))
                                                  : g_network_address_parse(where.c_str(), kPort, &error);
  where.insert(0, "the server at ");
  if (address != nullptr && reach(*address, answerSeconds_, &error)) return {"sound", State::usable, where, ""};
  const bool isAbsent = isLocal && g_error_matches(error, G_IO_ERROR, G_IO_ERROR_NOT_FOUND) != FALSE;
  if (isAbsent) return {"sound", State::missing, where + " is not running", kStart};
  return {"sound", State::broken, where + ": " + error->message,
          isLocal ? "pulseaudio --kill; pulseaudio --start" : kForget};
}

Finding VolumesProbe::look() {
  std::string fault;
  const int restored = ZRRestoreLinuxSound(fault, answerSeconds_);
  if (!fault.empty()) {
    return {"volumes", State::broken, "what a killed program has left lowered is still so: " + fault,
            "pulseaudio --start; zrcore doctor"};
  }
  if (restored == 0) return {"volumes", State::usable, "no other sound has been left lowered", ""};
  return {"volumes", State::usable,
          "a killed program had left other sound lowered; it has its volume back (" + std::to_string(restored) + ")",
          ""};
}

namespace {

/// The .desktop file that the user's settings name for a kind of addresses, whether it can be used or not.
std::string chosenHandler(const std::string& type) {
  const std::string file = std::string(g_get_user_config_dir()) + "/mimeapps.list";
  g_autoptr(GKeyFile) settings = g_key_file_new();
  std::string chosen;
  if (g_key_file_load_from_file(settings, file.c_str(), G_KEY_FILE_NONE, nullptr)) {
    g_autofree gchar* value = g_key_file_get_string(settings, "Default Applications", type.c_str(), nullptr);
    if (value != nullptr) chosen = value;
  }
  while (chosen.ends_with(';')) chosen.pop_back();
  return chosen;
}

}  // namespace

Finding HandlerProbe::look() {
  const std::string type = "x-scheme-handler/" + scheme_;
  const std::string remedy =
      "sudo apt-get install " + example_ + " && xdg-mime default " + example_ + ".desktop " + type;
  const std::string chosen = chosenHandler(type);
  g_autoptr(GAppInfo) handler = g_app_info_get_default_for_uri_scheme(scheme_.c_str());
  if (handler == nullptr) {
    if (!chosen.empty()) return {subject_, State::broken, chosen + " is chosen, but cannot be started", remedy};
    return {subject_, State::missing, "no application opens " + scheme_ + " addresses", remedy};
  }
  const char* const id = g_app_info_get_id(handler);
  return {subject_, State::usable, id != nullptr ? id : g_app_info_get_name(handler), ""};
}

}  // namespace doctor
