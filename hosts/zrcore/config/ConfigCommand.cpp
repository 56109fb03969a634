// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSString_ZR.h>
#include <ZRCore/ZRConfigurationBase.h>
#include <ZRCore/ZRJSON.h>
#include <ZRCore/ZRLinuxPlatform.h>
#include <place/PlaceFile.h>
#include <trip/outputs/OutputError.h>
#include <zrcore/CommandLine.h>
#include <zrcore/Commands.h>
#include <zrcore/ExitCodes.h>
#include <zrcore/Messages.h>
#include <zrcore/StandardOutput.h>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>

#include "ConfigPlatform.h"

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

/// Of ZRConfigurationBase.
std::int64_t serviceNamed(const std::string&, const std::string& name) { return name == "production" ? 1 : 0; }

struct ConfigOptions : Options {
  using Options::Options;
  Option<std::string> key{*this, "--key", "The product key that the service knows", {rule::required()}};
  Option<std::int64_t> service{*this,
                               "--service NAME",
                               "The configuration host: production, integration [production]",
                               serviceNamed,
                               {rule::oneOf({"production", "integration"})},
                               1};
  Option<std::int64_t> type{*this, "--type N", "The variant of the configuration [1]", {rule::wholeNumber()}, 1};
  Option<std::optional<std::string>> base{*this, "--base URL", "Ask here instead of the configuration host"};
  Option<std::optional<std::string>> fallback{
      *this, "--fallback FILE", "The packaged file, for when the service gives nothing", {rule::offers(offer::kFile)}};
  Option<std::optional<double>> timeoutSeconds{
      *this, "--timeout S", "Seconds without a word from the service [30]", {rule::positive()}};
  Option<bool> json{*this, "--json", "Addresses, their source and the reason as a JSON object"};
};

struct Service {
  const char* name;
  const std::optional<std::string>& (ZRConfigurationBase::*address)() const;
};

constexpr std::array<Service, 5> kServices{{{"geofence", &ZRConfigurationBase::geofenceBaseURL},
                                            {"traffic", &ZRConfigurationBase::trafficBaseURL},
                                            {"geocode", &ZRConfigurationBase::geocodeBaseURL},
                                            {"directions", &ZRConfigurationBase::directionsBaseURL},
                                            {"guidance", &ZRConfigurationBase::guidanceBaseURL}}};

class ConfigRun {
 public:
  explicit ConfigRun(const ConfigOptions& options) : options_(options) {}

  int run();

 private:
  bool prepare();
  void fetch();
  std::string whatTheServiceDid() const;
  std::string why() const;
  const char* source() const;
  void showLines();
  void showDocument();

  const ConfigOptions& options_;
  Messages messages_;
  StandardOutput output_;
  const std::shared_ptr<ConfigFetch> fetch_ = std::make_shared<ConfigFetch>();
  std::shared_ptr<ZRConfigurationBase> configuration_;
  bool wasToldOfConfiguration_ = false;  // be it of none
};

bool ConfigRun::prepare() {
  if (!NSString_ZR::urlQueryParameterEscaped(*options_.key)) {
    messages_.about("--key", inQuotes(*options_.key) + " is not UTF-8, and so no key");
    return false;
  }
  if (const auto& base = *options_.base; base && !isBase(*base)) {
    messages_.about("--base", "is no address to put before a path: write it as http://HOST:PORT");
    return false;
  }
  ConfigRoute route{*options_.base, *options_.timeoutSeconds, std::nullopt};
  if (const auto& fallback = *options_.fallback) route.packagedFile = place::readFile(*fallback);
  if (!ZRPlatformInstall(platformForConfig(makeLinuxPlatform(), route, fetch_))) {
    throw std::logic_error("a platform is in use already");
  }
  return true;
}

