# SPDX-License-Identifier: Apache-2.0
# Where programs and libraries lie, and how they are installed.
#
# In the build folder they lie as they do in a prefix, so that one RUNPATH, relative to the file, is right in both: an
# installed tree may be moved, and nothing is looked for in the working directory. (A RUNPATH that CMake edits while it
# installs ends with an empty element before, which means that folder.)
#
# Every install rule belongs to a part: a target's own name for what it needs to run, and <target>_development for what
# is needed to build with it. What a user names is a component, which is several parts; cmake/ZRInstallComponents.cmake
# chooses among them when it is known what was built.

include(CMakePackageConfigHelpers)

foreach(folder IN ITEMS BINDIR LIBDIR DATADIR INCLUDEDIR)
  if(IS_ABSOLUTE "${CMAKE_INSTALL_${folder}}")
    message(FATAL_ERROR "CMAKE_INSTALL_${folder} is \"${CMAKE_INSTALL_${folder}}\": give it relative to the prefix, "
                        "because an installed tree may be moved")
  endif()
endforeach()
set(ZR_DATA_FOLDER "${CMAKE_INSTALL_DATADIR}/zrcore")
set(ZR_PACKAGE_FOLDER "${CMAKE_INSTALL_LIBDIR}/cmake/ZRCore")

# A component is nothing without what it needs, and takes what else there is.
set(ZR_COMPONENTS tool library development window)
set(ZR_TOOL_NEEDS ZRCore ZRCoreLinux zrcore samples)
set(ZR_LIBRARY_NEEDS ZRCore)
set(ZR_LIBRARY_TAKES ZRCoreLinux ZRCoreGtk)
set(ZR_DEVELOPMENT_NEEDS ZRCore ZRCore_development)
set(ZR_DEVELOPMENT_TAKES ZRCoreLinux ZRCoreLinux_development ZRCoreGtk ZRCoreGtk_development ZRCoreJSON_development
                         ZRCoreFake_development)
set(ZR_WINDOW_NEEDS ZRCore ZRCoreLinux ZRCoreGtk zrcore-demo samples)

# zr_lies_as_installed(TARGET)
function(zr_lies_as_installed target)
  set(build "${PROJECT_BINARY_DIR}")
  get_property(has_many_configurations GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
  if(has_many_configurations)
    set(build "${PROJECT_BINARY_DIR}/$<CONFIG>")
  endif()
  set(runpath "$ORIGIN")
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "EXECUTABLE")
    file(RELATIVE_PATH way "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
    set(runpath "$ORIGIN/${way}")
  endif()
  set_target_properties(
    ${target}
    PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${build}/${CMAKE_INSTALL_BINDIR}"
               LIBRARY_OUTPUT_DIRECTORY "${build}/${CMAKE_INSTALL_LIBDIR}"
               BUILD_WITH_INSTALL_RPATH ON
               INSTALL_RPATH "${runpath}")
  set_property(GLOBAL APPEND PROPERTY ZR_SHIPPED ${target})
endfunction()

# The parts of a target can be installed once there is its file.
function(zr_has_parts target)
  set_property(GLOBAL APPEND_STRING PROPERTY ZR_PARTS "set(${target}_FILE [[$<TARGET_FILE:${target}>]])\n")
  set_property(GLOBAL APPEND PROPERTY ZR_PART_TARGETS ${target})
endfunction()

# zr_install_library(TARGET DESCRIPTION [REQUIRES package...])
#
# A shared library, or a static one for development alone; the export by which find_package knows it, and its pkg-config
# file, which REQUIRES the files of other libraries of ours.
function(zr_install_library target description)
  cmake_parse_arguments(PARSE_ARGV 2 library "" "" "REQUIRES")
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "SHARED_LIBRARY")
    zr_lies_as_installed(${target})
    set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  endif()
  zr_has_parts(${target})
  install(
    TARGETS ${target}
    EXPORT ${target}Targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${target} NAMELINK_COMPONENT ${target}_development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${target}_development)
  install(EXPORT ${target}Targets NAMESPACE ZRCore:: DESTINATION ${ZR_PACKAGE_FOLDER} COMPONENT ${target}_development)

  file(RELATIVE_PATH way_to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
  list(JOIN library_REQUIRES " " requires)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/library.pc.in" "${PROJECT_BINARY_DIR}/pkgconfig/${target}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/pkgconfig/${target}.pc" DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
          COMPONENT ${target}_development)
endfunction()

# zr_install_program(TARGET)
function(zr_install_program target)
  zr_lies_as_installed(${target})
  zr_has_parts(${target})
  install(TARGETS ${target} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ${target})
endfunction()

# zr_install_begins(), before the first install rule: they run in the order in which they are written. Inside another
# project, whose components are its own, nothing is chosen.
function(zr_install_begins)
  if(PROJECT_IS_TOP_LEVEL)
    install(CODE "include([[${PROJECT_BINARY_DIR}/ZRInstallParts.cmake]])" ALL_COMPONENTS)
  endif()
endfunction()

# zr_install_ends(), when all parts are known.
function(zr_install_ends)
  if(NOT PROJECT_IS_TOP_LEVEL)
    return()
  endif()
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/samples" DESTINATION ${ZR_DATA_FOLDER} COMPONENT samples)
  get_property(files GLOBAL PROPERTY ZR_PARTS)
  string(APPEND files "set(samples_FILE [[${PROJECT_SOURCE_DIR}/samples]])\n")  # which need not be built
  set(lists "set(ZR_BUILD [[${PROJECT_BINARY_DIR}]])\nset(ZR_COMPONENTS ${ZR_COMPONENTS})\n")
  foreach(component IN LISTS ZR_COMPONENTS)
    string(TOUPPER "ZR_${component}" name)
    string(APPEND lists "set(${component}_NEEDS ${${name}_NEEDS})\nset(${component}_TAKES ${${name}_TAKES})\n")
  endforeach()
  string(REPLACE ";" " " lists "${lists}")
  file(GENERATE OUTPUT "${PROJECT_BINARY_DIR}/ZRInstallParts.cmake"
       CONTENT "${lists}${files}include([[${PROJECT_SOURCE_DIR}/cmake/ZRInstallComponents.cmake]])\n")
  get_property(targets GLOBAL PROPERTY ZR_PART_TARGETS)
  add_custom_target(shipped DEPENDS ${targets})  # all that can be installed, and no test
  add_custom_target(uninstall COMMAND ${CMAKE_COMMAND} "-DBUILD=${PROJECT_BINARY_DIR}" -P
                                      "${PROJECT_SOURCE_DIR}/cmake/ZRUninstall.cmake" VERBATIM)
endfunction()
