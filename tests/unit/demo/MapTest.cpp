// SPDX-License-Identifier: Apache-2.0
#include <demo/MapDrawing.h>
#include <demo/MapView.h>
#include <demo/ViewThinning.h>
#include <gmock/gmock.h>
#include <trip/drawing/CairoCanvas.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace demo {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

trip::Envelope envelope(ZRMapPoint a, ZRMapPoint b) {
  trip::Envelope around;
  around.add(a);
  around.add(b);
  return around;
}

std::vector<TrackPoint> trackOf(const std::vector<ZRMapPoint>& places) {
  std::vector<TrackPoint> track;
  for (const ZRMapPoint& at : places) track.push_back({at, track.size(), track.empty()});
  return track;
}

TEST(MapView, WhatLiesUnderThePointerStaysThereOrGoesWithIt) {
  MapView view;
  view.resize(800, 600);
  view.fit(envelope({3.0e7, 2.0e7}, {3.0e7 + 4000, 2.0e7 + 1000}));
  for (const double factor : {1.3, 4.0, 0.01, 1e12, 1e-12}) {  // the last two run into the limits
    SCOPED_TRACE(factor);
    const ZRMapPoint held = view.transform().mapPoint({100.0, 450.0});
    view.zoomAt(100.0, 450.0, factor);
    if (factor < 1e-6) break;  // the world is an icon then, and its edges may not leave the middle
    EXPECT_NEAR(view.transform()(held).x, 100.0, 1e-3);
    EXPECT_NEAR(view.transform()(held).y, 450.0, 1e-3);
  }
  view.fit(envelope({3.0e7, 2.0e7}, {3.0e7 + 4000, 2.0e7 + 1000}));
  const ZRMapPoint held = view.transform().mapPoint({100.0, 450.0});
  view.panBy(33.0, -44.0);
  EXPECT_NEAR(view.transform()(held).x, 133.0, 1e-6);
  EXPECT_NEAR(view.transform()(held).y, 406.0, 1e-6);
}

TEST(MapView, FitsAnythingIntoAnySizeAndBearsNonsense) {
  const trip::Envelope trips[] = {envelope({3.0e7, 2.0e7}, {3.0e7 + 4000, 2.0e7 + 1000}),
                                  envelope({1.0, 1.0}, {1.0, 1.0}), envelope({-6.7e7, 0.0}, {6.7e7, 6.7e7})};
  for (const auto& around : trips) {
    for (const auto& [width, height] : {std::pair(360.0, 500.0), std::pair(1024.0, 700.0), std::pair(0.0, 0.0)}) {
      MapView view;
      view.resize(width, height);
      view.zoomAtCenter(kNaN);
      view.zoomAtCenter(-1.0);
      view.panBy(kNaN, 0.0);
      view.fit(around);
      const auto low = view.transform()({around.minX, around.minY}),
                 high = view.transform()({around.maxX, around.maxY});
      if (width == 0.0) {
        EXPECT_TRUE(std::isfinite(low.x) && std::isfinite(high.y));
        continue;
      }
      EXPECT_GE(low.x, 0.0);
      EXPECT_GE(low.y, 0.0);
      EXPECT_LE(high.x, width);
      EXPECT_LE(high.y, height);
    }
  }
}

TEST(MapView, FollowsTheNewestFixUntilAPersonMovesTheMap) {
  MapView view;
  view.resize(800, 600);
  view.fit(envelope({3.0e7, 2.0e7}, {3.0e7 + 4000, 2.0e7 + 1000}));
  view.zoomAtCenter(10.0);  // looking closer is not a reason to be left behind
  const auto pixelOf = [&view](ZRMapPoint point) { return view.transform()(point); };

  const ZRMapPoint near = view.transform().mapPoint({600.0, 300.0}), far = view.transform().mapPoint({900.0, 300.0});
  view.keepInView(near);
  EXPECT_NEAR(pixelOf(near).x, 600.0, 1e-6);
  view.keepInView(far);
  EXPECT_NEAR(pixelOf(far).x, 400.0, 1e-6);

  view.panBy(500.0, 0.0);
  view.keepInView(far);
  EXPECT_NEAR(pixelOf(far).x, 900.0, 1e-6);
}

