// SPDX-License-Identifier: Apache-2.0
#include <cairo.h>
#include <expat.h>
#include <gmock/gmock.h>
#include <trip/drawing/Theme.h>
#include <trip/drawing/TripDrawing.h>

#include <cmath>
#include <cstring>
#include <memory>

#include "OutputsSupport.h"

namespace trip {
namespace {

struct Pixels {
  int width = 0, height = 0;
  std::vector<std::uint32_t> colors;

  std::uint32_t at(int x, int y) const { return colors[static_cast<std::size_t>(y * width + x)] & 0xffffff; }
};

Pixels decodePng(const std::string& png) {
  struct Source {
    const std::string& bytes;
    std::size_t offset = 0;
  } source{png};
  const auto read = [](void* from, unsigned char* to, unsigned length) {
    auto& input = *static_cast<Source*>(from);
    if (input.bytes.size() - input.offset < length) return CAIRO_STATUS_READ_ERROR;
    std::memcpy(to, input.bytes.data() + input.offset, length);
    input.offset += length;
    return CAIRO_STATUS_SUCCESS;
  };
  const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
      cairo_image_surface_create_from_png_stream(read, &source), &cairo_surface_destroy);
  Pixels pixels;
  EXPECT_EQ(cairo_surface_status(surface.get()), CAIRO_STATUS_SUCCESS);
  if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return pixels;
  pixels.width = cairo_image_surface_get_width(surface.get());
  pixels.height = cairo_image_surface_get_height(surface.get());
  const int stride = cairo_image_surface_get_stride(surface.get());
  for (int y = 0; y < pixels.height; ++y) {
    const auto* const line = cairo_image_surface_get_data(surface.get()) + y * stride;
    const auto* const row = reinterpret_cast<const std::uint32_t*>(line);
    pixels.colors.insert(pixels.colors.end(), row, row + pixels.width);
  }
  return pixels;
}

std::uint32_t asPixel(Color color) {
  const auto part = [](double value) { return static_cast<std::uint32_t>(std::lround(value * 255.0)); };
  return part(color.red) << 16 | part(color.green) << 8 | part(color.blue);
}

/// The part of the picture in which the map lies, without its edge.
constexpr int kMapLeft = 60, kMapRight = 1540, kMapTop = 152, kMapBottom = 748;

/// The box around all pixels of a color in the map.
struct Box {
  int left = 9999, top = 9999, right = -1, bottom = -1, count = 0;
};
Box boxOf(const Pixels& pixels, Color color) {
  Box box;
  for (int y = kMapTop; y < kMapBottom; ++y) {
    for (int x = kMapLeft; x < kMapRight; ++x) {
      if (pixels.at(x, y) != asPixel(color)) continue;
      box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x), std::max(box.bottom, y),
             box.count + 1};
    }
  }
  return box;
}

struct Svg {
  int elements = 0;
  std::string text;  ///< all that is text in it
};

/// What stands in an SVG document; nothing and a failure when it is not well-formed, or has numbers that are none.
Svg readSvg(const std::string& svg) {
  const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate(nullptr), &XML_ParserFree);
  Svg read;
  XML_SetUserData(parser.get(), &read);
  XML_SetStartElementHandler(parser.get(), [](void* into, const XML_Char* name, const XML_Char** attributes) {
    auto& elements = static_cast<Svg*>(into)->elements;
    if (++elements == 1) {
      EXPECT_STREQ(name, "svg");
    }
    for (; *attributes != nullptr; attributes += 2) {
      EXPECT_THAT(attributes[1], testing::Not(testing::AnyOf(testing::HasSubstr("nan"), testing::HasSubstr("inf"))));
    }
  });
  XML_SetCharacterDataHandler(parser.get(), [](void* into, const XML_Char* text, int length) {
    static_cast<Svg*>(into)->text.append(text, static_cast<std::size_t>(length));
  });
  const auto status = XML_Parse(parser.get(), svg.data(), static_cast<int>(svg.size()), XML_TRUE);
  EXPECT_EQ(status, XML_STATUS_OK) << XML_ErrorString(XML_GetErrorCode(parser.get()));
  return status == XML_STATUS_OK ? read : Svg{};
}

TripPicture pictureOf(const std::vector<TripRow>& rows) {
  TripPicture picture;
  for (const TripRow& row : rows) picture.add(row);
  return picture;
}

