// SPDX-License-Identifier: Apache-2.0
#include "MBTiles.h"

#include <ZRCore/ZRPrintableText.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <utility>

#include "LocalAnswer.h"
#include "TileTexts.h"

namespace demo {

namespace {

constexpr int kMostPictureBytes = 4'000'000;
// A file may hold a view that computes without end. One look-up in an index takes a few dozen steps.
constexpr int kStepsOfTurn = 1000, kMostTurns = 5'000;

/// Answers for the addresses "mbtiles:zoom/column/row from the south".
class MBTilesSession final : public NSURLSession {
 public:
  MBTilesSession(const std::string& path, std::shared_ptr<ZRMainQueue> queue)
      : tiles_(path), queue_(std::move(queue)) {}

  const MBTiles& tiles() const { return tiles_; }

  std::shared_ptr<NSURLSessionDataTask> dataTaskWithRequest(NSMutableURLRequest request,
                                                            CompletionHandler completion) override {
    try {
      auto picture = pictureAt(request.URL ? request.URL->absoluteString() : "");
      const auto response = localResponse(request, picture ? 200 : 404);
      return std::make_shared<LocalAnswer>(queue_, std::move(completion), std::move(picture), response);
    } catch (const TileSourceError& error) {
      return std::make_shared<LocalAnswer>(
          queue_, std::move(completion), std::nullopt, nullptr,
          NSError{NSURLErrorDomain, NSURLErrorUnknown, {{NSLocalizedDescriptionKey, error.what()}}});
    }
  }

 private:
  std::optional<std::string> pictureAt(std::string_view address) {
    address.remove_prefix(std::min(address.find(':') + 1, address.size()));
    std::array<std::int64_t, 3> place{};
    for (std::int64_t& number : place) {
      const auto read = std::from_chars(address.data(), address.data() + address.size(), number);
      if (read.ec != std::errc()) return std::nullopt;
      address.remove_prefix(std::min(static_cast<std::size_t>(read.ptr - address.data()) + 1, address.size()));
    }
    return tiles_.picture(static_cast<int>(place[0]), place[1], place[2]);
  }

  MBTiles tiles_;
  std::shared_ptr<ZRMainQueue> queue_;
};

std::string textOf(sqlite3_stmt* statement, int column) {
  const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
  return bytes ? std::string(bytes, size) : std::string();
}

int endTurn(void* turnsLeft) { return --*static_cast<int*>(turnsLeft) < 0 ? 1 : 0; }

}  // namespace

void MBTiles::Close::operator()(sqlite3* database) const { sqlite3_close(database); }
void MBTiles::Close::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

MBTiles::MBTiles(const std::string& path) : name_(std::filesystem::path(path).filename().string()) {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  database_.reset(opened);
  if (result != SQLITE_OK) throw errorOf("cannot be opened: " + std::string(sqlite3_errstr(result)));
  // The schema comes from outside like the rest.
  sqlite3_db_config(opened, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(opened, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_limit(opened, SQLITE_LIMIT_LENGTH, kMostPictureBytes);
  sqlite3_progress_handler(opened, kStepsOfTurn, endTurn, &turnsLeft_);
  picture_ = prepared("SELECT tile_data FROM tiles WHERE zoom_level = ?1 AND tile_column = ?2 AND tile_row = ?3");
  metadata_ = prepared("SELECT value FROM metadata WHERE name = ?1");
  const std::string format = metadata("format");
  if (!format.empty() && format != "png" && format != "jpg" && format != "jpeg") {
    throw errorOf("holds tiles of the format \u201C" + ZRPrintableText(format, ZRLongestExcerpt) +
                  "\u201D, and only pictures (png, jpg) can be drawn");
  }
  attribution_ = metadata("attribution");
  readZooms();
}

MBTiles::~MBTiles() = default;

std::optional<std::string> MBTiles::picture(int zoom, std::int64_t column, std::int64_t rowFromSouth) {
  sqlite3_bind_int(picture_.get(), 1, zoom);
  sqlite3_bind_int64(picture_.get(), 2, column);
  sqlite3_bind_int64(picture_.get(), 3, rowFromSouth);
  if (!step(picture_.get())) return std::nullopt;
  std::string found = textOf(picture_.get(), 0);
  sqlite3_reset(picture_.get());
  return found;
}

MBTiles::Statement MBTiles::prepared(const char* sql) {
  turnsLeft_ = kMostTurns;
  sqlite3_stmt* statement = nullptr;
  const int result = sqlite3_prepare_v2(database_.get(), sql, -1, &statement, nullptr);
  if (result != SQLITE_OK) {
    throw errorOf("is no MBTiles file: " + ZRPrintableText(sqlite3_errmsg(database_.get()), 2 * ZRLongestExcerpt));
  }
  return Statement(statement);
}

/// @return whether there is a row; the statement is reset when there is none.
bool MBTiles::step(sqlite3_stmt* statement) {
  turnsLeft_ = kMostTurns;
  const int result = sqlite3_step(statement);
  if (result == SQLITE_ROW) return true;
  const std::string reason = ZRPrintableText(sqlite3_errmsg(database_.get()), 2 * ZRLongestExcerpt);
  sqlite3_reset(statement);
  if (result == SQLITE_DONE) return false;
  throw errorOf(result == SQLITE_INTERRUPT ? "takes too long to look things up in: it has no index"
                                           : "cannot be read: " + reason);
}

/// Empty when the file does not say.
std::string MBTiles::metadata(const char* name) {
  sqlite3_bind_text(metadata_.get(), 1, name, -1, SQLITE_STATIC);
  if (!step(metadata_.get())) return {};
  std::string value = textOf(metadata_.get(), 0);
  sqlite3_reset(metadata_.get());
  return value;
}

/// As the file says; where it does not, as its tiles are.
void MBTiles::readZooms() {
  const auto limit = [this](const char* name, const char* otherwise) {
    const std::string said = metadata(name);
    int zoom = 0;
    const auto read = std::from_chars(said.data(), said.data() + said.size(), zoom);
    if (read.ec != std::errc()) {
      const Statement among = prepared(otherwise);
      if (step(among.get())) zoom = sqlite3_column_int(among.get(), 0);
    }
    return std::clamp(zoom, 0, int{maxZoom});
  };
  zooms_.least = limit("minzoom", "SELECT min(zoom_level) FROM tiles");
  zooms_.most = std::max(limit("maxzoom", "SELECT max(zoom_level) FROM tiles"), zooms_.least);
}

TileSourceError MBTiles::errorOf(const std::string& fault) const {
  return TileSourceError(ZRPrintableText(name_, ZRLongestExcerpt) + " " + fault);
}

TileSource mbtilesSource(const std::string& path, const ZRPlatform& platform) {
  const auto session = std::make_shared<MBTilesSession>(path, platform.mainQueue);
  const std::string name = ZRPrintableText(std::filesystem::path(path).filename().string(), ZRLongestExcerpt);
  const std::string attribution = attributionText(session->tiles().attribution());
  return {.name = name,
          .addresses = TileTemplate("mbtiles:{z}/{x}/{-y}"),
          .zooms = session->tiles().zooms(),
          .attribution = attribution.empty() ? name : attribution,
          .headers = {},
          .session = session,
          .isAtHand = [](const NSURL&) { return true; },
          .forget = [](const NSURL&) {}};
}

}  // namespace demo
