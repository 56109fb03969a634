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

/// What is known of another process's stream.
struct OtherStream {
  std::uint32_t index = 0;  ///< the server's number of it
  std::string key;          ///< under which the server remembers the stream's volume for its next time; may be empty
  ChannelVolumes volumes;
  bool isAudible = true;     ///< neither corked nor muted
  bool canBeChanged = true;  ///< whether it has a volume, and that can be set
};

/// 18 dB lower.
ChannelVolumes loweredVolumes(const ChannelVolumes& volumes);

/// Which streams are to be lowered and which restored. It remembers the streams that it has lowered with their former
/// volumes until they are restored; one whose volume has been changed meanwhile is left alone.
class DuckPlan {
 public:
  struct Change {
    std::uint32_t index = 0;
    ChannelVolumes volumes;
    bool isLowering = false;
  };

  /// What is to be changed now. Afterwards the plan counts on its having been done.
  /// @param streams  all there are, as they stand: a list that was asked for after the changes of the last time
  std::vector<Change> changes(bool isDucking, const std::vector<OtherStream>& streams);

  bool isEmpty() const { return entries_.empty(); }
  /// Takes over what another plan, of a process that has died, still has to restore.
  void add(const DuckPlan& other) { entries_.insert(entries_.end(), other.entries_.begin(), other.entries_.end()); }

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

    bool isOf(const OtherStream& stream) const;
    bool bred(const OtherStream& stream) const;
  };

  std::vector<Entry> entries_;
};

}  // namespace policy

#endif
