// SPDX-License-Identifier: Apache-2.0
#include "ConfigCommand.h"

#include <zrcore/CommandLine.h>

#include <memory>

#include "ConfigRun.h"

namespace {

constexpr const char* kConfigDescription =
    "Fetches the configuration: the base addresses of the kit's five web services.";

constexpr const char* kConfigFooter = R"(
Output:
  One line per service: its name and its address, "-" for what there is not. The standard error stream says whether the
  addresses came from the service or from the packaged file, and why.

Exit codes:
  0  done, be it from the service or from the packaged file
  1  some of the services have no address, or FILE cannot be read
  2  the command line must be changed
  3  no configuration came

Examples:
  zrcore config --key K
  zrcore config --key K --service integration --fallback tile_config.json --timeout 5
  zrcore config --key K --base http://127.0.0.1:8080 --json)";

}  // namespace

void addConfigCommand(CommandLine& tool) {
  const auto arguments = std::make_shared<ConfigArguments>();
  Command command =
      tool.add("config", kConfigDescription, kConfigFooter, [arguments] { return runConfig(*arguments); });

  command.option("--key", arguments->key, "The product key that the service knows").required();
  command
      .option(
          "--service", [arguments](const std::string& name) { arguments->service = name == "production" ? 1 : 0; },
          "The configuration host: production, integration [production]")
      .valueName("NAME")
      .oneOf({"production", "integration"});
  command.option("--type", arguments->type, "The variant of the configuration [1]").valueName("N").wholeNumber();
  command.option("--base", arguments->base, "Ask here instead of the configuration host").valueName("URL");
  command.option("--fallback", arguments->fallback, "The packaged file, for when the service gives nothing")
      .valueName("FILE");
  command.option("--timeout", arguments->timeoutSeconds, "Seconds without a word from the service [30]")
      .valueName("S")
      .positive();
  command.flag("--json", arguments->json, "Addresses, their source and the reason as a JSON object");
}