void ConfigRun::fetch() {
  ZRConfigurationBase::setConfigurationService(*options_.service);
  ZRConfigurationBase::setConfigType(*options_.type);
  ZRConfigurationBase::setProductKey(*options_.key);
  ZRConfigurationBase::fetch([this](const auto& configuration) {
    configuration_ = configuration;
    wasToldOfConfiguration_ = true;
  });
  ZRRunLinuxLoopUntil([this] { return fetch_->isOver; });
}

std::string ConfigRun::whatTheServiceDid() const {
  if (fetch_->host.empty()) return "the key makes no address: escape its \"%\" as \"%25\"";
  if (fetch_->failure) return *fetch_->failure;
  const std::string answer = excerpt(fetch_->host) + " answered HTTP " + std::to_string(fetch_->statusCode);
  if (configuration_ && !fetch_->askedForPackagedFile) return answer;
  if (fetch_->askedForPackagedFile) return answer + " with what is " + fetch_->whyUnread;
  return answer + " without a configuration of type " + std::to_string(*options_.type) + ": check the key and the type";
}

std::string ConfigRun::why() const {
  std::string text = whatTheServiceDid();
  if (configuration_ || !fetch_->askedForPackagedFile) return text;
  if (text.ends_with('.')) text.pop_back();
  if (!*options_.fallback) return text.append("; --fallback FILE names a packaged file for such times");
  text.append("; ").append(shownName(**options_.fallback));
  if (!wasToldOfConfiguration_) return text.append(" is ").append(fetch_->whyFileUnread);
  return text.append(" has no configuration of type ").append(std::to_string(*options_.type));
}

const char* ConfigRun::source() const {
  if (!configuration_) return "none";
  return fetch_->askedForPackagedFile ? "packaged file" : "service";
}

void ConfigRun::showLines() {
  if (!configuration_) return;
  for (const Service& service : kServices) {
    const auto& address = ((*configuration_).*service.address)();
    output_.write(std::string(service.name) + "\t" + (address ? ZRPrintableText(*address) : "-") + "\n");
  }
}

void ConfigRun::showDocument() {
  ZROHMDictionary addresses;
  for (const Service& service : kServices) {
    const auto* const address = configuration_ ? &((*configuration_).*service.address)() : nullptr;
    addresses.set(service.name, address && *address ? ZROHMValue(**address) : ZROHMValue());
  }
  ZROHMDictionary document;
  document.set("source", source());
  document.set("why", why());
  document.set("host", fetch_->host);
  document.set("status", fetch_->statusCode ? ZROHMValue(fetch_->statusCode) : ZROHMValue());
  document.set("addresses", std::move(addresses));
  const auto written = ZRMakeJSONService()->JSONFromValue(document, ZRJSONLayout::pretty);
  if (const auto* const error = std::get_if<NSError>(&written)) {
    messages_.say(error->localizedDescription());  // an address that is not a text
    return;
  }
  output_.write(std::get<std::string>(written) + "\n");
}

int ConfigRun::run() {
  try {
    if (!prepare()) return kExitUsage;
    fetch();
    if (*options_.json) {
      showDocument();
    } else {
      showLines();
    }
    output_.flush();
  } catch (const place::FileError& error) {
    messages_.about(shownName(**options_.fallback), error.what());
    return kExitDataFault;
  } catch (const trip::OutputError& error) {
    messages_.say(error.what());
    return kExitServiceMissing;
  }
  if (!configuration_) {
    messages_.say("no configuration came: " + why());
    return kExitServiceMissing;
  }
  std::string origin = "from the service";
  if (fetch_->askedForPackagedFile) origin = "from the packaged file " + shownName(**options_.fallback);
  messages_.about(origin, why());
  int exitCode = kExitDone;
  for (const Service& service : kServices) {
    if (((*configuration_).*service.address)()) continue;
    messages_.about(service.name, "has no address in this configuration");
    exitCode = kExitDataFault;
  }
  return exitCode;
}

}  // namespace

void addConfigCommand(CommandLine& tool) {
  tool.add<ConfigOptions>("config", kConfigDescription, kConfigFooter,
                          [](const ConfigOptions& options) { return ConfigRun(options).run(); });
}
