# SPDX-License-Identifier: Apache-2.0
# Builds and runs consumers of what is installed: in /usr by packages where PACKAGED is set, which compilers, CMake and
# pkg-config find unasked; else of what was built in BUILD, by an installation of its own.
include("${TESTS}/common.cmake")

file(REMOVE_RECURSE "${STAGE}")
if(PACKAGED)
  set(prefix /usr)
  set(find "")
  set(load "")
  file(MAKE_DIRECTORY "${STAGE}")
else()
  set(prefix "${STAGE}/prefix")
  set(find "-DCMAKE_PREFIX_PATH=${prefix}")
  set(load "-Wl,-rpath,${prefix}/${LIBDIR}")
  set(ENV{PKG_CONFIG_PATH} "${prefix}/${LIBDIR}/pkgconfig")
  run(${CMAKE_COMMAND} --install "${BUILD}" --prefix "${STAGE}/first")
  file(RENAME "${STAGE}/first" "${prefix}")  # an installed tree may be moved
endif()

unset(ENV{DISPLAY})
unset(ENV{WAYLAND_DISPLAY})
set(flags "")
if(SANITIZE)
  set(flags "-fsanitize=${SANITIZE}")
endif()
set(components JSON Fake)
foreach(component IN ITEMS Linux Gtk)  # an installation may be without
  if(EXISTS "${prefix}/${LIBDIR}/libZRCore${component}.so")
    list(APPEND components ${component})
  endif()
endforeach()

# By find_package.
set(configure ${CMAKE_COMMAND} ${find} -DCMAKE_C_COMPILER=${CC} -DCMAKE_CXX_COMPILER=${CXX}
              "-DCMAKE_C_FLAGS=${flags}" "-DCMAKE_CXX_FLAGS=${flags}")
list(JOIN components " " names)
foreach(consumer IN ITEMS cxx c)
  run(${configure} -S "${TESTS}/${consumer}" -B "${STAGE}/${consumer}" "-DCOMPONENTS=${names}")
  run(${CMAKE_COMMAND} --build "${STAGE}/${consumer}")
  run("${STAGE}/${consumer}/consumer")
endforeach()
expect_failure("of the components of ZRCore there are JSON" ${configure} -S "${TESTS}/cxx" -B "${STAGE}/without"
               -DCOMPONENTS=Sonar)

# By pkg-config.
function(expect_from_pkg_config expected)
  execute_process(COMMAND pkg-config ${ARGN} OUTPUT_VARIABLE answer OUTPUT_STRIP_TRAILING_WHITESPACE
                  COMMAND_ERROR_IS_FATAL ANY)
  if(NOT answer STREQUAL expected)
    message(FATAL_ERROR "pkg-config ${ARGN} says '${answer}', not '${expected}'")
  endif()
endfunction()
# builds_by_pkg_config(NAME PACKAGES package... COMPILE compiler argument...)
function(builds_by_pkg_config name)
  cmake_parse_arguments(PARSE_ARGV 1 by "" "" "PACKAGES;COMPILE")
  execute_process(COMMAND pkg-config --cflags --libs ${by_PACKAGES} OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE
                  COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(found UNIX_COMMAND "${found}")
  run(${by_COMPILE} ${flags} ${found} ${load} -o "${STAGE}/${name}")
  run("${STAGE}/${name}")
endfunction()

set(packages ${components})
set(definitions ${components})
list(TRANSFORM packages PREPEND ZRCore)
list(TRANSFORM definitions PREPEND -DWITH_)
foreach(package IN ITEMS ZRCore ${packages})
  expect_from_pkg_config("${VERSION}" --modversion ${package})
  expect_from_pkg_config(c++20 --variable=cxx_standard ${package})
endforeach()
builds_by_pkg_config(from-c PACKAGES ZRCore COMPILE ${CC} -std=c11 "${TESTS}/c/main.c")
builds_by_pkg_config(from-cxx PACKAGES ${packages} COMPILE ${CXX} -std=c++20 ${definitions} "${TESTS}/cxx/main.cpp")
