// SPDX-License-Identifier: Apache-2.0
#include "SpokenFile.h"

#include <trip/outputs/OutputError.h>
#include <zrcore/Interruption.h>

SpokenFile::SpokenFile(const std::filesystem::path& target, bool force) : file_(target, force) {
  std::string fault;
  sound_ = ZRSoundFile::createIn(file_.descriptor(), fault);
  if (!sound_) throw trip::OutputError(target, fault, "choose another file");
}

void SpokenFile::complete() {
  const std::string fault = sound_->close();
  if (!fault.empty() && interruption::signal() == 0) {
    throw trip::OutputError(file_.target(), fault, "make room or choose another file");
  }
  file_.commit();
}

void SpokenFile::completeUnlessSilent() {
  if (sound_->lengthSeconds() > 0.0) complete();
}
