// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_SHOWNPATH_H
#define ZRCORE_HOSTS_TRIP_SHOWNPATH_H

#include <string>
#include <string_view>

namespace trip {

/// A path as messages show it: printable, and of a long one the end, which tells it from others.
std::string shownPath(std::string_view path);

}  // namespace trip

#endif
