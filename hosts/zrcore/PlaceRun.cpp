// SPDX-License-Identifier: Apache-2.0
#include "PlaceRun.h"

#include <ZRCore/ZRJSON.h>
#include <place/PlaceDocument.h>
#include <place/PlaceFile.h>
#include <place/PlaceJson.h>
#include <trip/OutputError.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>
#include <variant>

#include "ExitCodes.h"
#include "Messages.h"
#include "PlaceFaults.h"
#include "PlaceTable.h"
#include "StandardOutput.h"

namespace {

class PlaceRun {
 public:
  explicit PlaceRun(const PlaceArguments& arguments)
      : arguments_(arguments),
        json_(ZRMakeJSONService()),
        isDocument_(arguments.json || arguments.geoJson),
        isTable_(Terminal::canRedraw()),
        messages_([](std::string_view line) {
          std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
        }) {}

  int run();

 private:
  void read(const std::string& path);
  void tell(const std::string& name, const place::Document& document);
  void tellUnknownKeys(const std::string& name, const place::Document& document);
  void showOneFile(const std::string& name, const std::vector<place::Result>& results);
  void showDocument();

  const PlaceArguments& arguments_;
  std::shared_ptr<ZRJSONService> json_;
  bool isDocument_;
  bool isTable_;
  Messages messages_;
  StandardOutput output_;
  std::vector<place::Result> all_;  // of all files, for one document
  bool hasShown_ = false;
  bool hasFaults_ = false;
};

void PlaceRun::tellUnknownKeys(const std::string& name, const place::Document& document) {
  std::string keys;
  std::size_t bytes = 0;  // of them, without what stands between
  const auto tell = [&] {
    if (!keys.empty()) messages_.oneOfMany(name, "not used: " + std::exchange(keys, {}));
    bytes = 0;
  };
  for (const auto& [key, count] : document.unknownKeys) {
    if (bytes + key.size() > ZRLongestExcerpt) tell();
    bytes += key.size();
    keys += (keys.empty() ? "" : ", ") + excerpt(key) + (count > 1 ? " (" + std::to_string(count) + ")" : "");
  }
  tell();
  messages_.endRemarks(name);
}

void PlaceRun::tell(const std::string& name, const place::Document& document) {
  if (tellFaults(messages_, name, document)) hasFaults_ = true;
  if (arguments_.verbose) tellUnknownKeys(name, document);
}

void PlaceRun::showOneFile(const std::string& name, const std::vector<place::Result>& results) {
  if (results.empty()) return;
  if (isTable_) {
    if (arguments_.files.size() > 1) output_.write((hasShown_ ? "\n" : "") + name + ":\n");
    output_.write(placeTable(results, Terminal::current()));
  } else {
    if (!hasShown_) output_.write(kPlaceLinesHeader);
    output_.write(placeLines(name, results));
  }
  output_.flush();
  hasShown_ = true;
}

void PlaceRun::showDocument() {
  const ZROHMValue value =
      arguments_.geoJson ? place::featuresOf(all_) : place::dictionariesOf(all_, arguments_.tambrel);
  const auto written = json_->JSONFromValue(value, ZRJSONLayout::pretty);
  if (const NSError* const error = std::get_if<NSError>(&written)) {
    messages_.say(error->localizedDescription());
    hasFaults_ = true;
    return;
  }
  output_.write(std::get<std::string>(written) + "\n");
  output_.flush();
}

void PlaceRun::read(const std::string& path) {
  const std::string name = shownName(path);
  try {
    place::Document document = place::readDocument(*json_, place::readFile(path), arguments_.dialect);
    if (isDocument_) {
      std::move(document.results.begin(), document.results.end(), std::back_inserter(all_));
    } else {
      showOneFile(name, document.results);
    }
    tell(name, document);
  } catch (const place::FileError& error) {
    messages_.about(name, error.what());
    hasFaults_ = true;
  }
}

int PlaceRun::run() {
  try {
    for (const std::string& path : arguments_.files) {
      if (!output_.isClosed()) read(path);
    }
    if (isDocument_) showDocument();
  } catch (const trip::OutputError& error) {
    messages_.say(error.what());
    return kExitServiceMissing;
  }
  return hasFaults_ ? kExitDataFault : kExitDone;
}

}  // namespace

int runPlace(const PlaceArguments& arguments) { return PlaceRun(arguments).run(); }
