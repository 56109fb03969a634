// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_SAY_SAYRUN_H
#define ZRCORE_HOSTS_ZRCORE_SAY_SAYRUN_H

#include <zrcore/sound/SoundTarget.h>

#include <optional>
#include <string>
#include <vector>

/// What the command line of `zrcore say` says.
struct SayArguments {
  std::vector<std::string> texts;
  std::optional<std::string> voice;  ///< nullopt: that of guidance
  std::optional<float> rate;         ///< 0 to 1; nullopt: that of guidance
  float volume = 1.0F;
  bool interrupt = false;
  SoundTarget target;
  bool force = false;
};

/// Speaks the texts.
/// @return the tool's exit code
int runSay(const SayArguments& arguments);

#endif
