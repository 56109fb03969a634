#ifndef ZRCORE_PLATFORM_READERS_GPSDREADER_H
#define ZRCORE_PLATFORM_READERS_GPSDREADER_H

#include <optional>
#include <string_view>

#include "LineReader.h"

namespace readers {

/// Reads the TPV reports of gpsd's JSON protocol, one object per line; other objects and raw sentences between them are
/// passed over.
///
/// The daemon reports once per sentence of its receiver, so one fix comes several times, the first ones with gaps:
/// reports that follow each other with the same time and place make one fix, complete when another one or the end
/// follows.
class GpsdReader final : public LineReader {
 protected:
  void readLine(std::string_view text, const Reporter& reporter) override;
  void readEnd(const Reporter& reporter) override;

 private:
  void emitCurrent(Listener& listener);

  std::optional<SourceFix> current_;
};

}  // namespace readers

#endif
