// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_SOUNDRESTORING_H
#define ZRCORE_LINUX_SOUND_SOUNDRESTORING_H

#include <string>

/// Which notes to restore: those of dead processes in a folder, and those of one process that is about to end.
struct SoundToRestore {
  std::string stateFolder;  ///< as in `DuckFile`
  std::string endingOwner;  ///< as there
  double seconds = 0.5;     ///< the time limit
};

/// @param fault  why it could not all be restored, in words; empty when it was
/// @return how many volumes were restored
int restoreSound(std::string& fault, const SoundToRestore& what);

/// Makes this process restore what it has lowered when it exits, for hosts that do not wait until sound has settled.
void restoreSoundAtExit();

#endif