TEST(Picture, MarksThePlacesOnItsMapAndNoOthers) {
  const auto rows = markedSampleTrip();
  const CLLocationCoordinate2D start = rows.front().coordinate;
  auto picture = pictureOf(rows);
  const int bare = boxOf(decodePng(drawPng(picture, {})), theme::kPlace).count;
  picture.setPlaces({{{start.latitude + 40.0, start.longitude}, "far away"}, {{-start.latitude, start.longitude}, ""}});
  EXPECT_EQ(boxOf(decodePng(drawPng(picture, {})), theme::kPlace).count, bare);
  // Beside the middle of the track, so that no other mark covers it.
  const CLLocationCoordinate2D there = rows[rows.size() / 2].coordinate;
  picture.setPlaces({{{there.latitude, there.longitude + 0.002}, "Caf\xC3\xA9\xFF"}});
  const Box marked = boxOf(decodePng(drawPng(picture, {})), theme::kPlace);
  EXPECT_GT(marked.count, bare + 100);
  EXPECT_THAT(readSvg(drawSvg(picture, {})).text, testing::HasSubstr("Caf\xC3\xA9"));
}

TEST(Picture, ShowsBothTracksInBothFormatsAndTheJumpsOnlyWhenThereAreAny) {
  auto rows = markedSampleTrip();
  const Pixels withJumps = decodePng(drawPng(pictureOf(rows), {}));
  EXPECT_EQ(withJumps.width, 1600);
  EXPECT_EQ(withJumps.height, 1200);
  EXPECT_GT(boxOf(withJumps, theme::kSmoothed).count, 1000);
  EXPECT_GT(boxOf(withJumps, theme::kRaw).count, 100);
  EXPECT_GT(boxOf(withJumps, theme::kJump).count, 10);

  TripSummary summary;
  summary.source = "<a & b>.csv";
  summary.filter = "measured";
  summary.distanceMeters = 10071.0;
  const Svg svg = readSvg(drawSvg(pictureOf(rows), summary));
  EXPECT_GT(svg.elements, 50);
  for (const char* const text : {"<a & b>.csv", "10.1 km raw", "filter: measured", "smoothed", "jump (2)", "Course",
                                 "09:35", "46.805° N", "7.42° E", "500 m"}) {
    EXPECT_THAT(svg.text, testing::HasSubstr(text));
  }

  for (TripRow& row : rows) row.jump = false;
  EXPECT_EQ(boxOf(decodePng(drawPng(pictureOf(rows), {})), theme::kJump).count, 0);
}

TEST(Picture, HasOneScaleBothWaysAndABarOfRoundTrueLength) {
  // A square of one kilometre on the ground, far from the equator, where a wrong scale law shows.
  constexpr double kLatitude = 60.0, kMeters = 1000.0;
  const double north = kMeters / (EarthRadius * M_PI / 180.0);
  const double east = north / std::cos(kLatitude * M_PI / 180.0);
  std::vector<TripRow> rows;
  for (const auto& [up, right] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}}) {
    rows.push_back(rowAt(kLatitude + (up - 0.5) * north, 25.0 + right * east, rows.size()));
  }
  const Pixels pixels = decodePng(drawPng(pictureOf(rows), {}));
  const Box square = boxOf(pixels, theme::kSmoothed);
  const int side = square.right - square.left;
  EXPECT_GT(side, 300);
  EXPECT_NEAR(square.bottom - square.top, side, 3);

  int bar = 0;  // the longest dark stretch in the lower left corner
  for (int y = kMapBottom - 50; y < kMapBottom; ++y) {
    int run = 0;
    for (int x = kMapLeft; x < kMapLeft + 300; ++x) {
      run = pixels.at(x, y) == asPixel(theme::kInk) ? run + 1 : 0;
      bar = std::max(bar, run);
    }
  }
  EXPECT_GT(bar, 60);
  const double barMeters = kMeters * bar / side;
  const double leading = barMeters / std::pow(10.0, std::floor(std::log10(barMeters * 1.05)));
  EXPECT_THAT(leading, testing::AnyOf(testing::DoubleNear(1.0, 0.02), testing::DoubleNear(2.0, 0.04),
                                      testing::DoubleNear(5.0, 0.1)))
      << barMeters << " m";
}

TEST(Picture, DrawsNothingOverAGapInTime) {
  std::vector<TripRow> rows;
  for (std::uint64_t i = 0; i < 20; ++i) {
    rows.push_back(rowAt(47.0, 8.0 + 0.001 * static_cast<double>(i < 10 ? i : i + 20), i));
    if (i >= 10) *rows.back().secondsSince1970 += 60.0;
  }
  const auto middleOf = [&rows] {  // of the map: what is neither ground nor grid
    const Pixels pixels = decodePng(drawPng(pictureOf(rows), {}));
    int count = 0;
    for (int y = kMapTop; y < kMapBottom; ++y) {
      count += pixels.at(800, y) == asPixel(theme::kSmoothed) || pixels.at(800, y) == asPixel(theme::kRaw);
    }
    return count;
  };
  const auto drawn = [&rows](const std::string& what) {  // so often in the other format
    const std::string svg = drawSvg(pictureOf(rows), {});
    std::size_t count = 0;
    for (std::size_t at = svg.find(what); at != svg.npos; at = svg.find(what, at + 1)) ++count;
    return count;
  };
  const auto later = [&rows](std::size_t first, double seconds) {
    for (std::size_t i = first; i < rows.size(); ++i) *rows[i].secondsSince1970 += seconds;
  };
  EXPECT_EQ(middleOf(), 0);
  const std::size_t strokes = drawn("M"), dots = drawn("<circle");
  later(9, 60.0);  // one fix alone
  EXPECT_GT(drawn("<circle"), dots);
  later(9, -60.0);
  later(10, -60.0);
  EXPECT_GT(middleOf(), 0);
  EXPECT_LT(drawn("M"), strokes);
}

