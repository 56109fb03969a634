// SPDX-License-Identifier: Apache-2.0
// Any bytes as texts of pages and services that are shown, spoken or handed to other programs: nothing in them acts.
#include <ZRCore/ZRPrintableText.h>
#include <policy/PositioningSource.h>
#include <policy/SpokenText.h>
#include <policy/web/MailtoAddress.h>
#include <policy/web/WebNavigation.h>
#include <policy/web/WebText.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "FuzzLaws.h"

namespace {

bool isControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }
bool holdsControl(std::string_view text) { return std::any_of(text.begin(), text.end(), isControl); }

void requireHarmless(std::string_view input) {
  const std::string shown = policy::shownText(input, 40);
  require(!holdsControl(shown) && shown.size() <= 40 + 3, "what is shown is a short line");
  require(shown.find("\u202E") == std::string::npos, "and turns nothing round");
  require(!holdsControl(policy::shownHost(input)) || holdsControl(input), "a host has no controls of its own");

  const std::string printable = ZRPrintableText(input);
  require(!holdsControl(printable) && ZRPrintableText(printable) == printable, "what is printed is printed as it is");
  require(ZRPrintableText(input, ZRLongestExcerpt).size() <= 4 * ZRLongestExcerpt + 3, "an excerpt is short");

  const std::string spoken = policy::spokenText(std::string(input));
  const auto commands = [](char c) { return isControl(c) && c != '\t' && c != '\n'; };
  require(std::none_of(spoken.begin(), spoken.end(), commands), "a text gives an engine no commands");
  require(spoken.size() == input.size() && policy::spokenText(spoken) == spoken, "and is a text all the same");

  const std::size_t half = input.size() / 2;
  const std::string mail = policy::mailtoAddress(input.substr(0, half), input.substr(half));
  require(mail.starts_with("mailto:?subject=") && std::count(mail.begin(), mail.end(), '&') == 1 &&
              std::count(mail.begin(), mail.end(), '?') == 1 && mail.find_first_of(" \"'<>\n") == std::string::npos,
          "a mail has a subject and a body and nothing else");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  requireHarmless(input);
  static_cast<void>(policy::parsePositioningSource(std::string(input)));

  const policy::WebSchemes schemes{{"http", "https"}, {"mailto"}};
  using enum policy::WebNavigationDecision;
  for (const auto purpose : {policy::WebNavigation::Purpose::page, policy::WebNavigation::Purpose::window}) {
    const auto decision = policy::decide({input, purpose, false}, schemes);
    require(decision == load || decision == refuse, "a script alone opens nothing outside");
    const auto wish = policy::decide({input, purpose, true}, schemes);
    require(input.find(':') != input.npos || wish == refuse, "what has no scheme leads nowhere");
    require(!input.starts_with("file:") || wish == refuse, "nothing leads into this computer");
  }
  requireLinear(8 * size, [&] {
    std::string often;
    for (int i = 0; i < 8; ++i) often += input;
    requireHarmless(often);
  });
  return 0;
}
