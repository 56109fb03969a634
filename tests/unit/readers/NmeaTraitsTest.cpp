// SPDX-License-Identifier: Apache-2.0
// What receivers do that the standard does not say, or says otherwise.
#include "ToldFixes.h"

namespace readers::nmeaTraits {
namespace {

const std::string kHere = "5130.000,N,00715.000,E";   // 51.5 7.25
const std::string kThere = "5130.600,N,00715.000,E";  // 51.51 7.25

/// An RMC of 11 September 2022.
std::string rmc(const std::string& time, const std::string& place = kHere, const std::string& end = ",A") {
  return "GPRMC," + time + ",A," + place + ",2.0,90.0,110922,," + end;
}

std::string gga(const std::string& time, const std::string& place = kHere, const std::string& quality = "1") {
  return "GPGGA," + time + "," + place + "," + quality + ",05,1.5,100.0,M,47.0,M,,";
}

std::string gns(const std::string& time, const std::string& modes, const std::string& place = kHere) {
  return "GNGNS," + time + "," + place + "," + modes + ",09,1.1,90.0,47.0,,,V";
}

std::string gll(const std::string& time, const std::string& end) { return "GPGLL," + kHere + "," + time + "," + end; }

const std::string kVtg = "GPVTG,80.0,T,,M,4.0,N,7.4,K,A";

/// A binary frame as u-blox receivers send it.
std::string frame(const std::string& payload) {
  std::string bytes = {'\x01', '\x07', static_cast<char>(payload.size() & 0xFF),
                       static_cast<char>(payload.size() >> 8)};
  bytes += payload;
  unsigned a = 0, b = 0;
  for (const char c : bytes) b += a += static_cast<unsigned char>(c);
  return "\xB5\x62" + bytes + static_cast<char>(a) + static_cast<char>(b);
}

std::string utf16(const std::string& ascii, bool isBigEnd) {
  std::string wide = isBigEnd ? "\xFE\xFF" : "\xFF\xFE";
  for (const char c : ascii) (wide += isBigEnd ? '\0' : c) += isBigEnd ? c : '\0';
  return wide;
}

std::string joined(std::string text, const std::string& from, const std::string& to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

const std::string kRmcFix = "11 10:00:00 51.5 7.25 k2 c90";
const std::string kGgaFix = "- 51.5 7.25 a100 d1.5 s5";
const std::string kBothFix = "11 10:00:00 51.5 7.25 a100 d1.5 k2 c90 s5";
const std::string kBoth = sentence(rmc("100000")) + sentence(gga("100000"));

const ReadingRow rows[] = {
    // What stands before a sentence.
    {"BinaryFramesAreSteppedOver",
     frame("\n$GPRMC,\r\n") + sentence(rmc("100000")) + frame(std::string(700, '\n')) + sentence(gga("100000")) +
         frame(""),
     {kBothFix}},
    {"ABrokenFrameHoldsBackNothing",
     "\xB5\x62\x01\x07\xFF\x1F" + sentence(rmc("100000")) + sentence(gga("100000")),
     {kBothFix},
     0,
     1},
    {"BytesBeforeASentence",
     std::string("\0\xFF$\x80", 4) + sentence(rmc("100000")) + "\xD3\x13!" + sentence(gga("100000")),
     {kBothFix},
     0,
     2},
    {"TwoDollars", "$" + sentence(rmc("100000")) + "$" + sentence(gga("100000")), {kBothFix}},
    {"TagBlocks",
     "\\s:r1,c:1662890400*7A\\" + sentence(rmc("100000")) + "\\g:1-2-7*00\\" + sentence(gga("100000")),
     {kBothFix}},
    {"ALoggersTimes",
     "2022-09-11 10:00:00 " + sealed(rmc("100000")) + ",1662890400123\nNMEA," + sealed(gga("100000")) + ",1\n",
     {kBothFix},
     0,
     1},
    {"TwoSentencesInALine", sealed(rmc("100000")) + sealed(gga("100000")), {kBothFix}},
    {"LinesThatEndInReturnAlone", joined(kBoth, "\r\n", "\r"), {kBothFix}},
    {"BlanksRoundFields", sentence("GPRMC, 100000 ,A, 5130.000,N ,00715.000 , E, 2.0,90.0 , 110922,,,A"), {kRmcFix}},
    {"Utf16LittleEnd", utf16(kBoth, false), {kBothFix}},
    {"Utf16BigEnd", utf16("# \n" + kBoth, true), {kBothFix}},

    // Time and date.
    {"AZdaDatesWhatHasNone",
     sentence(gga("095959")) + sentence("GPZDA,100000,11,09,2022,00,00") + sentence(gga("100000")) +
         sentence(gns("100001", "AN")) + sentence(gll("100002", "A,A")),
     {"11 09:59:59 51.5 7.25 a100 d1.5 s5", "11 10:00:00 51.5 7.25 a100 d1.5 s5", "11 10:00:01 51.5 7.25 a90 d1.1 s9",
      "11 10:00:02 51.5 7.25"}},
    {"AZdaAtTheEndOfItsInstant",
     sentence(gga("100000")) + sentence("GNZDA,100000.00,11,09,2022,,"),
     {"11 10:00:00 51.5 7.25 a100 d1.5 s5"}},
    {"AZdaOfAnotherTimeDividesNothing",
     sentence(gga("100000.96")) + sentence("GPZDA,100001.00,11,09,2022,,") + sentence(rmc("100000.96")),
     {"11 10:00:00 51.5 7.25 a100 d1.5 k2 c90 s5"}},
    {"ADatelessSentenceWaitsForTheDateOfItsInstant", sentence(gga("100000")) + sentence(rmc("100000")), {kBothFix}},

    // GNS.
    {"GnsAlone", sentence(gns("100000", "AAN")), {"- 51.5 7.25 a90 d1.1 s9"}},
    {"GnsIsAFixUnlessAllAreNone",
     sentence(gns("100000", "NN")) + sentence(gns("100001", "ND")) + sentence(gns("100002", "P")) +
         sentence(gns("100003", "M")) + sentence(gns("100004", "EN")) + sentence(gns("100005", "AE")),
     {"- 51.5 7.25 a90 d1.1 s9", "- 51.5 7.25 a90 d1.1 s9", "- 51.5 7.25 a90 d1.1 s9 ~", "- 51.5 7.25 a90 d1.1 s9"}},

    // Whose the speed is.
    {"VtgAfterASentenceThatGivesNoFix",
     sentence(gga("100000")) + sentence("GPGST,100001,,,,,1.0,1.0,1.0") + sentence(kVtg) + sentence(gga("100001")),
     {kGgaFix, "- 51.5 7.25 a100 d1.5 k4 c80 s5"}},
    {"VtgAfterASentenceThatWasLost",
     sentence(gga("100000")) + "$GPGGA,100001,51*00\r\n" + sentence(kVtg),
     {kGgaFix},
     1},
    {"VtgAfterADamagedSentenceThatGivesNoFix",
     sentence(gga("100000")) + "$GPGSV,1,1*00\r\n" + sentence(kVtg),
     {"- 51.5 7.25 a100 d1.5 k4 c80 s5"},
     0,
     1},
    {"VtgAfterOneThatTellsNoFix",
     sentence(gga("100000")) + sentence("GNGNS,100001,,,,,NN,,,,,,") + sentence(kVtg),
     {kGgaFix}},
    {"KilometersAlone",
     sentence(gga("100000")) + sentence("GPVTG,,T,,M,,N,3.704,K,A"),
     {"- 51.5 7.25 a100 d1.5 k2 s5"}},
    {"AVtgThatIsNotValid", sentence(gga("100000")) + sentence("GPVTG,80.0,T,,M,4.0,N,7.4,K,N"), {kGgaFix}},

    // What the receiver calls no fix, and who may say so.
    {"GllThatIsNone",
     sentence(gll("100000", "N,A")) + sentence(gll("100001", "V,A")) + sentence(gll("100002", "A,N")) +
         sentence(gll("100003", "A")),
     {"- 51.5 7.25"}},
    {"RmcThatIsNone", sentence(rmc("100000", kHere, ",N")) + sentence(rmc("100001", kHere, ",M")), {}},
    {"GgaKnowsBetterThanRmc",
     sentence(rmc("100000", kHere, ",N")) + sentence(gga("100000")) + sentence(gga("100001", kHere, "0")) +
         sentence(rmc("100001")),
     {"11 10:00:00 51.5 7.25 a100 d1.5 s5"}},
    {"OneConstellationVoidsNothingThatAnotherSays",
     sentence(joined(rmc("100000"), "GP", "GN")) + sentence(gga("100000")) +
         sentence(joined(gga("100000", kHere, "0"), "GP", "GL")) + sentence("GLGGA,,,,,,0,,,,,,,,"),
     {kBothFix}},
    {"TheCombinedVoidsAll",
     sentence(gga("100000")) + sentence(joined(gga("100000", kHere, "0"), "GP", "GN")) +
         sentence(joined(rmc("100000"), "GP", "GN")),
     {}},
    {"OneConstellationAlone",
     sentence(joined(rmc("100000"), "GP", "GN")) + sentence(gga("100000", kHere, "0")),
     {kRmcFix}},

    // Estimates.
    {"EstimatesAreMarked",
     sentence(gga("100000", kHere, "6")) + sentence(gga("100001", kHere, "8")) + sentence(rmc("100002", kHere, ",E")) +
         sentence(rmc("100003", kHere, ",S")) + sentence(gll("100004", "A,E")),
     {"- 51.5 7.25 a100 d1.5 s5 ~", "- 51.5 7.25 a100 d1.5 s5 ~", "11 10:00:02 51.5 7.25 k2 c90 ~",
      "11 10:00:03 51.5 7.25 k2 c90 ~", "11 10:00:04 51.5 7.25 ~"}},
    {"WhatWasTypedInIsNone", sentence(gga("100000", kHere, "7")), {}},

    // Sentences that disagree about the place.
    {"GgasPlaceAfterRmcs", sentence(rmc("100000", kThere)) + sentence(gga("100000")), {kBothFix}},
    {"GgasPlaceBeforeRmcs", sentence(gga("100000")) + sentence(rmc("100000", kThere)), {kBothFix}},
    {"TheCombinedPlace",
     sentence(joined(gga("100000", kThere), "GP", "GL")) + sentence(joined(gga("100000"), "GP", "GN")) +
         sentence(rmc("100000", kThere)),
     {kBothFix}},

    // What stays as it is, and what is no loss.
    {"TwoSatellitesAndNoChecksum",
     "$GPGGA,100000," + kHere + ",1,02,1.5,100.0,M,47.0,M,,\n" + sealed(rmc("100000")),
     {"11 10:00:00 51.5 7.25 a100 d1.5 k2 c90 s2"},
     0,
     1},
    {"BannersAndWhatIsNotRead",
     kBoth + "u-blox AG - www.u-blox.com\r\n$GPTXT,01,01,02,x*00\r\n$PSRF150,\x01\n$GPGSA,A,3*00\n" +
         sentence(joined(gga("100001"), "1.5", "good")),
     {kBothFix, "11 10:00:01 51.5 7.25 a100 s5"},
     0,
     5},
    {"AnInputThatBeginsInTheMiddle", "," + kHere + ",1,05*77\r\n" + kBoth, {kBothFix}, 0, 1},
};

class NmeaTraits : public testing::TestWithParam<ReadingRow> {};

TEST_P(NmeaTraits, BytesInFixesOut) { expectReading(GetParam()); }

INSTANTIATE_TEST_SUITE_P(, NmeaTraits, testing::ValuesIn(rows), [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace readers::nmeaTraits
