// SPDX-License-Identifier: Apache-2.0
#include "VirtualDisplay.h"

#include <stdlib.h>

#include <algorithm>
#include <fstream>
#include <sstream>

using std::chrono::milliseconds;

std::string VirtualDisplay::missing() {
  std::string names;
  for (const char* const program : {"Xvfb", "xdotool", "xclip"}) {
    if (!ChildProcess::exists(program)) names += std::string(names.empty() ? "" : ", ") + program;
  }
  return names;
}

VirtualDisplay::VirtualDisplay() {
  std::string name = std::filesystem::temp_directory_path() / "zrcore-display-XXXXXX";
  folder_ = mkdtemp(name.data());
  for (const char* const part : {"home", "run", "config", "data/applications", "cache"}) {
    std::filesystem::create_directories(folder_ / part);
  }
  std::filesystem::permissions(folder_ / "run", std::filesystem::perms::owner_all);
  server_ = std::make_unique<ChildProcess>(
      ChildProcess::Arguments{"Xvfb", "-displayfd", "1", "-screen", "0", "1280x900x24", "-nolisten", "tcp"});
  environment_ = {{"DISPLAY", ":" + server_->readLine(milliseconds(20000)).value_or("none")},
                  {"HOME", folder_ / "home"},
                  {"XDG_RUNTIME_DIR", folder_ / "run"},
                  {"XDG_CONFIG_HOME", folder_ / "config"},
                  {"XDG_DATA_HOME", folder_ / "data"},
                  {"XDG_CACHE_HOME", folder_ / "cache"},
                  {"XDG_CURRENT_DESKTOP", ""},
                  {"WAYLAND_DISPLAY", ""},
                  {"GDK_BACKEND", "x11"},
                  {"GSETTINGS_BACKEND", "memory"},
                  {"GTK_A11Y", "none"},
                  {"ADW_DISABLE_PORTAL", "1"},
                  {"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + (folder_ / "run/no-bus").string()},
                  {"LC_ALL", "C.UTF-8"},
                  {"http_proxy", ""},
                  {"https_proxy", ""}};
  // Where the system allows no sandbox, WebKit would not start at all.
  if (!ChildProcess::output({"bwrap", "--unshare-all", "--ro-bind", "/", "/", "true"})) {
    environment_["WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS"] = "1";
  }
  registerProgram("http");
}

VirtualDisplay::~VirtualDisplay() {
  server_.reset();
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

void VirtualDisplay::registerProgram(const std::string& scheme) {
  const auto script = folder_ / (scheme + ".sh");
  std::ofstream(script) << "#!/bin/sh\nprintf '%s\\n' \"$1\" >>'" << (folder_ / (scheme + ".txt")).string() << "'\n";
  std::filesystem::permissions(script, std::filesystem::perms::owner_all);
  const std::string name = "zrcore-test-" + scheme + ".desktop";
  std::ofstream(folder_ / "data/applications" / name)
      << "[Desktop Entry]\nType=Application\nName=" << scheme << "\nExec=" << script.string()
      << " %u\nMimeType=x-scheme-handler/" << scheme << ";\n";
  std::ofstream(folder_ / "config/mimeapps.list", std::ios::app)
      << "[Default Applications]\nx-scheme-handler/" << scheme << '=' << name << '\n';
}

std::string VirtualDisplay::handedTo(const std::string& scheme, std::size_t lines) const {
  const auto file = folder_ / (scheme + ".txt");
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  for (;;) {
    std::stringstream text;
    text << std::ifstream(file).rdbuf();
    const std::string given = text.str();
    const bool isComplete = static_cast<std::size_t>(std::count(given.begin(), given.end(), '\n')) >= lines;
    if (isComplete || std::chrono::steady_clock::now() > deadline) return given;
    ChildProcess::output({"true"});  // yields while the other program writes
  }
}

void VirtualDisplay::click(int x, int y) const {
  ChildProcess::output({"xdotool", "mousemove", std::to_string(x), std::to_string(y), "click", "1"}, environment_);
}

void VirtualDisplay::key(const std::string& name) const {
  ChildProcess::output({"xdotool", "key", name}, environment_);
}

std::string VirtualDisplay::clipboard() const {
  return ChildProcess::output({"xclip", "-selection", "clipboard", "-o"}, environment_).value_or("(nothing)");
}

bool VirtualDisplay::takePicture(const std::filesystem::path& file, int width, int height) const {
  std::filesystem::create_directories(file.parent_path());
  const std::string part = std::to_string(width) + 'x' + std::to_string(height) + "+0+0";
  return ChildProcess::output({"import", "-window", "root", "-crop", part, "+repage", file}, environment_).has_value();
}
