// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_OTHERSTREAMS_H
#define ZRCORE_LINUX_SOUND_OTHERSTREAMS_H

#include <policy/DuckPlan.h>

#include <cstdint>
#include <functional>
#include <list>
#include <optional>

#include "sound/DuckFile.h"
#include "sound/PulseConnection.h"
#include "sound/VolumeMemory.h"

/// The streams of other processes on the sound server: knows whether they are audible, and lowers them while this
/// process speaks.
///
/// Every decision is made on a list of streams from the server. At most one list is requested at a time, and only after
/// all volume changes were sent, so that no list shows a volume that this process has changed since. Other processes of
/// the kit write down what they lower, and a file lock lets one process decide at a time. A stream that ends while it
/// is lowered leaves its low volume in the server's memory: the volume is corrected there when the prompts are over.
class OtherStreams final : private PulseListener {
 public:
  static constexpr double kLingerSeconds = 0.15;  ///< how long streams stay lowered after a prompt, for the next one

  struct Events {
    std::function<void(bool)> changed;                       ///< other audio has started (true) or ended
    std::function<void(const std::string& folder)> unnoted;  ///< the note cannot be written; called once
  };

  /// @param endingOwner  as in `DuckFile`
  OtherStreams(PulseConnection& connection, std::string stateFolder, Events events, std::string endingOwner = {});
  ~OtherStreams() override;

  /// Whether any of the streams is audible. Until the first list has come, this asks the server and waits for its
  /// answer, a quarter of a second at most.
  bool arePlaying() const;
  /// Whether a process that crashed may have left streams lowered. They are restored when a connection is ready.
  bool mayHaveToRestore() const { return file_.hasNotesOfOthers(); }
  /// Allows or forbids lowering.
  void setDucking(bool isWanted);
  /// A stream of this process becomes audible, or has ended.
  void ourStreamStarts();
  void ourStreamEnds();
  /// Whether no change is under way and no stream is lowered that should be restored.
  bool isSettled() const;
  /// The folder of the notes.
  const std::string& stateFolder() const { return file_.folder(); }
  /// How many streams and remembered volumes have been restored so far.
  int restored() const { return restored_; }

 private:
  void serverIsReady() override;
  void serverIsLost(const std::string& why) override;
  void lookAtModules();
  void synchronize();
  void listed();
  policy::DuckPlan lookAtNotes();
  void note();
  void apply(const std::vector<policy::DuckPlan::Change>& changes);
  void changeDone(std::uint32_t index, bool isSuccess);
  void changesDone();
  void correctMemory();
  void corrected(int count);
  bool shouldDuck() const { return isWanted_ && (audible_ > 0 || linger_) && !serverDucks_; }

  struct ChangeUnderWay {
    OtherStreams* self;
    std::uint32_t index;
  };

  PulseConnection& connection_;
  DuckFile file_;
  VolumeMemory memory_;
  Events events_;
  policy::DuckPlan plan_;
  policy::DuckPlan noted_;  ///< the notes of living processes since the list was requested
  std::uint32_t serverCookie_ = 0;
  std::vector<policy::OtherStream> streams_;  ///< of the list under way
  std::optional<bool> arePlaying_;            ///< by the last list
  mutable std::optional<bool> toldPlaying_;   ///< the answer that was last given, asked for or not
  bool isWanted_ = false;
  bool serverDucks_ = false;
  bool hasSeenDucking_ = false;  ///< in the list of modules under way
  int audible_ = 0;
  std::unique_ptr<Loop::Wait> linger_;
  bool isLearning_ = false;  ///< what the server is
  bool isListing_ = false;
  bool isStale_ = false;  ///< something has changed since the list was requested
  std::list<ChangeUnderWay> changesUnderWay_;
  bool isCorrecting_ = false;  ///< the server's memory
  bool hasMemory_ = true;      ///< the server has one, as far as is known
  int restored_ = 0;
};

/// The property by which processes like this one know each other's streams: `soundOwner` of the stream's process.
inline constexpr const char* kPromptProperty = "zrcore.prompt";

/// What a server reports of a stream. One of this process does not count as audible.
policy::OtherStream otherStream(const pa_sink_input_info& info);

/// Whether others can be heard, asked over a connection of its own in at most a quarter of a second; false without a
/// server.
bool askWhetherOthersPlay();

#endif
