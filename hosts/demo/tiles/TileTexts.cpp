// SPDX-License-Identifier: Apache-2.0
#include "TileTexts.h"

#include <ZRCore/NSURLSession_ZR.h>
#include <ZRCore/ZRPrintableText.h>
#include <text/ASCII.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

namespace demo {

namespace {

constexpr double kWeekSeconds = 7 * 86400.0, kYearSeconds = 365 * 86400.0;
constexpr std::size_t kMostAttributionBytes = 200;
constexpr std::size_t kMostMarkupBytes = 4096;  // that are looked at: each "<" looks for its end in all of them

constexpr std::array<std::pair<std::string_view, std::string_view>, 7> kEntities{{{"&copy;", "\u00A9"},
                                                                                  {"&#169;", "\u00A9"},
                                                                                  {"&lt;", "<"},
                                                                                  {"&gt;", ">"},
                                                                                  {"&quot;", "\""},
                                                                                  {"&nbsp;", " "},
                                                                                  {"&amp;", "&"}}};

std::string withoutMarkup(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    const std::size_t tagEnd = text.front() == '<' ? text.find('>') : std::string_view::npos;
    const auto entity = std::ranges::find_if(kEntities, [&](const auto& row) { return text.starts_with(row.first); });
    if (tagEnd != std::string_view::npos) {
      text.remove_prefix(tagEnd + 1);
    } else if (entity != kEntities.end()) {
      plain += entity->second;
      text.remove_prefix(entity->first.size());
    } else {
      plain += text.front();
      text.remove_prefix(1);
    }
  }
  return plain;
}

/// The number of seconds behind "max-age=" in a Cache-Control header.
std::optional<double> maxAge(std::string_view control) {
  constexpr std::string_view kName = "max-age=";
  const std::size_t at = control.find(kName);
  if (at == std::string_view::npos) return std::nullopt;
  const std::string_view digits = control.substr(at + kName.size());
  std::uint32_t seconds = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), seconds);
  if (read.ec == std::errc::result_out_of_range) return kYearSeconds;
  return read.ec == std::errc() ? std::optional<double>(seconds) : std::nullopt;
}

}  // namespace

std::string attributionText(std::string_view text) {
  std::string line;
  for (const char letter : withoutMarkup(text.substr(0, kMostMarkupBytes))) {
    const bool isBlank = letter == ' ' || letter == '\n' || letter == '\r' || letter == '\t';
    if (!isBlank) {
      line += letter;
    } else if (!line.empty() && line.back() != ' ') {
      line += ' ';
    }
  }
  if (line.ends_with(' ')) line.pop_back();
  return ZRPrintableText(line, kMostAttributionBytes);
}

TileFailure tileFailure(const std::string& source, const NSURLResponse* response, const std::optional<NSError>& error) {
  const int status = response ? response->statusCode : 0;
  if (status == 404 || status == 410 || status == 204) {
    return {true, "No map tiles: " + source + " has none for this place at this scale."};
  }
  std::string fault = source + " sends what is no picture of a tile.";
  if (status >= 400) {
    fault =
        source + " answers HTTP " + std::to_string(status) + ": check the address, and what the server asks of you.";
  } else if (error && error->domain != ZRURLSessionErrorDomain) {
    fault = ZRPrintableText(error->localizedDescription(), 2 * ZRLongestExcerpt);
  }
  return {false, "No map tiles: " + fault};
}

std::optional<double> goodUntil(const NSURLResponse& response, double now) {
  const std::string* const field = response.valueForHTTPHeaderField("Cache-Control");
  if (!field) return now + kWeekSeconds;
  const std::string control = text::lowerCase(*field);
  if (control.find("no-store") != std::string::npos) return std::nullopt;
  if (control.find("no-cache") != std::string::npos) return now;
  return now + std::clamp(maxAge(control).value_or(kWeekSeconds), 0.0, kYearSeconds);
}

}  // namespace demo
