// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_VIRTUALDISPLAY_H
#define ZRCORE_TESTS_SUPPORT_VIRTUALDISPLAY_H

#include <filesystem>
#include <memory>
#include <string>

#include "ChildProcess.h"

/// A desktop of a test's own: an X server that nobody sees, a home folder, programs for web addresses and mail that
/// write down what they are given, and hands on mouse and keyboard. No session bus, no settings of the user's.
class VirtualDisplay {
 public:
  /// What a machine lacks for it; empty when it lacks nothing.
  static std::string missing();

  VirtualDisplay();
  ~VirtualDisplay();

  /// The variables under which a program runs on this desktop.
  const ChildProcess::Environment& environment() const { return environment_; }
  const std::filesystem::path& folder() const { return folder_; }

  /// Registers a program for a scheme, named like it; at first there is one for "http" alone.
  void registerProgram(const std::string& scheme);
  void registerMail() { registerProgram("mailto"); }
  /// What the program for a scheme was given, a line each; waits until there are `lines` of them.
  std::string handedTo(const std::string& scheme, std::size_t lines) const;

  void click(int x, int y) const;
  /// As xdotool names keys: "alt+Left".
  void key(const std::string& name) const;
  std::string clipboard() const;
  /// A picture of the screen's top left part, as PNG.
  bool takePicture(const std::filesystem::path& file, int width, int height) const;

 private:
  std::filesystem::path folder_;
  ChildProcess::Environment environment_;
  std::unique_ptr<ChildProcess> server_;
};

#endif
