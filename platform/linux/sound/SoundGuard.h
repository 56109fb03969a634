// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_SOUNDGUARD_H
#define ZRCORE_LINUX_SOUND_SOUNDGUARD_H

#include <string>

/// Where this process will note what it lowers, for `ZRGuardLinuxSound`; until then it has nothing to do.
void guardSound(const std::string& stateFolder);

#endif
