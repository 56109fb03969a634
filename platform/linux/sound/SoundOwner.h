// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_SOUNDOWNER_H
#define ZRCORE_LINUX_SOUND_SOUNDOWNER_H

#include <string>

/// This process's name among those that lower other applications' streams: 16 random hexadecimal digits. A process's
/// number is not a name: sandboxes count their own.
const std::string& soundOwner();

#endif
