// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_CONTRACT_LINUXCONTRACT_H
#define ZRCORE_TESTS_CONTRACT_LINUXCONTRACT_H

#include <ZRCore/ZRLinuxPlatform.h>
#include <glib.h>

#include "TemporaryFolder.h"
#include "headless/HeadlessPlatform.h"

/// The Linux platform as ZRPlatformInstall completes it, of an application whose settings are stored.
inline ZRPlatform linuxPlatform(GMainContext* context) {
  ZRPlatform platform = headlessPlatform();
  ZRLinuxOptions options;
  options.mainContext = context;
  static const TemporaryFolder folder;
  options.informationFile = folder.write("information", "[Information]\nCFBundleIdentifier=com.example.contract\n");
  options.settingsFolder = folder.path;
  ZRFillLinuxPlatform(platform, options);
  return platform;
}

#endif
