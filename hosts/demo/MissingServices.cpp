// SPDX-License-Identifier: Apache-2.0
#include "MissingServices.h"

#include <vector>

namespace demo {

std::string missingServicesText(const Services& services) {
  std::vector<std::string> missing;
  if (!services.hasReceiver) missing.push_back("no receiver");
  if (!services.hasSound) missing.push_back("no sound");
  if (!services.hasSpeech) missing.push_back("no speech");
  if (!services.hasNetwork) missing.push_back("no network");
  if (missing.empty()) return {};
  std::string text;
  for (std::size_t i = 0; i < missing.size(); ++i) {
    if (i > 0) text += i + 1 == missing.size() ? " and " : ", ";
    text += missing[i];
  }
  text[0] = 'N';
  return text + " here";
}

}  // namespace demo
