// SPDX-License-Identifier: Apache-2.0
#include <doctor/Finding.h>
#include <zrcore/CommandLine.h>
#include <zrcore/Commands.h>
#include <zrcore/ExitCodes.h>
#include <zrcore/Messages.h>
#include <zrcore/StandardOutput.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>

namespace {

constexpr const char* kDoctorDescription =
    "Tells what of this machine the navigation kit can use, and how to mend what it cannot. Changes nothing, but that "
    "sound which a killed program has left lowered gets its volume back.";

constexpr const char* kDoctorFooter = R"(
Output:
  One line for each thing: usable, missing or broken; what it is; details. Below a thing that cannot be used stands the
  command that mends it. With --json an array of objects: subject, state, detail, remedy.

Exit codes:
  0  all of it can be used
  3  something is missing or broken; much can be done without, see which)";

std::string lineOf(const doctor::Finding& finding) {
  const auto padded = [](std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text;
  };
  std::string line = padded(nameOf(finding.state), 9) + padded(finding.subject, 11) +
                     ZRPrintableText(finding.detail, 2 * ZRLongestExcerpt) + '\n';
  if (!finding.remedy.empty()) line += std::string(20, ' ') + "$ " + finding.remedy + '\n';
  return line;
}

struct DoctorOptions : Options {
  using Options::Options;
  Option<bool> json{*this, "--json", "For programs"};
};

int runDoctor(const DoctorOptions& options) {
  const bool isJson = *options.json;
  StandardOutput output;
  nlohmann::ordered_json all = nlohmann::ordered_json::array();
  bool isHealthy = true;
  for (const auto& probe : doctor::probesOfThisMachine()) {
    const doctor::Finding finding = probe->look();
    isHealthy = isHealthy && finding.state == doctor::State::usable;
    if (isJson) {
      all.push_back({{"subject", finding.subject},
                     {"state", nameOf(finding.state)},
                     {"detail", finding.detail},
                     {"remedy", finding.remedy}});
    } else {
      output.write(lineOf(finding));
      output.flush();
    }
  }
  using nlohmann::detail::error_handler_t;
  if (isJson) output.write(all.dump(2, ' ', true, error_handler_t::replace) + '\n');
  output.flush();
  return isHealthy ? kExitDone : kExitServiceMissing;
}

}  // namespace

void addDoctorCommand(CommandLine& tool) {
  tool.add<DoctorOptions>("doctor", kDoctorDescription, kDoctorFooter, runDoctor);
}
