// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_VIEW_SHOWNLINES_H
#define ZRCORE_HOSTS_ZRCORE_VIEW_SHOWNLINES_H

#include <trip/TripRow.h>
#include <zrcore/StandardOutput.h>

#include <memory>

// Fixes for other programs, one to a line. `output` must outlive what is made.

/// Columns separated by tabs, named by the line before the first fix, "-" for what is unknown. No value holds a blank.
std::unique_ptr<trip::TripOutput> makeFixLines(StandardOutput& output);

/// JSON objects, and as the last line an object whose only key is "summary".
std::unique_ptr<trip::TripOutput> makeJsonLines(StandardOutput& output);

#endif
