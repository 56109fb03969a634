// SPDX-License-Identifier: Apache-2.0
// A host that speaks, and exits when a file appears without a thought for other applications' sound. careless_host FILE
#include <ZRCore/ZRAudio.h>
#include <ZRCore/ZRLinuxPlatform.h>

#include <filesystem>

int main(int, char** argv) {
  if (!ZRPlatformInstall(makeLinuxPlatform())) return 1;
  ZRAudio::sharedInstance()->speakTextInterruptVolume("One two three four five six seven eight nine ten", false, 0.0F);
  const auto mayExit = [argv] { return std::filesystem::exists(argv[1]); };
  while (!mayExit()) ZRRunLinuxLoopFor(0.01, mayExit);
}
