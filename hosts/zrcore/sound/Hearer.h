// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_SOUND_HEARER_H
#define ZRCORE_HOSTS_ZRCORE_SOUND_HEARER_H

#include <ZRCore/ZRAudio.h>

#include <cstddef>
#include <memory>

/// Counts the texts that were heard to their end.
class Hearer final : public ZRDidFinishSpeechUtterance {
 public:
  void speechSynthesizerDidFinishSpeechUtterance(const std::shared_ptr<AVSpeechSynthesizer>&,
                                                 const std::shared_ptr<AVSpeechUtterance>& utterance) override {
    ++heard;
    last = utterance;
  }
  std::size_t heard = 0;
  std::shared_ptr<AVSpeechUtterance> last;
};

/// Where the user finds what mends sound.
inline constexpr const char* kSeeDoctor = "'zrcore doctor' tells what is missing, and what mends it";

#endif
