# SPDX-License-Identifier: Apache-2.0
# The files and pictures of a trip, and the maker of the project's own sample recording.

find_package(nlohmann_json REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(cairo REQUIRED IMPORTED_TARGET GLOBAL cairo cairo-png)

add_library(
  zr_trip_outputs STATIC
  Axis.cpp
  CairoCanvas.cpp
  CairoPicture.cpp
  CourseFold.cpp
  CsvOutput.cpp
  Diagrams.cpp
  EndlessPlane.cpp
  FolderLock.cpp
  GeoJsonOutput.cpp
  GpxJournal.cpp
  GpxRecording.cpp
  LineSimplifier.cpp
  MapPanel.cpp
  MapTransform.cpp
  OutputError.cpp
  OutputFile.cpp
  OutputText.cpp
  Outputs.cpp
  PictureOutput.cpp
  SeriesThinner.cpp
  ShownPath.cpp
  SummaryHints.cpp
  SummaryOutput.cpp
  SvgCanvas.cpp
  TripDrawing.cpp
  TripPicture.cpp)
target_include_directories(zr_trip_outputs PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
target_link_libraries(zr_trip_outputs PUBLIC ZRCore PRIVATE nlohmann_json::nlohmann_json PkgConfig::cairo)

add_library(zr_trip_sample STATIC SampleRoad.cpp SampleTrip.cpp)
target_link_libraries(zr_trip_sample PUBLIC zr_trip_outputs)
add_executable(zrcore-make-sample make_sample.cpp)
target_link_libraries(zrcore-make-sample PRIVATE zr_trip_sample)
