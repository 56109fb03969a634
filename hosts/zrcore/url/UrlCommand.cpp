// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSString_ZR.h>
#include <ZRCore/NSURL_ZR.h>
#include <zrcore/CommandLine.h>
#include <zrcore/Commands.h>
#include <zrcore/ExitCodes.h>
#include <zrcore/Messages.h>
#include <zrcore/StandardOutput.h>

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

struct UrlOptions : Options {
  using Options::Options;
  Option<std::string> base{*this, "BASE", "The service's base address", {rule::required()}};
  Option<std::string> path{*this, "PATH", "The path behind it; may be empty", {rule::required()}};
  Option<std::vector<std::string>> parameters{*this, "KEY=VALUE", "Parameters, in this order"};
};

constexpr const char* kHoldsOddity =
    "holds a blank, a letter that is no English one, or a \"%\" without two digits; write those as \"%\" and two "
    "digits";

/// Which of the words makes no address, and why.
std::string faultOf(const UrlOptions& options) {
  if (!NSURL::URLWithString(*options.base)) return "the base " + inQuotes(*options.base) + " " + kHoldsOddity;
  if (!NSURL::URLWithString(*options.path)) return "the path " + inQuotes(*options.path) + " " + kHoldsOddity;
  for (const std::string& parameter : *options.parameters) {
    const auto escaped = NSString_ZR::urlQueryParameterEscaped(parameter);
    if (!escaped) return inQuotes(parameter) + " is not UTF-8";
    if (!NSURL::URLWithString(*escaped)) {
      return inQuotes(parameter) + " has a \"%\" without two digits; write it as \"%25\"";
    }
  }
  return "the base " + inQuotes(*options.base) + " and the path " + inQuotes(*options.path) +
         " make no address together";
}

int tell(const std::string& fault, int exitCode) {
  Messages().say(fault);
  return exitCode;
}

int runUrl(const UrlOptions& options) {
  ZROHMDictionary parameters;
  for (const std::string& parameter : *options.parameters) {
    const auto equals = parameter.find('=');
    const std::string key = parameter.substr(0, equals);
    if (equals == std::string::npos) return tell(inQuotes(parameter) + " is no parameter: write KEY=VALUE", kExitUsage);
    if (parameters.find(key) != nullptr) {
      return tell(inQuotes(parameter) + " has a key that was given before: give each once", kExitUsage);
    }
    parameters.set(key, parameter.substr(equals + 1));
  }
  const auto url = NSURL_ZR::urlWithBaseUrlStringPathParameters(*options.base, *options.path, parameters);
  if (!url) return tell(faultOf(options), kExitDataFault);
  StandardOutput output;
  output.write(url->absoluteString() + "\n");
  output.flush();
  return kExitDone;
}

}  // namespace

void addUrlCommand(CommandLine& tool) { tool.add<UrlOptions>("url", kUrlDescription, kUrlFooter, runUrl); }
