// SPDX-License-Identifier: Apache-2.0
// An invented answer of a geocoding service, as large as such answers are.
#ifndef ZRCORE_BENCHMARKS_MODEL_ANSWER_H
#define ZRCORE_BENCHMARKS_MODEL_ANSWER_H

#include <string>

/// JSON: an array of `count` results of about 600 bytes each, some keys of which no address is made.
inline std::string answerOf(int count) {
  std::string json = "[";
  for (int i = 0; i < count; ++i) {
    const std::string n = std::to_string(1000 + i);
    if (i > 0) json += ',';
    json += R"({"zrID":"place-of-quillmere-)" + n + R"(","streetAddress":")" + n +
            R"( Lantern Row North","adminArea6":"Old Quay of the Lanterns","adminArea5":"Quillmere",)"
            R"("adminArea4":"Harlow County","adminArea3":"Vesterland","adminArea1":"US","postalCode":"62999-)" +
            n +
            R"(","resultCode":"L1AAA","geocodeQualityCode":"B1AAA","SideOfStreet":"R","type":"s","dragPoint":false,)"
            R"("latLng":{"lat":39.90)" +
            n + R"(5,"lng":-89.44)" + n + R"(7},"displayLatLng":{"lat":39.90)" + n + R"(61,"lng":-89.44)" + n +
            R"(73},"linkId":"318)" + n +
            R"(","unknownInput":"","source":null,)"
            R"("description":"A house on the sunny side of Lantern Row, between the old quay and the mill","rank":)" +
            n + "}";
  }
  return json + "]";
}

#endif
