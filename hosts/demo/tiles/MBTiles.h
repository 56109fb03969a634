// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TILES_MBTILES_H
#define ZRCORE_HOSTS_DEMO_TILES_MBTILES_H

#include <ZRCore/ZRPlatform.h>

#include <memory>
#include <optional>
#include <string>

#include "TileSource.h"

struct sqlite3;
struct sqlite3_stmt;

namespace demo {

/// Pictures of tiles in one file (MBTiles 1.3, an SQLite database), which is read and never written. Main thread.
class MBTiles {
 public:
  /// @throws TileSourceError  when the file cannot be read, is no such database, or its tiles are no pictures
  explicit MBTiles(const std::string& path);
  ~MBTiles();

  const TileZooms& zooms() const { return zooms_; }
  /// As the file says it, with its markup; may be empty.
  const std::string& attribution() const { return attribution_; }

  /// The picture's file; absent when there is none.
  /// @param rowFromSouth  as the file counts
  /// @throws TileSourceError  when the file is damaged, or takes too long
  std::optional<std::string> picture(int zoom, std::int64_t column, std::int64_t rowFromSouth);

 private:
  struct Close {
    void operator()(sqlite3* database) const;
    void operator()(sqlite3_stmt* statement) const;
  };
  using Statement = std::unique_ptr<sqlite3_stmt, Close>;

  Statement prepared(const char* sql);
  bool step(sqlite3_stmt* statement);
  std::string metadata(const char* name);
  void readZooms();
  TileSourceError errorOf(const std::string& fault) const;

  std::string name_;
  std::unique_ptr<sqlite3, Close> database_;
  Statement picture_, metadata_;
  int turnsLeft_ = 0;
  TileZooms zooms_;
  std::string attribution_;
};

/// The tiles of the file at `path`, by a session that answers image tasks from it.
/// @throws TileSourceError
TileSource mbtilesSource(const std::string& path, const ZRPlatform& platform);

}  // namespace demo

#endif
