// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_GPSDREADER_H
#define ZRCORE_READERS_GPSDREADER_H

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "LineReader.h"

namespace readers {

/// Reads the TPV reports of gpsd's JSON protocol, one object per line. VERSION, DEVICES, DEVICE and ATT are status;
/// other objects and raw sentences between them are passed over.
///
/// The daemon reports once per sentence of its receiver, so one fix comes several times, the first ones with gaps:
/// reports that follow each other with the same time and place make one fix, complete when another one or the end
/// follows.
class GpsdReader final : public LineReader {
 public:
  Held held() const override;
  void tellHeld(Listener& listener) override;

 protected:
  void readLine(std::string_view text, const Reporter& reporter) override;
  void readEnd(const Reporter& reporter) override;

 private:
  void readFix(const nlohmann::json& report, const Reporter& reporter);
  void readDevices(const nlohmann::json& report, Listener& listener);
  void readDevice(const nlohmann::json& report, Listener& listener);
  void emitCurrent(Listener& listener);

  std::optional<SourceFix> current_;
  bool isTold_ = false;              // current_ has been reported
  std::set<std::string> receivers_;  // paths of those that the daemon has
};

}  // namespace readers

#endif
