# SPDX-License-Identifier: Apache-2.0
# The replay of a recorded trip through the location service.

add_library(
  zr_trip_replay STATIC
  FilterEffectCounter.cpp
  LocationRow.cpp
  ManagerPipeline.cpp
  NearestOnLine.cpp
  Pacer.cpp
  Recording.cpp
  ReplayedRoute.cpp
  RouteSnapper.cpp
  SummaryCounter.cpp
  TimeWindow.cpp
  TripReplay.cpp
  TripSimulator.cpp
  TurnDetector.cpp)
target_include_directories(zr_trip_replay PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}/..")
target_link_libraries(zr_trip_replay PUBLIC ZRCore zr_packed zr_readers zr_policy)
