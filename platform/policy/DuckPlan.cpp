#include "DuckPlan.h"

#include <algorithm>
#include <cmath>
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

}  // namespace

ChannelVolumes loweredVolumes(const ChannelVolumes& volumes) {
  ChannelVolumes lowered;
  for (const std::uint32_t volume : volumes) {
    lowered.push_back(static_cast<std::uint32_t>(std::lround(volume * kLowering)));
  }
  return lowered;
}

/// The very stream; or, for one that has gone, a successor.
bool DuckPlan::Entry::isOf(const OtherStream& stream) const { return index ? *index == stream.index : bred(stream); }

/// Whether the server gave the stream our lowered volume, because it remembers volumes by this key.
bool DuckPlan::Entry::bred(const OtherStream& stream) const {
  return !key.empty() && key == stream.key && standAt(stream.volumes, loweredVolumes(original));
}

std::vector<DuckPlan::Change> DuckPlan::changes(bool isDucking, const std::vector<OtherStream>& streams) {
  std::vector<Change> changes;
  for (Entry& entry : entries_) {
    const bool isThere = std::any_of(streams.begin(), streams.end(),
                                     [&](const OtherStream& stream) { return stream.index == entry.index; });
    if (!isThere) entry.index.reset();
  }
  std::erase_if(entries_, [](const Entry& entry) { return !entry.index && entry.key.empty(); });

  for (const OtherStream& stream : streams) {
    const auto entry =
        std::find_if(entries_.begin(), entries_.end(), [&](const Entry& known) { return known.isOf(stream); });
    if (isDucking && entry != entries_.end()) {
      entry->index = stream.index;
    } else if (const auto parent = std::find_if(entries_.begin(), entries_.end(),
                                                [&](const Entry& known) { return known.bred(stream); });
               isDucking && parent != entries_.end()) {
      entries_.push_back({stream.index, stream.key, ChannelVolumes(parent->original)});
    } else if (isDucking && stream.isAudible && stream.canBeChanged && !isSilent(stream.volumes)) {
      changes.push_back({stream.index, loweredVolumes(stream.volumes), true});
      entries_.push_back({stream.index, stream.key, stream.volumes});
    } else if (!isDucking && entry != entries_.end()) {
      if (standAt(stream.volumes, loweredVolumes(entry->original))) {
        changes.push_back({stream.index, entry->original, false});
      }
      entries_.erase(entry);
    }
  }
  return changes;
}

void DuckPlan::forgetServer() {
  for (Entry& entry : entries_) entry.index.reset();
  std::erase_if(entries_, [](const Entry& entry) { return entry.key.empty(); });
}

// A line an entry: the server's cookie, the stream's number ("-": none), its channels' volumes, and the key, which goes
// to the line's end.

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
    text << ' ' << entry.key << '\n';
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
    std::getline(words, entry.key);
    if (entry.index || !entry.key.empty()) plan.entries_.push_back(std::move(entry));
  }
  return plan;
}

}  // namespace policy
