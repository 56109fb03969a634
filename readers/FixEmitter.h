// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_FIXEMITTER_H
#define ZRCORE_READERS_FIXEMITTER_H

#include <optional>

#include "FixReader.h"

namespace readers {

/// The door through which every fix leaves its reader: a place that is not on the Earth is dropped with a fault, and a
/// time before the previous fix's is passed on with a warning.
class FixEmitter {
 public:
  void emit(const SourceFix& fix, Listener& listener);

 private:
  std::optional<double> lastSecondsSince1970_;
};

}  // namespace readers

#endif
