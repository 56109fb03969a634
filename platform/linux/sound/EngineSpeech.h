// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_ENGINESPEECH_H
#define ZRCORE_LINUX_SOUND_ENGINESPEECH_H

#include <string>
#include <vector>

#include "loop/Loop.h"
#include "sound/BufferedStream.h"
#include "sound/EngineProcess.h"

/// What to speak, fixed when the utterance was handed over.
struct SpeechRequest {
  std::string text;  ///< UTF-8
  std::vector<std::string> command;
};

/// One utterance in progress: the engine's process, the samples that it writes, and the stream that plays them.
class EngineSpeech {
 public:
  static constexpr double kLongestSeconds = 600.0;  ///< limit of one utterance, for an engine that never stops

  struct Events {
    /// @param fault  why the utterance was not played to its end, in words; empty when it was
    Callback<const std::string&> ended;
    Callback<bool> silenced;
  };

  /// Calls no event inside this call.
  /// @param patienceSeconds  how long the engine may write nothing while its output is read
  EngineSpeech(Loop& loop, SoundOutput& output, const SpeechRequest& request, double patienceSeconds, Events events);

 private:
  void takeOutput(std::string_view bytes);
  void engineEnded(const std::string& fault);
  void watchOver();
  void readOn();
  void end(const std::string& fault);

  Loop& loop_;
  Events events_;
  std::string engineName_;
  bool isBlank_;  ///< the text
  double patienceSeconds_;
  policy::WavStreamReader reader_;
  bool hasStarted_ = false;
  bool isEngineReading_ = true;  ///< its output is wanted
  bool hasProgressed_ = false;
  std::unique_ptr<Loop::Wait> watchdog_;
  BufferedStream stream_;
  std::unique_ptr<EngineProcess> engine_;
};

#endif
