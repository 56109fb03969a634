// SPDX-License-Identifier: Apache-2.0
#include "PlaceCommand.h"

#include <place/PlaceDocument.h>
#include <zrcore/CommandLine.h>

#include <memory>
#include <string>
#include <vector>

#include "PlaceRun.h"

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

}  // namespace

void addPlaceCommand(CommandLine& tool) {
  const auto arguments = std::make_shared<PlaceArguments>();
  Command command = tool.add("place", kPlaceDescription, kPlaceFooter, [arguments] { return runPlace(*arguments); });

  command.option("FILE", arguments->files, "The answers; - for standard input").required();
  command
      .option(
          "--dialect", [arguments](const std::string& name) { arguments->dialect = place::dialectNamed(name); },
          "The service's way of writing results; auto: told by the keys of each [auto]")
      .valueName("NAME")
      .oneOf(dialectNames());
  const CommandOption json =
      command.flag("--json", arguments->json, "The addresses as an array of dictionaries, which can be read again");
  command.flag("--tambrel", arguments->tambrel, "Let --json use the keys of the second dialect").needs(json);
  command.flag("--geojson", arguments->geoJson, "The places as a GeoJSON feature collection").excludes(json);
  command.flag("--verbose", arguments->verbose, "Name the entries of the answers that are not used");
}
