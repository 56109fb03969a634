// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_SOUNDRESTORING_H
#define ZRCORE_LINUX_SOUND_SOUNDRESTORING_H

/// From now on a process that exits restores first what it has lowered, for hosts that do not wait for that.
void restoreSoundAtExit();

#endif
