// SPDX-License-Identifier: Apache-2.0
// Cities in every dialect, with and without their state. The display texts drop a city where a country and no state is
// known, so the dialects must not let it come to that.
#include <gmock/gmock.h>
#include <place/PlaceDocument.h>

#include <initializer_list>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using Entry = std::pair<const char*, std::string>;

/// An object of texts and of objects, without those that are empty.
std::string object(std::initializer_list<Entry> entries) {
  std::string text;
  for (const auto& [key, value] : entries) {
    if (value.empty()) continue;
    text += (text.empty() ? "\"" : ",\"") + std::string(key) + "\":";
    text += value.front() == '{' ? value : "\"" + value + "\"";
  }
  return "{" + text + "}";
}

struct Country {
  const char* code;
  const char* name;
  const char* cities;  // the ten largest, each with its state's ISO 3166-2 code
};

const Country kCountries[] = {
    {"at", "Österreich",
     "Wien=9,Graz=6,Linz=4,Salzburg=5,Innsbruck=7,Klagenfurt=2,Villach=2,Wels=4,St. Pölten=3,Dornbirn=8"},
    {"br", "Brasil",
     "São Paulo=SP,Rio de Janeiro=RJ,Brasília=DF,Fortaleza=CE,Salvador=BA,Belo Horizonte=MG,Manaus=AM,Curitiba=PR,"
     "Recife=PE,Goiânia=GO"},
    {"ca", "Canada",
     "Toronto=ON,Montréal=QC,Calgary=AB,Ottawa=ON,Edmonton=AB,Winnipeg=MB,Mississauga=ON,Vancouver=BC,Brampton=ON,"
     "Hamilton=ON"},
    {"de", "Deutschland",
     "Berlin=BE,Hamburg=HH,München=BY,Köln=NW,Frankfurt am Main=HE,Stuttgart=BW,Düsseldorf=NW,Leipzig=SN,Dortmund=NW,"
     "Essen=NW"},
    {"fr", "France",
     "Paris=75C,Marseille=PAC,Lyon=ARA,Toulouse=OCC,Nice=PAC,Nantes=PDL,Montpellier=OCC,Strasbourg=GES,Bordeaux=NAQ,"
     "Lille=HDF"},
    {"gb", "United Kingdom",
     "London=ENG,Birmingham=ENG,Leeds=ENG,Glasgow=SCT,Sheffield=ENG,Manchester=ENG,Bradford=ENG,Edinburgh=SCT,"
     "Liverpool=ENG,Bristol=ENG"},
    {"jp", "日本",
     "東京都=13,横浜市=14,大阪市=27,名古屋市=23,札幌市=01,福岡市=40,川崎市=14,神戸市=28,京都市=26,さいたま市=11"},
    {"us", "United States",
     "New York=NY,Los Angeles=CA,Chicago=IL,Houston=TX,Phoenix=AZ,Philadelphia=PA,San Antonio=TX,San "
     "Diego=CA,Dallas=TX,"
     "Jacksonville=FL"},
};

struct City {
  std::string name, code;
};

std::vector<City> citiesOf(const Country& country) {
  std::vector<City> cities;
  std::istringstream list(country.cities);
  for (City city; std::getline(list, city.name, '=') && std::getline(list, city.code, ',');) cities.push_back(city);
  return cities;
}

std::string isoCode(const Country& country, const City& city) {
  std::string code = std::string(country.code) + "-" + city.code;
  for (char& byte : code) byte = byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
  return code;
}

/// A list of that city as the services write it.
std::string answerOf(const Country& country, const City& city, const std::string& state) {
  const std::string name = city.name, code = country.code, land = country.name;
  const Entry point{"geometry", R"({"type":"Point","coordinates":[7.25,50.5]})"};
  const auto feature = [&](const std::string& properties) { return object({point, {"properties", properties}}) + ","; };
  const std::string parts = object({{"city", name}, {"state", state}, {"country", land}, {"country_code", code}});
  const std::string coded =
      object({{"city", name}, {"ISO3166-2-lvl4", isoCode(country, city)}, {"country", land}, {"country_code", code}});

  std::string list = object({{"addresstype", "city"}, {"name", name}, {"address", parts}, {"lat", "1"}, {"lon", "2"}});
  list += "," + object({{"address", coded}, {"display_name", name + ", " + land}, {"type", "administrative"}}) + ",";
  list += object({{"addresstype", "city"}, {"name", name}, {"osm_id", "1"}}) + ",";
  list += object({{"type", "city"}, {"display_name", name + ", " + land}}) + ",";
  list += feature(object({{"addresstype", "city"}, {"address", parts}, {"display_name", name + ", " + land}}));
  for (const char* const typeKey : {"type", "osm_value"}) {
    list += feature(
        object({{"name", name}, {typeKey, "city"}, {"state", state}, {"country", land}, {"countrycode", code}}));
  }
  list += feature(object({{"gid", "a:1"},
                          {"layer", "locality"},
                          {"name", name},
                          {"locality", name},
                          {"region", state},
                          {"country", land},
                          {"country_a", "XYZ"},
                          {"country_code", code}}));
  list += feature(object({{"layer", "locality"}, {"name", name}, {"region_a", state}, {"country", land}}));
  list += feature(object({{"geocoding", object({{"type", "city"},
                                                {"name", name},
                                                {"country", land},
                                                {"country_code", code},
                                                {"admin", object({{"level4", state}})}})}}));
  list +=
      object({{"AdminArea5", name}, {"AdminArea3", city.code}, {"AdminArea1", isoCode(country, city).substr(0, 2)}});
  return "[" + list + "]";
}

TEST(Cities, StandInTheFirstAndTheSingleLineInEveryDialect) {
  int cities = 0;
  for (const Country& country : kCountries) {
    for (const City& city : citiesOf(country)) {
      for (const char* const state : {"", "The State"}) {
        std::size_t shown = 0;
        const auto take = [&](const place::Result& result) {
          SCOPED_TRACE(std::to_string(result.number) + " " + state);
          const ZRGeoAddress& address = *result.place->geoAddress();
          EXPECT_THAT(address.primaryString(), testing::StartsWith(city.name));
          EXPECT_THAT(address.singleLineString(), testing::StartsWith(city.name));
          ++shown;
        };
        const auto account = place::readDocument(answerOf(country, city, state), std::nullopt, take);
        EXPECT_EQ(account.faultCount, 0U) << account.faults.front().text;
        EXPECT_EQ(shown, 11U);
        ++cities;
      }
    }
  }
  EXPECT_EQ(cities, 2 * 80);
}

}  // namespace
