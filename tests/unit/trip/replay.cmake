# SPDX-License-Identifier: Apache-2.0
zr_test(
  trip_replay_test
  SOURCES ReplayEffectTest.cpp ReplayManagerTest.cpp ReplayPacerTest.cpp ReplayRouteTest.cpp ReplayTripTest.cpp ReplayTurnsTest.cpp ReplayWindowTest.cpp
  LIBRARIES zr_trip_replay zr_trip_outputs)
target_compile_definitions(trip_replay_test PRIVATE ZRCORE_SAMPLES="${PROJECT_SOURCE_DIR}/samples")
