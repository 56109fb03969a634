// SPDX-License-Identifier: Apache-2.0
#include <variant>

#include "CsvHeader.h"
#include "FixReader.h"
#include "LineSplitter.h"
#include "NmeaSentence.h"
#include "Text.h"
#include "TextDecoder.h"

namespace readers {
namespace {

/// Looked up in the bytes, not in a line: a whole GPX file is often one long line.
bool beginsWithTag(std::string_view text) {
  const auto first = text.find_first_not_of("\xEF\xBB\xBF \t\r\n");
  return first != std::string_view::npos && text[first] == '<';
}

/// Whether a tag `<name` or `<prefix:name` begins in the text.
bool hasTag(std::string_view text, std::string_view name) {
  for (auto at = text.find(name); at != std::string_view::npos; at = text.find(name, at + 1)) {
    const char before = at > 0 ? text[at - 1] : ' ';
    const char after = at + name.size() < text.size() ? text[at + name.size()] : ' ';
    if ((before == '<' || before == ':') && std::string_view(" \t\r\n/>").find(after) != std::string_view::npos) {
      return true;
    }
  }
  return false;
}

bool hasSoundSentence(std::string_view line) {
  const auto start = line.rfind('$');
  if (start == std::string_view::npos) return false;
  const auto parsed = parseSentence(line.substr(start));
  const auto* const sentence = std::get_if<NmeaSentence>(&parsed);
  return sentence && (sentence->hasChecksum || (start == 0 && sentence->kind.size() == 3));
}

/// As ASCII, if it is UTF-16.
std::string decoded(std::string_view head) {
  std::string text;
  TextDecoder decoder;
  const auto append = [&](std::string_view piece) { text += piece; };
  decoder.feed(head, append);
  decoder.finish(append);
  return text;
}

}  // namespace

std::optional<Format> detectFormat(std::string_view bytes) {
  const std::string head = decoded(bytes);
  if (beginsWithTag(head)) return hasTag(head, "gpx") ? std::optional(Format::gpx) : std::nullopt;

  bool isFirst = true, csv = false, json = false, nmea = false;
  const auto look = [&](const Line& line) {
    const auto text = trimmed(line.text);
    if (text.empty() || text.front() == '#') return;
    if (isFirst) csv = CsvHeader::read(line.text).has_value();
    isFirst = false;
    // A daemon's log also holds its receiver's sentences, so one object decides over any number of these.
    json = json || (text.front() == '{' && text.find("\"class\"") != std::string_view::npos);
    nmea = nmea || hasSoundSentence(text);
  };
  LineSplitter lines;
  lines.feed(head, look);
  lines.finish(look);

  if (csv) return Format::csv;
  if (json) return Format::gpsdJson;
  if (nmea) return Format::nmea;
  return std::nullopt;
}

std::string whyUnreadable(std::string_view bytes) {
  const std::string head = decoded(bytes);
  const struct {
    std::string_view begin;
    const char* name;
  } packings[] = {{"PK\x03\x04", "zip (as KMZ is)"},
                  {"BZh", "bzip2"},
                  {"\xFD"
                   "7zXZ",
                   "xz"},
                  {"\x28\xB5\x2F\xFD", "zstd"}};
  for (const auto& [begin, name] : packings) {
    if (head.starts_with(begin)) return std::string("is packed by ") + name + "; unpack it first, or pack it by gzip";
  }
  if (beginsWithTag(head)) {
    if (hasTag(head, "kml")) return "is KML, which is not read; convert it to GPX, by gpsbabel for instance";
    return "is XML, but no GPX; convert it to GPX, by gpsbabel for instance";
  }
  const auto first = head.find_first_not_of("\xEF\xBB\xBF \t\r\n");
  const bool isObject = first != std::string_view::npos && head[first] == '{';
  if (isObject && head.find("\"Feature") != std::string_view::npos) {
    return "is GeoJSON, which is not read; give the recording that it was made of, or the trip.csv beside it";
  }
  return std::string(
             "is no recording that is read: GPX, NMEA 0183, gpsd JSON lines, or CSV whose first row names the "
             "columns ") +
         kWantedColumns;
}

}  // namespace readers
