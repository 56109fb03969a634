// SPDX-License-Identifier: Apache-2.0
#include "PlaceRun.h"

#include <ZRCore/ZRJSON.h>
#include <place/PlaceDocument.h>
#include <place/PlaceFile.h>
#include <place/PlaceJson.h>
#include <trip/outputs/OutputError.h>
#include <zrcore/ExitCodes.h>
#include <zrcore/Messages.h>
#include <zrcore/StandardOutput.h>

#include <cstdio>
#include <utility>

#include "PlaceFaults.h"
#include "PlaceTable.h"

namespace {

/// So many places share the widths of a table's columns; a longer table starts anew.
constexpr std::size_t kPlacesOfATable = 1000;

place::DocumentShape shapeFor(const PlaceArguments& arguments) {
  if (arguments.geoJson) return place::DocumentShape::geoJSON;
  return arguments.tambrel ? place::DocumentShape::tambrelDictionaries : place::DocumentShape::dictionaries;
}

class PlaceRun {
 public:
  explicit PlaceRun(const PlaceArguments& arguments)
      : arguments_(arguments),
        json_(ZRMakeJSONService()),
        isTable_(Terminal::canRedraw()),
        messages_([](std::string_view line) {
          std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
        }) {}

  int run();

 private:
  void read(const std::string& path);
  void show(const std::string& name, place::Result result);
  void addToDocument(const std::string& name, const place::Result& result);
  void showTable(const std::string& name);
  void tellUnknownKeys(const std::string& name, const place::Account& account);

  const PlaceArguments& arguments_;
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
  if (arguments_.files.size() > 1) output_.write((hasShown_ ? "\n" : "") + name + ":\n");
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
        place::readDocument(place::readFile(path), arguments_.dialect,
                            [this, &name](place::Result result) { show(name, std::move(result)); });
    showTable(name);
    output_.flush();
    if (tellFaults(messages_, name, account)) hasFaults_ = true;
    messages_.endRemarks(name);
    if (arguments_.verbose) tellUnknownKeys(name, account);
  } catch (const place::FileError& error) {
    messages_.about(name, error.what());
    hasFaults_ = true;
  }
}

int PlaceRun::run() {
  try {
    if (arguments_.json || arguments_.geoJson) {
      document_ = std::make_unique<place::DocumentWriter>(*json_, shapeFor(arguments_),
                                                          [this](std::string_view piece) { output_.write(piece); });
    }
    for (const std::string& path : arguments_.files) {
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

int runPlace(const PlaceArguments& arguments) { return PlaceRun(arguments).run(); }
