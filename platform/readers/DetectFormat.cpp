// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <variant>

#include "CsvRecord.h"
#include "FixReader.h"
#include "LineSplitter.h"
#include "NmeaSentence.h"
#include "Text.h"

namespace readers {
namespace {

/// Looked up in the bytes, not in a line: a whole GPX file is often one long line.
bool beginsWithTag(std::string_view text) {
  const auto first = text.find_first_not_of("\xEF\xBB\xBF \t\r\n");
  return first != std::string_view::npos && text[first] == '<';
}

/// Whether a tag `<gpx` or `<prefix:gpx` begins in the text.
bool hasGpxTag(std::string_view text) {
  for (auto at = text.find("gpx"); at != std::string_view::npos; at = text.find("gpx", at + 1)) {
    const char before = at > 0 ? text[at - 1] : ' ';
    const char after = at + 3 < text.size() ? text[at + 3] : ' ';
    if ((before == '<' || before == ':') && std::string_view(" \t\r\n/>").find(after) != std::string_view::npos) {
      return true;
    }
  }
  return false;
}

bool isCsvHeader(std::string_view line) {
  CsvRecord record;
  if (!record.append(line)) return false;
  const auto has = [&](std::string_view column) {
    return std::any_of(record.cells().begin(), record.cells().end(),
                       [&](const std::string& cell) { return lowerCase(trimmed(cell)) == column; });
  };
  return has("lat") && has("lon");
}

bool isSoundSentence(std::string_view line) {
  if (!line.starts_with('$')) return false;
  const auto parsed = parseSentence(line);
  const auto* const sentence = std::get_if<NmeaSentence>(&parsed);
  return sentence && (sentence->hasChecksum || sentence->kind.size() == 3);
}

}  // namespace

std::optional<Format> detectFormat(std::string_view head) {
  if (beginsWithTag(head)) return hasGpxTag(head) ? std::optional(Format::gpx) : std::nullopt;

  bool isFirst = true, csv = false, json = false, nmea = false;
  const auto look = [&](const Line& line) {
    const auto text = trimmed(line.text);
    if (text.empty() || text.front() == '#') return;
    if (isFirst) csv = isCsvHeader(text);
    isFirst = false;
    // A daemon's log also holds its receiver's sentences, so one report decides over any number of these.
    json = json || (text.front() == '{' && text.find("\"class\"") != std::string_view::npos);
    nmea = nmea || isSoundSentence(text);
  };
  LineSplitter lines;
  lines.feed(head, look);
  lines.finish(look);

  if (csv) return Format::csv;
  if (json) return Format::gpsdJson;
  if (nmea) return Format::nmea;
  return std::nullopt;
}

}  // namespace readers
