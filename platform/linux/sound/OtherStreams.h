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

/// The streams of other processes on the sound server: whether they can be heard, and their lowering while ours can.
///
/// All is decided on lists of the server, of which at most one is under way, and which is asked for after all changes
/// before it: so it never shows a volume that we have changed since. Other processes like this one write down what they
/// lower, and decide one after the other. What streams that have ended low have left in the server's memory is
/// corrected once nothing is to be lowered.
class OtherStreams final : private PulseListener {
 public:
  static constexpr double kLingerSeconds = 0.15;  ///< for which they stay lowered, should another prompt follow

  struct Events {
    std::function<void(bool)> changed;  ///< other audio has started (true) or ended
    std::function<void(const std::string& folder)>
        unnoted;  ///< what is lowered cannot be written down, for the first time
  };

  /// @param endingOwner  as in `DuckFile`
  OtherStreams(PulseConnection& connection, std::string stateFolder, Events events, std::string endingOwner = {});
  ~OtherStreams() override;

  /// Whether any can be heard; asks the server, and waits for it a fraction of a second, while it is not known yet.
  bool arePlaying() const;
  /// Whether a process that died may have left some lowered; that is put right as soon as there is a connection.
  bool mayHaveToRestore() const { return file_.hasNotesOfOthers(); }
  /// Whether they may be lowered at all.
  void setDucking(bool isWanted);
  /// A stream of ours can be heard from now on, or no longer.
  void ourStreamStarts();
  void ourStreamEnds();
  /// Whether nothing is under way and nothing is lowered that should not be.
  bool isSettled() const;
  /// Where is noted what is lowered.
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
  policy::DuckPlan noted_;  ///< by other processes that live, since the list was asked for
  std::uint32_t serverCookie_ = 0;
  std::vector<policy::OtherStream> streams_;  ///< of the list under way
  std::optional<bool> arePlaying_;            ///< by the last list
  mutable std::optional<bool> toldPlaying_;   ///< what whoever asked was told last, or was told without asking
  bool isWanted_ = false;
  bool serverDucks_ = false;
  bool hasSeenDucking_ = false;  ///< in the list of modules under way
  int audible_ = 0;
  std::unique_ptr<Loop::Wait> linger_;
  bool isLearning_ = false;  ///< what the server is
  bool isListing_ = false;
  bool isStale_ = false;  ///< something has happened since the list was asked for
  std::list<ChangeUnderWay> changesUnderWay_;
  bool isCorrecting_ = false;  ///< the server's memory
  bool hasMemory_ = true;      ///< the server has one, as far as is known
  int restored_ = 0;
};

/// The property by which processes like this one know each other's streams: `soundOwner` of the stream's process.
inline constexpr const char* kPromptProperty = "zrcore.prompt";

/// What a server tells of a stream. One of this process does not count as audible.
policy::OtherStream otherStream(const pa_sink_input_info& info);

/// Whether others can be heard, asked over a connection of its own in at most a quarter of a second; false without a
/// server.
bool askWhetherOthersPlay();

#endif
