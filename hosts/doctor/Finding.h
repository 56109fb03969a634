// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DOCTOR_FINDING_H
#define ZRCORE_HOSTS_DOCTOR_FINDING_H

#include <memory>
#include <string>
#include <vector>

namespace doctor {

enum class State {
  usable,
  missing,  ///< it is not there
  broken,   ///< it is there, and does not work
};

/// For people and programs: "usable", "missing", "broken".
const char* nameOf(State state);

/// What was found out about one thing that the framework can use.
struct Finding {
  std::string subject;  ///< what: "gpsd", "voices"
  State state = State::missing;
  std::string detail;  ///< what exactly is there, or why it cannot be used
  std::string remedy;  ///< the command that mends it; empty when usable
};

/// Looks at one thing, and changes nothing but what programs of ours have left behind. Takes a few seconds at most.
class Probe {
 public:
  Probe() = default;
  Probe(const Probe&) = delete;
  Probe& operator=(const Probe&) = delete;
  virtual ~Probe() = default;
  virtual Finding look() = 0;
};

/// All probes, in the order in which they are shown, looking at this machine.
std::vector<std::unique_ptr<Probe>> probesOfThisMachine();

}  // namespace doctor

#endif
