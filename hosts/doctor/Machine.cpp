// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRLinuxPlatform.h>

#include "Probes.h"

namespace doctor {

const char* nameOf(State state) {
  switch (state) {
    case State::usable:
      return "usable";
    case State::missing:
      return "missing";
    case State::broken:
      break;
  }
  return "broken";
}

std::vector<std::unique_ptr<Probe>> probesOfThisMachine() {
  policy::PositioningSource gpsd;
  gpsd.kind = policy::PositioningSource::Kind::gpsd;
  std::vector<std::unique_ptr<Probe>> probes;
  probes.push_back(std::make_unique<AdaptersProbe>(makeLinuxPlatform()));
  probes.push_back(std::make_unique<GpsdProbe>(gpsd));
  probes.push_back(std::make_unique<ReceiversProbe>());
  probes.push_back(std::make_unique<GeoClueProbe>());
  probes.push_back(std::make_unique<CertificatesProbe>(certificatesOfThisSystem()));
  probes.push_back(std::make_unique<VoicesProbe>());
  probes.push_back(std::make_unique<SoundProbe>(soundServerOfThisUser()));
  probes.push_back(std::make_unique<VolumesProbe>());
  probes.push_back(std::make_unique<HandlerProbe>("mailto", "mail", "thunderbird"));
  probes.push_back(std::make_unique<HandlerProbe>("https", "browser", "firefox-esr"));
  return probes;
}

}  // namespace doctor
