// SPDX-License-Identifier: Apache-2.0
#include "PlaceTable.h"

#include <ZRCore/ZRPrintableText.h>
#include <place/PlaceJson.h>
#include <trip/Words.h>

#include <algorithm>
#include <cwchar>

const char* const kPlaceLinesHeader = "file\tresult\tfirst_line\tsecond_line\tsingle_line\tlat\tlon\tquality\tzoom\n";

namespace {

std::string orDash(const std::string& text) { return text.empty() ? "-" : ZRPrintableText(text); }

std::optional<double> latitudeOf(const ZRPlace& place) {
  const auto found = place::position(place);
  return found ? std::optional(found->latitude) : std::nullopt;
}

std::optional<double> longitudeOf(const ZRPlace& place) {
  const auto found = place::position(place);
  return found ? std::optional(found->longitude) : std::nullopt;
}

/// How many columns of a terminal a character takes.
std::size_t columnsOf(wchar_t character) {
  const int columns = ::wcwidth(character);
  return columns >= 0 ? static_cast<std::size_t>(columns) : 1;
}

struct Fitted {
  std::string text;
  std::size_t columns = 0;
};

/// As much of a text as fits into so many columns; the end of a cut text shows that it was cut.
Fitted fitted(const std::string& text, std::size_t mostColumns, const Terminal& terminal) {
  const std::string ending = terminal.unicode ? "…" : ".";
  Fitted whole, cut;
  std::mbstate_t state{};
  for (std::size_t at = 0; at < text.size();) {
    wchar_t character = 0;
    std::size_t length = std::mbrtowc(&character, text.data() + at, text.size() - at, &state);
    const bool isShown = length != 0 && length <= text.size() - at;
    if (!isShown) {
      state = {};
      length = 1;
    }
    whole.text += isShown ? text.substr(at, length) : "?";
    whole.columns += isShown ? columnsOf(character) : 1;
    if (whole.columns < mostColumns) cut = whole;
    if (whole.columns > mostColumns) return {cut.text + ending, cut.columns + 1};
    at += length;
  }
  return whole;
}

std::string padded(const Fitted& cell, std::size_t columns) {
  return cell.text + std::string(columns > cell.columns ? columns - cell.columns : 0, ' ');
}

std::string atRight(const std::string& text, std::size_t columns) {
  return std::string(columns > text.size() ? columns - text.size() : 0, ' ') + text;
}

constexpr std::size_t kLatitudeColumns = 11, kLongitudeColumns = 12, kQualityColumns = 15, kZoomColumns = 4;
constexpr std::size_t kNumberColumns = kLatitudeColumns + kLongitudeColumns + 2 + kQualityColumns + kZoomColumns;

std::string numbers(const std::string& latitude, const std::string& longitude, const std::string& quality,
                    const std::string& zoom) {
  return atRight(latitude, kLatitudeColumns) + atRight(longitude, kLongitudeColumns) + "  " +
         padded({quality, quality.size()}, kQualityColumns) + atRight(zoom, kZoomColumns);
}

constexpr std::size_t kMostTextColumns = 60;
constexpr std::size_t kLeastTextColumns = 8;

}  // namespace

std::string placeTable(const std::vector<place::Result>& results, const Terminal& terminal) {
  const std::size_t counter = results.empty() ? 1 : std::to_string(results.back().number).size();
  const std::size_t indent = counter + 2;
  const auto columns = static_cast<std::size_t>(std::max(terminal.columns, 1));
  const std::size_t room = columns > indent + kNumberColumns ? columns - indent - kNumberColumns : 0;
  const std::size_t beside = std::clamp(room, kLeastTextColumns, kMostTextColumns);
  const std::size_t below = std::max(columns > indent ? columns - indent : 0, kLeastTextColumns);

  const std::string title = atRight("#", counter) + "  " + padded(fitted("place", beside, terminal), beside) +
                            numbers("latitude", "longitude", "quality", "zoom");
  std::string table = terminal.styled(Terminal::Style::bold, title) + "\n";
  for (const auto& [number, place] : results) {
    const ZRGeoAddress& address = *place->geoAddress();
    const auto text = [&](const std::string& line, std::size_t most) { return fitted(orDash(line), most, terminal); };
    table += atRight(std::to_string(number), counter) + "  " + padded(text(address.primaryString(), beside), beside) +
             numbers(trip::fixedText(latitudeOf(*place), 6), trip::fixedText(longitudeOf(*place), 6),
                     place::qualityText(address), std::to_string(address.zoomLevelForGeoQuality())) +
             "\n";
    for (const std::string& line : {address.secondaryString(), address.singleLineString()}) {
      table += std::string(indent, ' ') + text(line, below).text + "\n";
    }
  }
  return table;
}

std::string placeLine(const std::string& file, const place::Result& result) {
  const ZRPlace& place = *result.place;
  const ZRGeoAddress& address = *place.geoAddress();
  std::string line = file + "\t" + std::to_string(result.number);
  for (const std::string& cell :
       {orDash(address.primaryString()), orDash(address.secondaryString()), orDash(address.singleLineString()),
        trip::fixedText(latitudeOf(place), 7), trip::fixedText(longitudeOf(place), 7), place::qualityText(address),
        std::to_string(address.zoomLevelForGeoQuality())}) {
    line += "\t" + cell;
  }
  return line + "\n";
}
