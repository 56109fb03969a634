// SPDX-License-Identifier: Apache-2.0
#include "UrlCommand.h"

#include <ZRCore/NSString_ZR.h>
#include <ZRCore/NSURL_ZR.h>
#include <zrcore/CommandLine.h>
#include <zrcore/ExitCodes.h>
#include <zrcore/Messages.h>
#include <zrcore/StandardOutput.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

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

constexpr const char* kHoldsOddity =
    "holds a blank, a letter that is no English one, or a \"%\" without two digits; write those as \"%\" and two "
    "digits";

/// Which of the words makes no address, and why.
std::string faultOf(const UrlArguments& arguments) {
  if (!NSURL::URLWithString(arguments.base)) return "the base " + inQuotes(arguments.base) + " " + kHoldsOddity;
  if (!NSURL::URLWithString(arguments.path)) return "the path " + inQuotes(arguments.path) + " " + kHoldsOddity;
  for (const std::string& parameter : arguments.parameters) {
    const auto escaped = NSString_ZR::urlQueryParameterEscaped(parameter);
    if (!escaped) return inQuotes(parameter) + " is not UTF-8";
    if (!NSURL::URLWithString(*escaped)) {
      return inQuotes(parameter) + " has a \"%\" without two digits; write it as \"%25\"";
    }
  }
  return "the base " + inQuotes(arguments.base) + " and the path " + inQuotes(arguments.path) +
         " make no address together";
}

int tell(const std::string& fault, int exitCode) {
  std::fprintf(stderr, "zrcore: %s\n", fault.c_str());
  return exitCode;
}

int runUrl(const UrlArguments& arguments) {
  ZROHMDictionary parameters;
  for (const std::string& parameter : arguments.parameters) {
    const auto equals = parameter.find('=');
    const std::string key = parameter.substr(0, equals);
    if (equals == std::string::npos) return tell(inQuotes(parameter) + " is no parameter: write KEY=VALUE", kExitUsage);
    if (parameters.find(key) != nullptr) {
      return tell(inQuotes(parameter) + " has a key that was given before: give each once", kExitUsage);
    }
    parameters.set(key, parameter.substr(equals + 1));
  }
  const auto url = NSURL_ZR::urlWithBaseUrlStringPathParameters(arguments.base, arguments.path, parameters);
  if (!url) return tell(faultOf(arguments), kExitDataFault);
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
