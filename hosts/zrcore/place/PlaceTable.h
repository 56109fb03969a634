// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_PLACE_PLACETABLE_H
#define ZRCORE_HOSTS_ZRCORE_PLACE_PLACETABLE_H

#include <place/PlaceDocument.h>
#include <zrcore/Terminal.h>

#include <string>
#include <vector>

/// Places for people: one place takes three lines, its first line beside the numbers, its second line and its single
/// line below. No line is longer than the terminal is wide; texts are cut.
std::string placeTable(const std::vector<place::Result>& results, const Terminal& terminal);

/// A place for other programs: one line, columns separated by tabs, "-" for what there is not.
std::string placeLine(const std::string& file, const place::Result& result);
extern const char* const kPlaceLinesHeader;

#endif
