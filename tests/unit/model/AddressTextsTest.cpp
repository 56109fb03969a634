// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <vector>

#include "AddressValues.h"

namespace {

struct TextRow {
  const char* name;
  ZROHMDictionary address;
  const char* first;
  const char* second;
  const char* single;
};

class AddressTexts : public testing::TestWithParam<TextRow> {};

TEST_P(AddressTexts, AreBuiltByTheFirstRuleThatApplies) {
  const auto address = addressOf(GetParam().address);
  EXPECT_EQ(address->primaryString(), GetParam().first);
  EXPECT_EQ(address->secondaryString(), GetParam().second);
  EXPECT_EQ(address->singleLineString(), GetParam().single);
  EXPECT_EQ(address->stringForFormat(77), GetParam().single);
}

ZROHMDictionary with(ZROHMDictionary base, std::initializer_list<std::pair<const char*, const char*>> more) {
  for (const auto& [key, value] : more) base.set(key, value);
  return base;
}

const ZROHMDictionary kTown{{"city", "Springfield"}, {"state", "IL"}};
const ZROHMDictionary kHouse = with(kTown, {{"street", "1 Main St"}, {"zip", "62704-1234"}});

std::vector<TextRow> rows() {
  return {
      {"House", with(kHouse, {{"country", "US"}}), "1 Main St", "Springfield, IL 62704",
       "1 Main St, Springfield, IL 62704"},
      {"HouseAbroad", with(kHouse, {{"country", "DE"}}), "1 Main St", "Springfield, IL 62704, DE",
       "1 Main St, Springfield, IL 62704, DE"},
      {"HouseWithoutCountry", kHouse, "1 Main St", "Springfield, IL 62704", "1 Main St, Springfield, IL 62704"},
      {"OnlyTheTwoCapitalCodesAreHome", with(kHouse, {{"country", "us"}}), "1 Main St", "Springfield, IL 62704, us",
       "1 Main St, Springfield, IL 62704, us"},
      {"StreetWithoutCity", {{"street", "1 Main St"}, {"state", "IL"}}, "1 Main St", ", IL", "1 Main St, , IL"},
      {"StreetWithoutZipAbroadKeepsTheInnerBlank", with(kTown, {{"street", "1 Main St"}, {"country", "FR"}}),
       "1 Main St", "Springfield, IL , FR", "1 Main St, Springfield, IL , FR"},
      {"StreetWithoutState",
       {{"street", "1 Main St"}, {"city", "Ulm"}, {"zip", "9"}},
       "1 Main St",
       "Ulm,  9",
       "1 Main St, Ulm,  9"},
      {"StreetAlone", {{"street", "1 Main St"}, {"city", "Ulm"}}, "1 Main St", "", "1 Main St"},
      {"StreetAloneAbroad", {{"street", "1 Main St"}, {"country", "DE"}}, "1 Main St", "DE", "1 Main St, DE"},
      {"TownWithZip", with(kTown, {{"zip", "62704"}, {"neighborhood", "Old Town"}}), "Springfield, IL", "62704",
       "Springfield, IL 62704"},
      {"Neighborhood", with(kTown, {{"neighborhood", "Old Town"}, {"county", "X"}}), "Old Town", "Springfield, IL",
       "Old Town, Springfield, IL"},
      {"County", with(kTown, {{"county", "Springfield"}, {"country", "US"}}), "Springfield, IL", "Springfield County",
       "Springfield, IL"},
      {"CountyNamedSo", with(kTown, {{"county", "Springfield COUNTY"}, {"country", "US"}}), "Springfield, IL",
       "Springfield COUNTY", "Springfield, IL"},
      {"CountyThatIsOnlyTheWord", with(kTown, {{"county", "County"}, {"country", "US"}}), "Springfield, IL",
       "County County", "Springfield, IL"},
      {"CountyInCanada", with(kTown, {{"county", "York"}, {"country", "CA"}}), "Springfield, IL", "York",
       "Springfield, IL"},
      {"CountyAbroad", with(kTown, {{"county", "York"}, {"country", "GB"}}), "Springfield, IL", "York, GB",
       "Springfield, IL, GB"},
      {"TownAlone", with(kTown, {{"county", ""}, {"country", "US"}}), "Springfield, IL", "", "Springfield, IL"},
      {"StateWithZip", {{"state", "IL"}, {"zip", "62704"}}, "IL", "", "IL"},
      {"StateAbroad", {{"state", "Bayern"}, {"country", "DE"}}, "Bayern", "DE", "Bayern, DE"},
      {"CountryHidesTheCity", {{"city", "Paris"}, {"zip", "75001"}, {"country", "FR"}}, "FR", "", "FR"},
      {"CityAlone", {{"city", "Paris"}, {"zip", "75001"}}, "Paris", "", "Paris"},
      {"ZipAlone", {{"zip", "62704-1234"}, {"county", "X"}, {"neighborhood", "Y"}}, "62704", "", "62704"},
      {"Nothing", {}, "", "", ""},
      {"StateThatReadsAsTheCountry", {{"state", "DE"}, {"country", "DE"}}, "DE", "", "DE"},
      {"ZipOfElevenStaysWhole", {{"zip", "62704-12345"}}, "62704-12345", "", "62704-12345"},
      {"ZipSplitElsewhereStaysWhole", {{"zip", "6270-41234"}}, "6270-41234", "", "6270-41234"},
      {"ZipInThreePiecesStaysWhole", {{"zip", "12345-67-9"}}, "12345-67-9", "", "12345-67-9"},
      {"ZipIsCountedInCharacters", {{"zip", "éüößñ-1234"}}, "éüößñ", "", "éüößñ"},
      {"ZipIsNotCountedInBytes", {{"zip", "éü1-123é"}}, "éü1-123é", "", "éü1-123é"},
      {"EndsAreTrimmedAfterTheCountry",
       with(kTown, {{"neighborhood", "\xC2\xA0 Old\n"}, {"country", "FR\xE2\x80\x8B"}}), "Old", "Springfield, IL, FR",
       "Old\n, Springfield, IL, FR"},
  };
}

INSTANTIATE_TEST_SUITE_P(, AddressTexts, testing::ValuesIn(rows()),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
