# SPDX-License-Identifier: Apache-2.0
# libZRCore: all rooms of ring 1 and the seam in one shared library, and what is installed whoever uses it.

get_property(zr_rooms GLOBAL PROPERTY ZR_ROOMS_ZRCore)
set(zr_objects "")
foreach(room IN LISTS zr_rooms)
  list(APPEND zr_objects $<TARGET_OBJECTS:zr_${room}>)
endforeach()

add_library(ZRCore SHARED ${zr_objects})
add_library(ZRCore::ZRCore ALIAS ZRCore)
set_target_properties(ZRCore PROPERTIES LINKER_LANGUAGE CXX)
target_include_directories(ZRCore INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                                            $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_compile_features(ZRCore INTERFACE cxx_std_20)
set(zr_version_script "${PROJECT_SOURCE_DIR}/cmake/zrcore.map")
target_link_options(ZRCore PRIVATE "LINKER:--version-script=${zr_version_script}" "LINKER:--as-needed"
                                   "LINKER:-Bsymbolic-functions")  # it calls its own functions, whoever else has some
if(NOT ZRCORE_SANITIZE)
  target_link_options(ZRCore PRIVATE "LINKER:--no-undefined")
endif()
# The names of what is hidden are a fifth of the file. Benchmarks keep them, for profiles.
if(NOT ZRCORE_BUILD_BENCHMARKS)
  target_link_options(ZRCore PRIVATE $<$<CONFIG:Release>:LINKER:--strip-all>)
endif()
set_target_properties(ZRCore PROPERTIES LINK_DEPENDS "${zr_version_script}")

# The same objects for tests that look inside, with nothing hidden from the linker.
zr_room_objects(zr_core_objects ZRCore)

zr_install_library(ZRCore "${PROJECT_DESCRIPTION}")
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" "${PROJECT_SOURCE_DIR}/NOTICE" DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zrcore
        COMPONENT ZRCore)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/ZRCore" DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        COMPONENT ZRCore_development)
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/ZRCoreConfig.cmake.in" "${PROJECT_BINARY_DIR}/ZRCoreConfig.cmake"
                              INSTALL_DESTINATION ${ZR_PACKAGE_FOLDER})
write_basic_package_version_file("${PROJECT_BINARY_DIR}/ZRCoreConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/ZRCoreConfig.cmake" "${PROJECT_BINARY_DIR}/ZRCoreConfigVersion.cmake"
        DESTINATION ${ZR_PACKAGE_FOLDER} COMPONENT ZRCore_development)
