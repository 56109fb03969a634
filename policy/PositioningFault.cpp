// SPDX-License-Identifier: Apache-2.0
#include "PositioningFault.h"

#include <ZRCore/CLLocationManager.h>
#include <ZRCore/ZRPrintableText.h>

#include <array>
#include <utility>

#include "PositioningSource.h"

namespace policy {
namespace {

struct FaultText {
  const char* name;
  CLErrorCode code;
  const char* sentence;
};

/// In the order of PositioningFault.
constexpr std::array<FaultText, 7> kFaults{{
    {"badSource", CLErrorCode::locationUnknown,
     "cannot be used; give auto, gpsd[:HOST[:PORT]], gpsd:/PATH, geoclue, nmea:PATH or file:PATH"},
    {"noDaemon", CLErrorCode::locationUnknown, "does not answer; start it or plug it in, or choose another source"},
    {"noDevice", CLErrorCode::locationUnknown, "has no receiver; plug one in, or add it with gpsdctl"},
    {"lost", CLErrorCode::locationUnknown, "is gone; positions go on if it comes back"},
    {"noFix", CLErrorCode::locationUnknown, "gives no position; check the receiver's cable, or its view of the sky"},
    {"noAgent", CLErrorCode::locationUnknown,
     "does not say whether positions may be used: probably no agent is running that could ask; start the desktop's "
     "location agent, or allow this application in geoclue.conf"},
    {"denied", CLErrorCode::denied,
     "does not let this application know the position; allow it in the system's location settings"},
}};

const FaultText& textOf(PositioningFault fault) { return kFaults.at(static_cast<std::size_t>(fault)); }

}  // namespace

NSError errorOf(PositioningFault fault, std::string_view source, std::string_view detail) {
  const FaultText& text = textOf(fault);
  std::string sentence = ZRPrintableText(source, ZRLongestExcerpt) + " " + text.sentence;
  std::size_t mostOfDetail = ZRLongestExcerpt;
  if (source == kNameOfAutomatic && fault == PositioningFault::noDaemon) {
    mostOfDetail *= 2;  // of several sources
    sentence = "no source of positions answers; start gpsd or GeoClue, or name a receiver as nmea:PATH";
  }
  if (!detail.empty()) ((sentence += " (") += ZRPrintableText(detail, mostOfDetail)) += ")";
  return {kCLErrorDomain,
          static_cast<long>(text.code),
          {{NSLocalizedDescriptionKey, std::move(sentence)},
           {ZRPositioningFaultKey, text.name},
           {ZRPositioningSourceKey, std::string(source)}}};
}

bool FaultLatch::fails(PositioningFault fault) {
  if (fault_ == fault) return false;
  if (fault_ == PositioningFault::lost && fault == PositioningFault::noDaemon) return false;
  if (fault_ && fault == PositioningFault::noFix) return false;
  fault_ = fault;
  return true;
}

bool FaultLatch::works() { return std::exchange(fault_, std::nullopt).has_value(); }

}  // namespace policy
