// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_NEARESTNAME_H
#define ZRCORE_HOSTS_ZRCORE_NEARESTNAME_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The name that `word` is most likely a slip of: letters left out, added, changed or exchanged with their neighbours,
/// a third of the word at most; or only its beginning. Nothing when none is near.
std::optional<std::string> nearestName(std::string_view word, const std::vector<std::string>& names);

#endif
