// SPDX-License-Identifier: Apache-2.0
// What gpsd says of receivers, and passes on from them.
#include "ToldFixes.h"

namespace readers::gpsdTraits {
namespace {

const std::string kGreeting = R"({"class":"VERSION","release":"3.22"})"
                              "\n"
                              R"({"class":"DEVICES","devices":[]})"
                              "\n";

/// A report of 11 September 2022.
std::string report(const std::string& time, const std::string& more, const std::string& latitude = "51.5") {
  return R"({"class":"TPV","mode":3,)" + (time.empty() ? "" : R"("time":"2022-09-11T)" + time + R"(Z",)") +
         "\"lat\":" + latitude + ",\"lon\":7.25" + more + "}\n";
}

const std::string kRmc = sentence("GPRMC,100000,A,5130.000,N,00715.000,E,2.0,90.0,110922,,,A");
const std::string kLaterGga = sentence("GPGGA,100001,5130.000,N,00715.000,E,1,05,1.5,100.0,M,47.0,M,,");

const ReadingRow rows[] = {
    {"WhatALaterReportOfTheInstantGivesReplacesTheEarlier",
     report("10:00:00", R"(,"speed":93.28,"track":10,"eph":9,"alt":5,"epv":1)") +
         report("10:00:00", R"(,"speed":1.028888888888889)") + report("10:00:00", R"(,"track":90,"eph":8,"altMSL":7)"),
     {"11 10:00:00 51.5 7.25 a7 h8 k2 c90"}},
    {"AnUndatedReportWaitsForItsInstantsDate",
     report("", R"(,"alt":1)") + report("10:00:00", R"(,"eph":8)") + report("", "", "51.6") +
         report("10:00:02", "", "51.7") + report("", R"(,"alt":9)", "51.7"),
     {"11 10:00:00 51.5 7.25 a1 h8", "- 51.6 7.25", "11 10:00:02 51.7 7.25 a9"}},
    {"ARawPipeIsNmea",
     kGreeting + kRmc + kLaterGga,
     {"11 10:00:00 51.5 7.25 k2 c90", "11 10:00:01 51.5 7.25 a100 d1.5 s5"}},
    {"BothKindsOfLineTellOneInstantOnce",
     kGreeting + kRmc + report("10:00:00.000", R"(,"eph":8,"speed":0)") + kRmc + kLaterGga +
         report("10:00:01.000", R"(,"alt":99)"),
     {"11 10:00:00 51.5 7.25 h8 k0 c90", "11 10:00:01 51.5 7.25 a99 d1.5 s5"}},
    {"BothKindsOfLineTellOfTheirOwnInstants",
     report("09:59:59", "") + kRmc + kLaterGga + report("10:00:02", ""),
     {"11 09:59:59 51.5 7.25", "11 10:00:00 51.5 7.25 k2 c90", "11 10:00:01 51.5 7.25 a100 d1.5 s5",
      "11 10:00:02 51.5 7.25"}},
    {"SentencesAfterManyOthersMayHoldReports",
     kRmc + report("10:00:02", ""),
     {"11 10:00:00 51.5 7.25 k2 c90", "11 10:00:02 51.5 7.25"}},
    {"EstimatesAreMarked",
     report("10:00:00", R"(,"status":5)") + report("10:00:01", R"(,"status":6)") + report("10:00:02", R"(,"status":8)"),
     {"11 10:00:00 51.5 7.25 ~", "11 10:00:01 51.5 7.25", "11 10:00:02 51.5 7.25 ~"}},
    {"DamageToWhatGivesNoFixIsNoLoss",
     report("10:00:00", "") + "{\"class\":\"SKY\",\"sat\nHTTP/1.1 400 Bad Request\n{\"class\":\"TPV\",\"mode\n",
     {"11 10:00:00 51.5 7.25"},
     1,
     2},
};

class GpsdTraits : public testing::TestWithParam<ReadingRow> {};

TEST_P(GpsdTraits, BytesInFixesOut) { expectReading(GetParam()); }

INSTANTIATE_TEST_SUITE_P(, GpsdTraits, testing::ValuesIn(rows), [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace readers::gpsdTraits
