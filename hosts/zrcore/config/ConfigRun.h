// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_CONFIG_CONFIGRUN_H
#define ZRCORE_HOSTS_ZRCORE_CONFIG_CONFIGRUN_H

#include <cstdint>
#include <optional>
#include <string>

/// What the command line of `zrcore config` says.
struct ConfigArguments {
  std::string key;
  std::int64_t service = 1;  ///< of ZRConfigurationBase
  std::int64_t type = 1;
  std::optional<std::string> base;      ///< instead of the configuration host
  std::optional<std::string> fallback;  ///< the file that stands for the packaged one
  std::optional<double> timeoutSeconds;
  bool json = false;
};

/// Fetches the configuration and shows it.
/// @return the tool's exit code
int runConfig(const ConfigArguments& arguments);

#endif
