// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_OTHERSTREAMS_H
#define ZRCORE_LINUX_SOUND_OTHERSTREAMS_H

#include <policy/DuckPlan.h>

#include <cstdint>
#include <functional>
#include <optional>

#include "sound/DuckFile.h"
#include "sound/PulseConnection.h"

/// The streams of other processes on the sound server: whether they can be heard, and their lowering while ours can.
///
/// All is decided on lists of the server, of which at most one is under way, and which is asked for after all changes
/// before it: so it never shows a volume that we have changed since. Other processes like this one write down what they
/// lower, and decide one after the other.
class OtherStreams final : private PulseListener {
 public:
  static constexpr double kLingerSeconds = 0.15;  ///< for which they stay lowered, should another prompt follow

  /// @param changed  other audio has started (true) or ended
  OtherStreams(PulseConnection& connection, std::string stateFolder, std::function<void(bool)> changed);
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

 private:
  void serverIsReady() override;
  void serverIsLost(const std::string& why) override;
  void lookAtModules();
  void synchronize();
  void listed();
  policy::DuckPlan lookAtNotes();
  void apply(const std::vector<policy::DuckPlan::Change>& changes);
  void changesDone();
  bool shouldDuck() const { return isWanted_ && (audible_ > 0 || linger_) && !serverDucks_; }

  PulseConnection& connection_;
  DuckFile file_;
  std::function<void(bool)> changed_;
  policy::DuckPlan plan_;
  policy::DuckPlan noted_;  ///< by other processes that live, since the list was asked for
  std::uint32_t serverCookie_ = 0;
  std::vector<policy::OtherStream> streams_;  ///< of the list under way
  std::optional<bool> arePlaying_;            ///< by the last list
  bool isWanted_ = false;
  bool serverDucks_ = false;
  bool hasSeenDucking_ = false;  ///< in the list of modules under way
  int audible_ = 0;
  std::unique_ptr<Loop::Wait> linger_;
  bool isLearning_ = false;  ///< what the server is
  bool isListing_ = false;
  bool isStale_ = false;  ///< something has happened since the list was asked for
  int changesUnderWay_ = 0;
};

/// The property, of whatever value, by which processes like this one know each other's streams.
inline constexpr const char* kPromptProperty = "zrcore.prompt";

/// What a server tells of a stream. One of this process does not count as audible.
policy::OtherStream otherStream(const pa_sink_input_info& info);

/// Whether others can be heard, asked over a connection of its own in at most a quarter of a second; false without a
/// server.
bool askWhetherOthersPlay();

#endif
