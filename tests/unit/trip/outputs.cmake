# SPDX-License-Identifier: Apache-2.0
find_package(nlohmann_json REQUIRED)
find_package(EXPAT REQUIRED)

zr_test(
  trip_outputs_test
  SOURCES OutputsAxisTest.cpp OutputsFilesTest.cpp OutputsGpxTest.cpp OutputsPictureTest.cpp OutputsSampleTest.cpp OutputsThinningTest.cpp
  LIBRARIES zr_trip_outputs zr_trip_sample zr_readers nlohmann_json::nlohmann_json EXPAT::EXPAT PkgConfig::cairo)
target_compile_definitions(trip_outputs_test PRIVATE ZR_SAMPLES="${PROJECT_SOURCE_DIR}/samples")
