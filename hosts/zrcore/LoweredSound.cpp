// SPDX-License-Identifier: Apache-2.0
#include "LoweredSound.h"

#include <ZRCore/ZRLinuxSound.h>

#include <cstdio>
#include <string_view>

#include "Interruption.h"

namespace {

constexpr const char* kRestoreSoundOf = "--restore-sound-of";

}  // namespace

void loweredsound::restoreAtStart() {
  std::string fault;  // told by doctor: most runs have nothing to do with sound
  if (ZRRestoreLinuxSound(fault) == 0) return;
  std::fprintf(stderr, "zrcore: a program that was killed had left other sound lowered; it has its volume back\n");
}

void loweredsound::guard() {
  ZRGuardLinuxSound({"/proc/self/exe", kRestoreSoundOf});
  interruption::beforeSuddenEnd(ZRRestoreLinuxSoundAtSuddenEnd);
}

bool loweredsound::isHelper(int argc, char** argv) {
  if (argc != 3 || std::string_view(argv[1]) != kRestoreSoundOf) return false;
  std::string fault;
  ZRLinuxSoundRestoring restoring;
  restoring.endingOwner = argv[2];
  restoring.seconds = 2.0;
  ZRRestoreLinuxSound(fault, restoring);
  return true;
}
