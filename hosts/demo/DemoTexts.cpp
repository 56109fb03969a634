// SPDX-License-Identifier: Apache-2.0
#include "DemoTexts.h"

#include <array>
#include <utility>

namespace demo {

namespace {

constexpr std::array<std::pair<std::string_view, const char*>, 4> kTexts{
    {{"Open in Safari", "Open in Browser"},
     {"Copy URL", "Copy Address"},
     {"Email URL", "Send by Email"},
     {"Your device is not configured to send email. You must go to Settings and add an email account.",
      "No mail program is set up. Choose one in the system's settings."}}};

class Bundle final : public ZRBundle {
 public:
  explicit Bundle(std::shared_ptr<ZRBundle> system) : system_(std::move(system)) {}

  bool hasInfoValueForKey(std::string_view key) const override { return system_->hasInfoValueForKey(key); }
  std::optional<std::string> infoStringForKey(std::string_view key) const override {
    return system_->infoStringForKey(key);
  }
  std::optional<std::string> bundleIdentifier() const override { return system_->bundleIdentifier(); }
  std::optional<std::string> localizedStringForKey(std::string_view key) const override {
    for (const auto& [english, words] : kTexts) {
      if (english == key) return words;
    }
    return system_->localizedStringForKey(key);
  }
  std::optional<std::string> frameworkResource(std::string_view name, std::string_view type) const override {
    return system_->frameworkResource(name, type);
  }

 private:
  std::shared_ptr<ZRBundle> system_;
};

}  // namespace

std::shared_ptr<ZRBundle> withDemoTexts(std::shared_ptr<ZRBundle> system) {
  return std::make_shared<Bundle>(std::move(system));
}

}  // namespace demo
