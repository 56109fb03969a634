// SPDX-License-Identifier: Apache-2.0
#include "DuckPlan.h"

#include <text/Numbers.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <sstream>

namespace policy {

namespace {

/// The third root of -18 dB as a ratio of amplitudes.
const double kLowering = std::cbrt(std::pow(10.0, -18.0 / 20.0));

/// Servers may keep a volume as another kind of number, and so round it.
bool standAt(const ChannelVolumes& found, const ChannelVolumes& expected) {
  return std::equal(found.begin(), found.end(), expected.begin(), expected.end(),
                    [](std::uint32_t a, std::uint32_t b) { return (a > b ? a - b : b - a) <= 2 + b / 500; });
}

bool isSilent(const ChannelVolumes& volumes) {
  return std::all_of(volumes.begin(), volumes.end(), [](std::uint32_t volume) { return volume == 0; });
}

/// A key as a note has it. Applications choose it, line breaks included.
std::string escaped(const std::string& key) {
  constexpr const char* kDigits = "0123456789abcdef";
  std::string text;
  for (const char c : key) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte != 0x7f && byte != '%') {
      text += c;
    } else {
      text += {'%', kDigits[byte / 16U], kDigits[byte % 16U]};
    }
  }
  return text;
}

std::string unescaped(const std::string& text) {
  std::string key;
  for (std::size_t at = 0; at < text.size();) {
    const bool mayBeEscape = text[at] == '%' && at + 2 < text.size();
    const auto byte = mayBeEscape ? text::numberIn<unsigned char>(text.substr(at + 1, 2), 16) : std::nullopt;
    key += byte ? static_cast<char>(*byte) : text[at];
    at += byte ? 3 : 1;
  }
  return key;
}

}  // namespace

ChannelVolumes loweredVolumes(const ChannelVolumes& volumes) {
  ChannelVolumes lowered;
  for (const std::uint32_t volume : volumes) {
    lowered.push_back(static_cast<std::uint32_t>(std::lround(volume * kLowering)));
  }
  return lowered;
}

/// The very stream; or, for one that has gone, a successor.
bool DuckPlan::Entry::isOf(const OtherStream& stream) const {
  return index ? *index == stream.index : explains(stream);
}

/// Whether the stream stands at our lowered volume: because it was lowered, or because the server gave it that volume,
/// which it remembers by this key.
bool DuckPlan::Entry::explains(const OtherStream& stream) const {
  const bool isRelated = index == stream.index || (!key.empty() && key == stream.key);
  return isRelated && standAt(stream.volumes, loweredVolumes(original));
}

/// An entry's own process knows the volume. A note may be wrong, and full volume is the most that it can bring about.
ChannelVolumes DuckPlan::Entry::restored() const {
  constexpr std::uint32_t kFullVolume = 65536;
  ChannelVolumes volumes = original;
  if (isFromNote) {
    for (std::uint32_t& volume : volumes) volume = std::min(volume, kFullVolume);
  }
  return volumes;
}

template <class Entries>
auto DuckPlan::thatExplains(Entries& entries, const OtherStream& stream) {
  return std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) { return entry.explains(stream); });
}

std::vector<DuckPlan::Entry>::iterator DuckPlan::entryOf(const OtherStream& stream) {
  return std::find_if(entries_.begin(), entries_.end(), [&](const Entry& known) { return known.isOf(stream); });
}

void DuckPlan::lookForEnds(const std::vector<OtherStream>& streams) {
  for (Entry& entry : entries_) {
    const bool isThere = std::any_of(streams.begin(), streams.end(),
                                     [&](const OtherStream& stream) { return stream.index == entry.index; });
    if (!isThere) entry.index.reset();
    entry.isBeingRestored = false;  // if it was, the server went before it answered
    const bool isOutdated = std::any_of(streams.begin(), streams.end(), [&](const OtherStream& stream) {
      return stream.key == entry.key && !entry.explains(stream) && !standAt(stream.volumes, entry.original);
    });
    if (!entry.index && isOutdated) entry.hasStayedLow = false;  // the server remembers that stream's volume by now
  }
  std::set<std::string> remembered{""};  // by the server, which knows one volume a key: the latest
  for (std::size_t i = entries_.size(); i-- > 0;) {
    const bool isMoot = !entries_[i].index && !remembered.insert(entries_[i].key).second;
    if (isMoot) entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(i));
  }
}

std::optional<DuckPlan::Change> DuckPlan::lowering(const OtherStream& stream, const DuckPlan& noted) {
  const auto entry = entryOf(stream);
  if (entry != entries_.end()) {
    entry->index = stream.index;
    entry->hasStayedLow = entry->explains(stream);
    return std::nullopt;
  }
  if (const auto parent = thatExplains(entries_, stream); parent != entries_.end()) {
    entries_.push_back({stream.index, stream.key, ChannelVolumes(parent->original), parent->isFromNote});
    return std::nullopt;
  }
  if (!stream.isAudible || !stream.canBeChanged || isSilent(stream.volumes)) return std::nullopt;
  const auto other = thatExplains(noted.entries_, stream);
  const bool isNoted = other != noted.entries_.end();
  const ChannelVolumes& original = isNoted ? other->original : stream.volumes;
  entries_.push_back({stream.index, stream.key, original, isNoted});
  return Change{stream.index, loweredVolumes(original)};  // low or not: the other may be about to restore it
}

