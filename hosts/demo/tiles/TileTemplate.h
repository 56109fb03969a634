// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TILES_TILETEMPLATE_H
#define ZRCORE_HOSTS_DEMO_TILES_TILETEMPLATE_H

#include <ZRCore/NSURL.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include "TileGrid.h"

namespace demo {

/// Why there are no tiles, in a sentence for people.
struct TileSourceError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The addresses of tiles, with {z}, {x} and {y} for zoom, column and row; {-y} stands for the row where rows are
/// counted from the south (TMS).
class TileTemplate {
 public:
  /// @throws TileSourceError  when a tile's place is not all in it, another {name} is, or it makes no address
  explicit TileTemplate(std::string_view text);
  /// The same, of a server of the web (http or https).
  static TileTemplate ofServer(std::string_view text);

  NSURL addressOf(const Tile& tile) const;
  /// The server's name, without port, user or password; empty for what is not of the web.
  std::string host() const;

 private:
  std::string expanded(const Tile& tile) const;

  std::string text_;
};

}  // namespace demo

#endif