TEST(Picture, SaysWhyItHasNoSpeeds) {
  TripRow row = rowAt(10.0, 20.0, 0);
  row.speedMetersPerSecond.reset();
  TripSummary summary;
  summary.fixes = 2;
  summary.couldDeriveSpeed = true;
  const auto text = [&] { return readSvg(drawSvg(pictureOf({row}), summary)).text; };
  EXPECT_THAT(text(), testing::HasSubstr("no times to work them out from"));
  summary.firstSecondsSince1970 = 1.0;
  summary.lastSecondsSince1970 = 2.0;
  EXPECT_THAT(text(), testing::HasSubstr("--derive-speed"));
  summary.couldDeriveSpeed = false;
  EXPECT_THAT(text(), testing::AllOf(testing::HasSubstr("no speeds"), testing::Not(testing::HasSubstr("--derive"))));
}

TEST(Picture, PutsNorthUpAndEastRight) {
  std::vector<TripRow> rows;
  for (std::uint64_t i = 0; i < 10; ++i) {
    rows.push_back(rowAt(-30.0 + 0.001 * static_cast<double>(i), 50.0 + 0.001 * static_cast<double>(i), i));
  }
  rows.back().jump = true;  // the mark shows where the last fix is
  const Pixels pixels = decodePng(drawPng(pictureOf(rows), {}));
  const Box last = boxOf(pixels, theme::kJump), track = boxOf(pixels, theme::kSmoothed);
  ASSERT_GT(last.count, 0);
  EXPECT_GT(last.left, track.left + 100);
  EXPECT_LT(last.top, track.bottom - 100);
}

TEST(Picture, IsDrawnForTripsOfEveryKind) {
  TripSummary named;
  named.source = std::string(300, 'W') + "\xc3\xa4\xff\xfe\x01 <&>.gpx";
  std::map<std::string, std::vector<TripRow>> trips;
  trips["no fix"] = {};
  trips["one fix"] = {rowAt(10.0, 20.0, 0)};
  trips["one place"] = {rowAt(90.0, 180.0, 0), rowAt(90.0, 180.0, 1), rowAt(90.0, 180.0, 2)};
  trips["only jumps"] = {rowAt(10.0, 20.0, 0), rowAt(11.0, 20.0, 1)};
  for (TripRow& row : trips["only jumps"]) row.jump = true;
  for (std::uint64_t i = 0; i < 50; ++i) {
    TripRow bare;
    bare.index = i;
    bare.coordinate = {-80.0 + 3.0 * static_cast<double>(i), std::remainder(50.0 * static_cast<double>(i), 360.0)};
    trips["around the world without times"].push_back(bare);
    TripRow wild = bare;
    wild.secondsSince1970 = i % 3 == 0 ? -1e300 : i % 3 == 1 ? 1e300 : INFINITY;
    wild.speedMetersPerSecond = i % 2 == 0 ? 1e308 : -INFINITY;
    wild.courseDegrees = i % 2 == 0 ? 1e300 : -NAN;
    wild.smoothSpeedMetersPerSecond = NAN;
    wild.smoothCourseDegrees = i % 2 == 0 ? 360.0 : -1e-300;
    trips["wild values"].push_back(wild);
  }
  for (const auto& [name, rows] : trips) {
    SCOPED_TRACE(name);
    const Pixels pixels = decodePng(drawPng(pictureOf(rows), named));
    ASSERT_EQ(pixels.width, 1600);
    EXPECT_GT(readSvg(drawSvg(pictureOf(rows), named)).elements, 20);
    // The last thing that is drawn: an error on the way would have stopped everything after it.
    bool isBottomDrawn = false;
    for (int x = 0; x < 1600; ++x) isBottomDrawn |= pixels.at(x, 1121) != asPixel(theme::kPaper);
    EXPECT_TRUE(isBottomDrawn);
  }
}

}  // namespace
}  // namespace trip