std::optional<DuckPlan::Change> DuckPlan::restoring(const OtherStream& stream, const DuckPlan& held) {
  const auto entry = entryOf(stream);
  if (entry == entries_.end()) return std::nullopt;
  const bool isHeld = std::any_of(held.entries_.begin(), held.entries_.end(), [&](const Entry& other) {
    return other.index == stream.index && other.explains(stream);
  });
  if (isHeld || !standAt(stream.volumes, loweredVolumes(entry->original))) {
    entries_.erase(entry);
    return std::nullopt;
  }
  entry->isBeingRestored = true;
  return Change{stream.index, entry->restored()};
}

std::vector<DuckPlan::Change> DuckPlan::changes(bool isDucking, const std::vector<OtherStream>& streams,
                                                const DuckPlan& noted, const DuckPlan& held) {
  lookForEnds(streams);
  std::vector<Change> changes;
  for (const OtherStream& stream : streams) {
    if (!stream.mayBeLowered) {
      // The server remembers volumes by role, too: a prompt may begin at what was a lowered call's.
      const auto parent = thatExplains(entries_, stream);
      if (parent == entries_.end()) continue;
      changes.push_back({stream.index, parent->restored()});
      parent->isBeingRestored = !parent->index;
    } else if (const auto change = isDucking ? lowering(stream, noted) : restoring(stream, held)) {
      changes.push_back(*change);
    }
  }
  return changes;
}

std::vector<RememberedVolume> DuckPlan::corrections(const std::optional<std::vector<RememberedVolume>>& memory,
                                                    const DuckPlan& held) {
  std::vector<RememberedVolume> corrections;
  const auto isHeld = [&held](const Entry& entry) {
    return std::any_of(held.entries_.begin(), held.entries_.end(), [&entry](const Entry& other) {
      return other.key == entry.key && other.original == entry.original;
    });
  };
  const auto isRemembered = [&memory](const Entry& entry) {
    if (!memory) return entry.hasStayedLow && !entry.key.empty();
    return std::any_of(memory->begin(), memory->end(), [&entry](const RememberedVolume& found) {
      return found.key == entry.key && standAt(found.volumes, loweredVolumes(entry.original));
    });
  };
  for (Entry& entry : entries_) {
    entry.isBeingRestored = !entry.index && isRemembered(entry) && !isHeld(entry);
    if (entry.isBeingRestored) corrections.push_back({entry.key, entry.restored()});
  }
  std::erase_if(entries_, [](const Entry& entry) { return !entry.index && !entry.isBeingRestored; });
  return corrections;
}

void DuckPlan::changesDone() {
  std::erase_if(entries_, [](const Entry& entry) { return entry.isBeingRestored; });
}

void DuckPlan::streamHasEnded(std::uint32_t index) {
  for (Entry& entry : entries_) {
    if (entry.index != index) continue;
    entry.index.reset();
    entry.isBeingRestored = false;
  }
}

bool DuckPlan::hasEndedStreams() const {
  return std::any_of(entries_.begin(), entries_.end(), [](const Entry& entry) { return !entry.index; });
}

void DuckPlan::add(const DuckPlan& other) {
  for (const Entry& entry : other.entries_) {
    const bool isKnown =
        std::any_of(entries_.begin(), entries_.end(), [&](const Entry& known) { return known.index == entry.index; });
    if (!entry.index || !isKnown) entries_.push_back(entry);
  }
}

void DuckPlan::forgetServer() {
  for (Entry& entry : entries_) entry.index.reset();
  std::erase_if(entries_, [](const Entry& entry) { return entry.key.empty(); });
}

// A line an entry: the server's cookie, the stream's number ("-": none), its channels' volumes, and the key, which goes
// to the line's end, escaped.

std::string DuckPlan::text(std::uint32_t serverCookie) const {
  std::ostringstream text;
  for (const Entry& entry : entries_) {
    text << serverCookie << ' ';
    if (entry.index) {
      text << *entry.index;
    } else {
      text << '-';
    }
    text << ' ' << entry.original.size();
    for (const std::uint32_t volume : entry.original) text << ' ' << volume;
    text << ' ' << escaped(entry.key) << '\n';
  }
  return text.str();
}

DuckPlan DuckPlan::fromText(std::string_view text, std::uint32_t serverCookie) {
  constexpr std::size_t kMostChannels = 32, kMostEntries = 1000;
  DuckPlan plan;
  std::istringstream lines{std::string(text)};
  for (std::string line; std::getline(lines, line) && plan.entries_.size() < kMostEntries;) {
    std::istringstream words(line);
    std::uint32_t cookie = 0;
    std::string index;
    std::size_t channels = 0;
    if (!(words >> cookie >> index >> channels) || channels < 1 || channels > kMostChannels) continue;
    Entry entry;
    entry.original.resize(channels);
    for (std::uint32_t& volume : entry.original) words >> volume;
    std::istringstream number(index);
    std::uint32_t value = 0;
    if (cookie == serverCookie && number >> value) entry.index = value;
    if (!words || words.get() != ' ') continue;
    std::string key;
    std::getline(words, key);
    entry.key = unescaped(key);
    entry.isFromNote = true;
    if (entry.index || !entry.key.empty()) plan.entries_.push_back(std::move(entry));
  }
  return plan;
}

}  // namespace policy
