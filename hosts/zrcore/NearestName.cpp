// SPDX-License-Identifier: Apache-2.0
#include "NearestName.h"

#include <algorithm>

namespace {

/// How many slips lead from one word to the other: the distance of optimal string alignment.
std::size_t slipsBetween(std::string_view a, std::string_view b) {
  // Row i has the distances of a's first i letters to each beginning of b; three rows are alive at a time.
  std::vector<std::size_t> beforeLast, last(b.size() + 1), row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t change = a[i - 1] == b[j - 1] ? 0 : 1;
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + change});
      const bool isExchange = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (isExchange) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
    }
    beforeLast = last;
    last.swap(row);
  }
  return last[b.size()];
}

}  // namespace

std::optional<std::string> nearestName(std::string_view word, const std::vector<std::string>& names) {
  constexpr std::size_t kLongestWord = 40;  // longer than any name
  constexpr std::size_t kLeastBeginning = 2;
  if (word.size() > kLongestWord) return std::nullopt;
  std::optional<std::string> nearest;
  std::size_t least = std::max<std::size_t>(1, word.size() / 3) + 1;
  for (const std::string& name : names) {
    const bool isBeginning = word.size() >= kLeastBeginning && name.starts_with(word);
    const std::size_t slips = isBeginning ? 1 : slipsBetween(word, name);
    if (slips >= least) continue;
    least = slips;
    nearest = name;
  }
  return nearest;
}
