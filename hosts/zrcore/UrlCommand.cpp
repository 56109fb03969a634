// SPDX-License-Identifier: Apache-2.0
#include "UrlCommand.h"

#include <ZRCore/NSURL_ZR.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "ExitCodes.h"
#include "Messages.h"
#include "StandardOutput.h"

namespace {

constexpr const char* kUrlDescription =
    "Makes the address of a request from a base address, a path and parameters, as the kit does.";

constexpr const char* kUrlFooter = R"(
Keys and values are escaped; the base and the path are taken as they are. The kit gives each key one value.

Exit codes:
  0  done
  1  what came of it is no address
  2  the command line must be changed
  3  the result could not be written

Example:
  zrcore url https://maps.example/v1 search 'q=Lantern Row' limit=5)";

struct UrlArguments {
  std::string base, path;
  std::vector<std::string> parameters;
};

int runUrl(const UrlArguments& arguments) {
  ZROHMDictionary parameters;
  for (const std::string& parameter : arguments.parameters) {
    const auto equals = parameter.find('=');
    const std::string key = parameter.substr(0, equals);
    const bool isRepeated = parameters.find(key) != nullptr;
    if (equals == std::string::npos || isRepeated) {
      const char* const fault =
          isRepeated ? "has a key that was given before: give each once" : "is no parameter: write KEY=VALUE";
      std::fprintf(stderr, "zrcore: %s: %s\n", harmless(parameter).c_str(), fault);
      return kExitUsage;
    }
    parameters.set(key, parameter.substr(equals + 1));
  }
  const auto url = NSURL_ZR::urlWithBaseUrlStringPathParameters(arguments.base, arguments.path, parameters);
  if (!url) {
    std::fprintf(stderr,
                 "zrcore: no address comes of this: the base and the path may not hold blanks, other letters than "
                 "English ones or a \"%%\" without two digits, and the parameters must be UTF-8\n");
    return kExitDataFault;
  }
  StandardOutput output;
  output.write(url->absoluteString() + "\n");
  output.flush();
  return kExitDone;
}

}  // namespace

void addUrlCommand(CommandLine& tool) {
  const auto arguments = std::make_shared<UrlArguments>();
  Command command = tool.add("url", kUrlDescription, kUrlFooter, [arguments] { return runUrl(*arguments); });
  command.option("BASE", arguments->base, "The service's base address").required();
  command.option("PATH", arguments->path, "The path behind it; may be empty").required();
  command.option("KEY=VALUE", arguments->parameters, "Parameters, in this order");
}
