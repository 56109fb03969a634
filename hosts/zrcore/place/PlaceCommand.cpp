// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRJSON.h>
#include <place/PlaceDocument.h>
#include <place/PlaceFile.h>
#include <place/PlaceJson.h>
#include <trip/outputs/OutputError.h>
#include <zrcore/CommandLine.h>
#include <zrcore/Commands.h>
#include <zrcore/ExitCodes.h>
#include <zrcore/Messages.h>
#include <zrcore/StandardOutput.h>
#include <zrcore/Terminal.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "PlaceFaults.h"
#include "PlaceTable.h"

namespace {

constexpr const char* kPlaceDescription =
    "Shows what a geocoding or search service answered as places.\n"
    "Reads JSON: one result, an array of results, or an object with results in it, however deep. Lists under\n"
    "\"results\", \"features\", \"addresses\", \"places\" or \"locations\" come before all else in an object.";

/// What --dialect takes.
std::vector<std::string> dialectNames() {
  std::vector<std::string> names{"auto"};
  for (const ZRGeoAddressDialect dialect : ZRGeoAddressDialects()) names.emplace_back(ZRGeoAddressDialectName(dialect));
  return names;
}

constexpr const char* kPlaceFooter = R"(
Output:
  On a terminal a table: each place's first line, second line and single line, where it is shown on a map, how exact the
  result is, and the zoom level that suits it. Otherwise one line per place, columns separated by tabs, named by the
  first line, "-" for what there is not. Messages go to the standard error stream: zrcore: FILE: result N: text.

Exit codes:
  0  done
  1  a file cannot be read, part of it was dropped, or it holds no result
  2  the command line must be changed
  3  the result could not be written

Examples:
  zrcore place samples/places/nominatim/house.json
  zrcore place answer.json --geojson > places.geojson
  curl -s 'https://geocoder.example/search?q=...' | zrcore place - --dialect photon --json)";

using Dialect = std::optional<ZRGeoAddressDialect>;  // nothing: told by content

Dialect dialectNamed(const std::string&, const std::string& name) { return place::dialectNamed(name); }

struct PlaceOptions : Options {
  using Options::Options;
  Option<std::vector<std::string>> files{
      *this, "FILE", "The answers; - for standard input", {rule::required(), rule::offers(offer::kPlaces)}};
  Option<Dialect> dialect{*this,
                          "--dialect NAME",
                          "The service's way of writing results; auto: told by the keys of each [auto]",
                          dialectNamed,
                          {rule::oneOf(dialectNames())}};
  Option<bool> json{*this, "--json", "The addresses as an array of dictionaries, which can be read again"};
  Option<bool> tambrel{*this, "--tambrel", "Let --json use the keys of the second dialect", {rule::needs(json)}};
  Option<bool> geoJson{*this, "--geojson", "The places as a GeoJSON feature collection", {rule::excludes(json)}};
  Option<bool> verbose{*this, "--verbose", "Name the entries of the answers that are not used"};
};

/// So many places share the widths of a table's columns; a longer table starts anew.
constexpr std::size_t kPlacesOfATable = 1000;

place::DocumentShape shapeFor(const PlaceOptions& options) {
  if (*options.geoJson) return place::DocumentShape::geoJSON;
  return *options.tambrel ? place::DocumentShape::tambrelDictionaries : place::DocumentShape::dictionaries;
}

class PlaceRun {
 public:
  explicit PlaceRun(const PlaceOptions& options)
      : options_(options), json_(ZRMakeJSONService()), isTable_(Terminal::canRedraw()) {}

  int run();

 private:
  void read(const std::string& path);
  void show(const std::string& name, place::Result result);
  void addToDocument(const std::string& name, const place::Result& result);
  void showTable(const std::string& name);
  void tellUnknownKeys(const std::string& name, const place::Account& account);

  const PlaceOptions& options_;
  std::shared_ptr<ZRJSONService> json_;
  bool isTable_;
  Messages messages_;
  StandardOutput output_;
  std::unique_ptr<place::DocumentWriter> document_;  // of all files
  std::vector<place::Result> table_;                 // what is not shown yet
  bool hasShown_ = false;
  bool hasFaults_ = false;
};

/// All names, in lines that hold no more of the answer than a message may.
void PlaceRun::tellUnknownKeys(const std::string& name, const place::Account& account) {
  std::string keys;
  std::size_t bytes = 0;  // of them, without what stands between
  const auto tell = [&] {
    if (!keys.empty()) messages_.oneOfMany(name, "not used: " + std::exchange(keys, {}));
    bytes = 0;
  };
  std::uint64_t unnamed = account.unknownCount;
  for (const auto& [key, count] : account.unknownKeys) {
    if (bytes + key.size() > ZRLongestExcerpt) tell();
    bytes += key.size();
    keys += (keys.empty() ? "" : ", ") + excerpt(key) + (count > 1 ? " (" + std::to_string(count) + ")" : "");
    unnamed -= count;
  }
  tell();
  messages_.endRemarks(name);
  if (unnamed > 0) messages_.about(name, "not used: " + std::to_string(unnamed) + " under other names");
}

void PlaceRun::addToDocument(const std::string& name, const place::Result& result) {
  const auto error = document_->add(*result.place);
  if (!error) return;
  messages_.oneOfMany(name + ": result " + std::to_string(result.number), error->localizedDescription());
  hasFaults_ = true;
}

void PlaceRun::showTable(const std::string& name) {
  if (table_.empty()) return;
  if (options_.files->size() > 1) output_.write((hasShown_ ? "\n" : "") + name + ":\n");
  output_.write(placeTable(std::exchange(table_, {}), Terminal::current()));
  hasShown_ = true;
}

void PlaceRun::show(const std::string& name, place::Result result) {
  if (document_) return addToDocument(name, result);
  if (isTable_) {
    table_.push_back(std::move(result));
    if (table_.size() == kPlacesOfATable) showTable(name);
    return;
  }
  if (!hasShown_) output_.write(kPlaceLinesHeader);
  hasShown_ = true;
  output_.write(placeLine(name, result));
}

void PlaceRun::read(const std::string& path) {
  const std::string name = shownName(path);
  try {
    const place::Account account =
        place::readDocument(place::readFile(path), *options_.dialect,
                            [this, &name](place::Result result) { show(name, std::move(result)); });
    showTable(name);
    output_.flush();
    if (tellFaults(messages_, name, account)) hasFaults_ = true;
    messages_.endRemarks(name);
    if (*options_.verbose) tellUnknownKeys(name, account);
  } catch (const place::FileError& error) {
    messages_.about(name, error.what());
    hasFaults_ = true;
  }
}

int PlaceRun::run() {
  try {
    if (*options_.json || *options_.geoJson) {
      document_ = std::make_unique<place::DocumentWriter>(*json_, shapeFor(options_),
                                                          [this](std::string_view piece) { output_.write(piece); });
    }
    for (const std::string& path : *options_.files) {
      if (!output_.isClosed()) read(path);
    }
    if (document_) document_->finish();
    output_.flush();
  } catch (const trip::OutputError& error) {
    messages_.say(error.what());
    return kExitServiceMissing;
  }
  return hasFaults_ ? kExitDataFault : kExitDone;
}

}  // namespace

void addPlaceCommand(CommandLine& tool) {
  tool.add<PlaceOptions>("place", kPlaceDescription, kPlaceFooter,
                         [](const PlaceOptions& options) { return PlaceRun(options).run(); });
}
