// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_GPSDREADER_H
#define ZRCORE_READERS_GPSDREADER_H

#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string>
#include <string_view>

#include "FixFields.h"
#include "Instants.h"

namespace readers {

/// Reads the lines of gpsd's JSON protocol, one object each: TPV gives fixes, VERSION, DEVICES, DEVICE and ATT are
/// news; others are passed over.
///
/// The daemon reports once per sentence of its receiver, so one instant comes several times: with gaps at first, and
/// with what it derives itself until the receiver's own has come.
class GpsdReader {
 public:
  void readLine(std::string_view text, const Reporter& reporter, Instants& instants);

 private:
  void readDevices(const nlohmann::json& report, Listener& listener);
  void readDevice(const nlohmann::json& report, Listener& listener);

  std::set<std::string> receivers_;  // paths of those that the daemon has
};

}  // namespace readers

#endif
