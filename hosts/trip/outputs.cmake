# The files and pictures of a trip, and the maker of the project's own sample recording.

find_package(nlohmann_json REQUIRED)

add_library(
  zr_trip_outputs STATIC
  CsvOutput.cpp
  GeoJsonOutput.cpp
  OutputError.cpp
  OutputFile.cpp
  OutputText.cpp
  Outputs.cpp
  SummaryOutput.cpp)
target_include_directories(zr_trip_outputs PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
target_link_libraries(zr_trip_outputs PUBLIC ZRCore PRIVATE nlohmann_json::nlohmann_json)

add_library(zr_trip_sample STATIC SampleRoad.cpp SampleTrip.cpp)
target_link_libraries(zr_trip_sample PUBLIC zr_trip_outputs)
add_executable(zrcore-make-sample make_sample.cpp)
target_link_libraries(zrcore-make-sample PRIVATE zr_trip_sample)
