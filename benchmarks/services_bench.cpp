// SPDX-License-Identifier: Apache-2.0
// Escaping, addresses and dates, beside what curl, GLib and the C library offer for the same; through the shared
// library as a host calls it.
#include <ZRCore/ZRCore.h>
#include <benchmark/benchmark.h>
#include <curl/curl.h>
#include <glib.h>
#include <time.h>

#include <string>

namespace {

/// A place as people write it: 48 bytes, two of them of one character beyond ASCII.
const std::string kAddress = "Hauptstraße 12, 10115 Berlin (Mitte), Germany,DE";

std::string textOf(std::size_t bytes) {
  std::string text;
  while (text.size() + kAddress.size() <= bytes) text += kAddress;
  text.resize(bytes, 'x');
  return text;
}

const std::string& input(const benchmark::State& state) {
  static const std::string page = textOf(4096);
  return state.range(0) == 48 ? kAddress : page;
}

void setBytes(benchmark::State& state) { state.SetBytesProcessed(state.iterations() * state.range(0)); }

void BM_Escape(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(NSString_ZR::urlQueryParameterEscaped(input(state)));
  setBytes(state);
}
BENCHMARK(BM_Escape)->Arg(48)->Arg(4096);

void BM_EscapeByCurl(benchmark::State& state) {
  CURL* const curl = curl_easy_init();
  for (auto _ : state) {
    char* const escaped = curl_easy_escape(curl, input(state).data(), static_cast<int>(input(state).size()));
    benchmark::DoNotOptimize(escaped);
    curl_free(escaped);
  }
  curl_easy_cleanup(curl);
  setBytes(state);
}
BENCHMARK(BM_EscapeByCurl)->Arg(48)->Arg(4096);

void BM_EscapeByGLib(benchmark::State& state) {
  for (auto _ : state) {
    char* const escaped = g_uri_escape_string(input(state).c_str(), "%", FALSE);
    benchmark::DoNotOptimize(escaped);
    g_free(escaped);
  }
  setBytes(state);
}
BENCHMARK(BM_EscapeByGLib)->Arg(48)->Arg(4096);

void BM_URLWithFiveParameters(benchmark::State& state) {
  const ZROHMDictionary parameters = {
      {"q", kAddress}, {"limit", 10}, {"zoom", 12.5}, {"exact", true}, {"boundingBox[0]", "52.3,13.0"}};
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        NSURL_ZR::urlWithBaseUrlStringPathParameters("https://geocode.example/v2", "search", parameters));
  }
}
BENCHMARK(BM_URLWithFiveParameters);

/// GLib's nearest: escape each part and join.
void BM_URLWithFiveParametersByGLib(benchmark::State& state) {
  const std::pair<const char*, const char*> parameters[] = {
      {"q", kAddress.c_str()}, {"limit", "10"}, {"zoom", "12.5"}, {"exact", "1"}, {"boundingBox[0]", "52.3,13.0"}};
  for (auto _ : state) {
    GString* const url = g_string_new("https://geocode.example/v2/search");
    char separator = '?';
    for (const auto& [key, value] : parameters) {
      g_string_append_c(url, separator);
      g_string_append_uri_escaped(url, key, "%[].", FALSE);
      g_string_append_c(url, '=');
      g_string_append_uri_escaped(url, value, "%", FALSE);
      separator = '&';
    }
    benchmark::DoNotOptimize(url->str);
    g_string_free(url, TRUE);
  }
}
BENCHMARK(BM_URLWithFiveParametersByGLib);

const std::string kDate = "2016-03-01T12:00:00Z";

void BM_ISODate(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(NSDate_ZR::dateWithISO8601String(kDate));
}
BENCHMARK(BM_ISODate);

void BM_ISODateByStrptime(benchmark::State& state) {
  for (auto _ : state) {
    tm fields{};
    benchmark::DoNotOptimize(strptime(kDate.c_str(), "%Y-%m-%dT%H:%M:%SZ", &fields));
    benchmark::DoNotOptimize(timegm(&fields));
  }
}
BENCHMARK(BM_ISODateByStrptime);

void BM_ISODateByGLib(benchmark::State& state) {
  for (auto _ : state) {
    GDateTime* const date = g_date_time_new_from_iso8601(kDate.c_str(), nullptr);
    benchmark::DoNotOptimize(g_date_time_to_unix(date));
    g_date_time_unref(date);
  }
}
BENCHMARK(BM_ISODateByGLib);

}  // namespace

BENCHMARK_MAIN();
