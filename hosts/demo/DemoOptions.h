// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_DEMOOPTIONS_H
#define ZRCORE_HOSTS_DEMO_DEMOOPTIONS_H

namespace demo {

// What the demonstration's help says of it, and its manual page.

inline constexpr const char* kSummary =
    "Shows in a window what a navigation core makes of positions, addresses, prompts and pages.";
inline constexpr const char* kArguments = "[RECORDING...]";

struct OptionRow {
  const char* name;
  const char* valueName;  ///< null: it takes none
  const char* description;
};

inline constexpr OptionRow kPrintState{"print-state", nullptr, "Print a line whenever what is shown has changed"};
inline constexpr OptionRow kVersion{"version", nullptr, "Print the version and exit"};
inline constexpr OptionRow kTiles{"tiles", "URL|FILE",
                                  "Draw a base map of tiles: an address with {z}, {x} and {y}, or an MBTiles file; ''"
                                  " for none. In place of the one set in the window"};
inline constexpr OptionRow kTilesAttribution{"tiles-attribution", "TEXT",
                                             "Whose tiles these are, to be shown with the map"};
inline constexpr OptionRow kOptions[] = {kPrintState, kVersion, kTiles, kTilesAttribution};

}  // namespace demo

#endif
