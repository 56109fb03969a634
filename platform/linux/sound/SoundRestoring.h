// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_SOUNDRESTORING_H
#define ZRCORE_LINUX_SOUND_SOUNDRESTORING_H

#include <string>

/// What dead processes have noted in a folder, and what one has that is about to end.
struct SoundToRestore {
  std::string stateFolder;  ///< as in `DuckFile`
  std::string endingOwner;  ///< as there
  double seconds = 0.5;     ///< the longest time that it may take
};

/// @param fault  why it could not all be restored, in words; empty when it was
/// @return how many volumes were restored
int restoreSound(std::string& fault, const SoundToRestore& what);

/// From now on a process that exits restores first what it has lowered, for hosts that do not wait for that.
void restoreSoundAtExit();

#endif
