# SPDX-License-Identifier: Apache-2.0
zr_test(
  trip_replay_test
  SOURCES replay_effect.cpp replay_manager.cpp replay_pacer.cpp replay_route.cpp replay_trip.cpp replay_turns.cpp replay_window.cpp
  LIBRARIES zr_trip_replay zr_trip_outputs)
target_compile_definitions(trip_replay_test PRIVATE ZRCORE_SAMPLES="${PROJECT_SOURCE_DIR}/samples")