TEST(VisibleTrack, ShowsEveryVisibleFixToWithinItsTolerance) {
  std::mt19937 random(1);
  std::normal_distribution<double> step(0.0, 40.0);
  std::vector<ZRMapPoint> places{{3.0e7, 2.0e7}};
  while (places.size() < 100'000) places.push_back({places.back().x + step(random), places.back().y + step(random)});
  const auto track = trackOf(places);
  for (const double scale : {0.002, 0.02, 0.3, 8.0}) {
    SCOPED_TRACE(scale);
    const trip::MapTransform view({3.0e7, 2.0e7}, scale, {0.0, 0.0, 1000.0, 700.0});
    const VisibleTrack visible = visibleTrack(track, view, 6000);
    EXPECT_LE(visible.strokes.size(), 6000u);
    EXPECT_TRUE(visible.strokes.front().startsStroke);
    for (std::size_t i = 0; i < places.size(); i += 97) {
      const auto pixel = view(places[i]);
      if (pixel.x < 0 || pixel.x > 1000 || pixel.y < 0 || pixel.y > 700) continue;
      const bool isNear = std::ranges::any_of(visible.strokes, [&](const trip::DiagramPoint& point) {
        return std::hypot(point.x - pixel.x, point.y - pixel.y) <= visible.tolerancePixels;
      });
      EXPECT_TRUE(isNear) << "fix " << i;
    }
  }
}

TEST(VisibleTrack, CutsWhatLeavesTheViewAndKeepsGaps) {
  const trip::MapTransform view({1000.0, 1000.0}, 1.0, {0.0, 0.0, 200.0, 100.0});  // x 900 to 1100, y 950 to 1050
  const auto pixelsOf = [&view](const std::vector<TrackPoint>& track) {
    std::vector<std::tuple<double, double, bool>> points;
    for (const auto& [x, y, starts] : visibleTrack(track, view, 100).strokes) points.emplace_back(x, y, starts);
    return points;
  };
  using testing::ElementsAre;
  using testing::FieldsAre;
  // Straight through from far away, by an edge, out and in again elsewhere.
  EXPECT_THAT(pixelsOf(trackOf({{-6e7, 1000.0}, {6e7, 1000.0}})),
              ElementsAre(FieldsAre(-16.0, 50.0, true), FieldsAre(216.0, 50.0, false)));
  EXPECT_THAT(pixelsOf(trackOf({{0.0, 2000.0}, {2000.0, 2000.0}, {2000.0, 0.0}})), ElementsAre());
  EXPECT_THAT(pixelsOf(trackOf({{1000.0, 1000.0}, {1000.0, 9000.0}, {1050.0, 9000.0}, {1050.0, 1000.0}})),
              ElementsAre(FieldsAre(100.0, 50.0, true), FieldsAre(100.0, 116.0, false), FieldsAre(150.0, 116.0, true),
                          FieldsAre(150.0, 50.0, false)));
  // A gap, a lonely fix behind it, and an end that lies near its predecessor.
  auto track = trackOf({{950.0, 1000.0}, {1000.0, 1000.0}, {1010.0, 1010.0}, {1050.0, 1000.0}, {1050.4, 1000.0}});
  track[2].startsStroke = track[3].startsStroke = true;
  EXPECT_THAT(pixelsOf(track),
              ElementsAre(FieldsAre(50.0, 50.0, true), FieldsAre(100.0, 50.0, false), FieldsAre(110.0, 60.0, true),
                          FieldsAre(150.0, 50.0, true), FieldsAre(testing::DoubleNear(150.4, 1e-9), 50.0, false)));
}

TEST(VisibleMarks, NeverStandSoCloseThatTheyHideEachOther) {
  std::vector<ZRMapPoint> places;
  for (int i = 0; i < 100'000; ++i) places.push_back({1000.0 + i % 317, 1000.0 + i % 211});
  const trip::MapTransform view({1150.0, 1100.0}, 1.0, {0.0, 0.0, 400.0, 300.0});
  const auto marks = visibleMarks(trackOf(places), view, 20.0);
  EXPECT_GT(marks.size(), 50u);
  EXPECT_LE(marks.size(), 22u * 17u);
}

/// The picture of a map as `drawMap` draws it, and one of its pixels as red, green, blue.
class Picture {
 public:
  Picture() : surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 400, 300)) {}
  ~Picture() { cairo_surface_destroy(surface_); }

  void draw(const MapView& view, const MapContent& content, const trip::MapColors& colors) {
    trip::CairoCanvas canvas(surface_);
    drawMap(canvas, view.transform(), content, colors);
    cairo_surface_flush(surface_);
  }
  bool has(trip::DiagramPoint at, trip::Color color) const {
    const auto* const row = cairo_image_surface_get_data(surface_) +
                            static_cast<int>(at.y) * cairo_image_surface_get_stride(surface_) +
                            4 * static_cast<int>(at.x);
    return std::fabs(row[2] / 255.0 - color.red) < 0.02 && std::fabs(row[1] / 255.0 - color.green) < 0.02 &&
           std::fabs(row[0] / 255.0 - color.blue) < 0.02;
  }

 private:
  cairo_surface_t* surface_;
};

TEST(DrawMap, MarksPlacesAndTheNewestFixWhereTheyAreAlsoPastTheAntimeridian) {
  TripTrack track;
  for (int i = 0; i < 20; ++i) {
    trip::TripRow row;
    row.index = static_cast<std::uint64_t>(i);
    row.coordinate = {0.0, i < 10 ? 179.0 + 0.1 * i : -180.0 + 0.1 * (i - 10)};
    track.add(row);
  }
  std::vector<TrackPoint> route = track.raw();
  const double fifth = route[19].at.x - route[14].at.x;
  route.push_back({{route.back().at.x + fifth, route.back().at.y}, 20});
  const std::vector<trip::PlaceMark> places{{{0.3, -179.8}, "East of it"}};
  MapView view;
  view.resize(400, 300);
  trip::Envelope around;
  for (const TrackPoint& point : route) around.add(point.at);
  view.fit(around);
  EXPECT_LT(around.maxX - around.minX, ZRMapSizeWorld.width / 100);
  const double world = ZRMapSizeWorld.width;
  for (const trip::MapColors& colors : {trip::kLightMap, kDarkMap}) {
    Picture picture;
    picture.draw(view, {route, track, places, std::nullopt}, colors);
    EXPECT_TRUE(picture.has(view.transform()(track.raw().back().at), colors.smoothed));
    EXPECT_TRUE(picture.has(view.transform()(route.back().at), colors.route)) << "what is still to come";
    EXPECT_FALSE(picture.has(view.transform()(route[5].at), colors.route)) << "what has been played";
    ZRMapPoint place = ZRMapPointForCoordinate(places[0].coordinate);
    place.x += world;
    EXPECT_TRUE(picture.has(view.transform()(place), colors.place));
    EXPECT_TRUE(picture.has({3.0, 3.0}, colors.ground));
  }
}

}  // namespace
}  // namespace demo
