// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_POLICY_DUCKPLAN_H
#define ZRCORE_POLICY_DUCKPLAN_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace policy {

/// A stream's volume, a number a channel, on the sound server's scale: 65536 is full volume, and the amplitude goes
/// with the third power.
using ChannelVolumes = std::vector<std::uint32_t>;

/// What is known of a stream, mostly of another process.
struct OtherStream {
  std::uint32_t index = 0;  ///< the server's number of it
  std::string key;          ///< under which the server remembers the stream's volume for its next time; may be empty
  ChannelVolumes volumes;
  bool isAudible = true;     ///< neither corked nor muted, nor of this process
  bool canBeChanged = true;  ///< whether it has a volume, and that can be set
  bool mayBeLowered = true;  ///< neither of this process nor a prompt of another
};

/// A volume that the server keeps for an application's next stream.
struct RememberedVolume {
  std::string key;
  ChannelVolumes volumes;
};

/// 18 dB lower.
ChannelVolumes loweredVolumes(const ChannelVolumes& volumes);

/// Decides which streams are lowered and which are restored. The plan remembers each stream that it has lowered, with
/// the former volume, until the stream is restored; a stream whose volume somebody else changes meanwhile is left
/// alone. If several processes want a stream lowered, the first lowers it and the last restores it. A stream that ends
/// while it is lowered may leave its low volume in the server's memory; the plan then corrects that. Notes of other
/// processes are not trusted: no restored volume exceeds full volume.
class DuckPlan {
 public:
  struct Change {
    std::uint32_t index = 0;
    ChannelVolumes volumes;
  };

  /// What is to be changed now. What is to be restored stays in the plan, and in its text, until `changesDone`.
  /// @param streams  all there are, as they stand: a list that was asked for after the changes of the last time
  /// @param noted    the plans of other processes that live, as they stand and as they stood when the list was asked
  ///                 for: a low volume that they explain is not taken for a stream's own
  /// @param held     the same, as they stand: they will restore what they have lowered
  std::vector<Change> changes(bool isDucking, const std::vector<OtherStream>& streams, const DuckPlan& noted,
                              const DuckPlan& held);
  /// What the server is to remember instead of low volumes of streams that have ended; for when nothing is lowered. The
  /// others of them are forgotten: they have left no low volume, or somebody else corrects it. Done as changes are.
  /// @param memory  the server's, as it stands; nullopt: it does not show it, and all may have left their volume there
  /// @param held    as for `changes`
  std::vector<RememberedVolume> corrections(const std::optional<std::vector<RememberedVolume>>& memory,
                                            const DuckPlan& held);
  /// The server has carried out the changes.
  void changesDone();
  /// A change has failed: the stream has ended since the list was asked for.
  void streamHasEnded(std::uint32_t index);

  bool isEmpty() const { return entries_.empty(); }
  /// Whether streams have ended that the server may remember as low.
  bool hasEndedStreams() const;
  /// Adds what another plan still has to restore, but for streams that are in this one.
  void add(const DuckPlan& other);

  /// The server has gone: its numbers mean nothing to the next one. What it remembers for a stream's next time stays.
  void forgetServer();

  /// The plan as a text, to be kept in a file in case the process dies.
  /// @param serverCookie  by which the server is told from its successors
  std::string text(std::uint32_t serverCookie) const;
  /// The plan that wrote `text`. Lines that are none are passed over; numbers of another server are forgotten.
  static DuckPlan fromText(std::string_view text, std::uint32_t serverCookie);

 private:
  struct Entry {
    std::optional<std::uint32_t> index;  ///< nullopt: of a former server, or a stream that has gone
    std::string key;
    ChannelVolumes original;
    bool isFromNote = false;
    bool hasStayedLow = true;  ///< as far as is known; otherwise somebody has changed it, or its successor
    bool isBeingRestored = false;

    bool isOf(const OtherStream& stream) const;
    bool explains(const OtherStream& stream) const;
    ChannelVolumes restored() const;
  };

  template <class Entries>
  static auto thatExplains(Entries& entries, const OtherStream& stream);
  std::vector<Entry>::iterator entryOf(const OtherStream& stream);
  void lookForEnds(const std::vector<OtherStream>& streams);
  std::optional<Change> lowering(const OtherStream& stream, const DuckPlan& noted);
  std::optional<Change> restoring(const OtherStream& stream, const DuckPlan& held);

  std::vector<Entry> entries_;
};

}  // namespace policy

#endif
