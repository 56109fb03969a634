// SPDX-License-Identifier: Apache-2.0
#include "Completion.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace pages {
namespace {

/// The language tags of the voices that the speech engine has, a line each.
constexpr std::string_view kListVoices = "espeak-ng --voices 2>/dev/null | awk 'NR > 1 { print $2 }' | sort -u";

}  // namespace

std::string whatName(Offer::What what) {
  switch (what) {
    case Offer::What::nothing:
      return "";
    case Offer::What::file:
      return "file";
    case Offer::What::folder:
      return "folder";
    case Offer::What::recording:
      return "recording";
    case Offer::What::places:
      return "places";
    case Offer::What::sound:
      return "sound";
    case Offer::What::voice:
      return "voice";
    case Offer::What::command:
      return "command";
  }
  return "";
}

std::string subcommand(const CommandText& text) {
  const auto blank = text.name.find(' ');
  return blank == text.name.npos ? "" : text.name.substr(blank + 1);
}

std::string quotedOffers(const std::vector<Offer>& offers) {
  std::string all;
  for (const Offer& offer : offers) {
    all += (all.empty() ? "" : " ") + shellWord(offer.word + "|" + whatName(offer.then));
  }
  return all;
}

std::vector<Offer> argumentOffers(const CommandText& text) {
  std::vector<Offer> offers;
  for (const OptionText& option : text.options) {
    if (option.names.empty()) offers.insert(offers.end(), option.offers.begin(), option.offers.end());
  }
  return offers;
}

std::string shellWord(std::string_view text) { return "'" + with(std::string(text), "'", "'\\''") + "'"; }

std::string brief(const std::string& description) {
  const std::string line = description.substr(0, description.find('\n'));
  const auto end = line.find(". ");
  return end == line.npos && line.ends_with('.') ? line.substr(0, line.size() - 1) : line.substr(0, end);
}

std::string filled(const char* file, const std::vector<CommandText>& texts) {
  std::string commands;
  for (const CommandText& text : texts) commands += commands.empty() ? subcommand(text) : " " + subcommand(text);
  const std::pair<const char*, std::string_view> values[] = {{"@RECORDING@", "gpx|nmea|csv|tsv|json|jsonl|log|txt"},
                                                             {"@PLACES@", "json|geojson"},
                                                             {"@SOUND@", "wav"},
                                                             {"@VOICES@", kListVoices},
                                                             {"@COMMANDS@", commands}};
  std::ifstream in(std::string(ZRCORE_PAGES "/") + file);
  std::string text(std::istreambuf_iterator<char>(in), {});
  if (text.empty()) throw std::runtime_error(std::string("cannot read ") + file);
  for (const auto& [name, value] : values) text = with(std::move(text), name, value);
  return text;
}

std::string with(std::string text, std::string_view name, std::string_view value) {
  for (auto at = text.find(name); at != text.npos; at = text.find(name, at + value.size())) {
    text.replace(at, name.size(), value);
  }
  return text;
}

}  // namespace pages
