# SPDX-License-Identifier: Apache-2.0
function(run)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY COMMAND_ECHO STDOUT)
endfunction()

file(REMOVE_RECURSE "${STAGE}")
run(${CMAKE_COMMAND} --install "${BUILD}" --prefix "${STAGE}/first" --component ZRCore)
file(RENAME "${STAGE}/first" "${STAGE}/prefix")  # an installed tree may be moved

set(flags "")
if(SANITIZE)
  set(flags "-fsanitize=${SANITIZE}")
endif()
foreach(consumer IN ITEMS cxx c)
  run(${CMAKE_COMMAND} -S "${SOURCE}/${consumer}" -B "${STAGE}/${consumer}" "-DCMAKE_PREFIX_PATH=${STAGE}/prefix"
      -DCMAKE_C_COMPILER=${CC} -DCMAKE_CXX_COMPILER=${CXX} "-DCMAKE_C_FLAGS=${flags}" "-DCMAKE_CXX_FLAGS=${flags}")
  run(${CMAKE_COMMAND} --build "${STAGE}/${consumer}")
  run("${STAGE}/${consumer}/consumer")
endforeach()

file(GLOB_RECURSE pc "${STAGE}/prefix/*/ZRCore.pc")
get_filename_component(pc_folder "${pc}" DIRECTORY)
set(ENV{PKG_CONFIG_PATH} "${pc_folder}")
execute_process(COMMAND pkg-config --modversion ZRCore OUTPUT_VARIABLE version OUTPUT_STRIP_TRAILING_WHITESPACE
                COMMAND_ERROR_IS_FATAL ANY)
if(NOT version STREQUAL VERSION)
  message(FATAL_ERROR "ZRCore.pc says version '${version}', not '${VERSION}'")
endif()
execute_process(COMMAND pkg-config --cflags --libs ZRCore OUTPUT_VARIABLE pc_flags OUTPUT_STRIP_TRAILING_WHITESPACE
                COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(pc_flags UNIX_COMMAND "${pc_flags}")
run(${CC} -std=c11 ${flags} "${SOURCE}/c/main.c" ${pc_flags} "-Wl,-rpath,${pc_folder}/.." -o "${STAGE}/from-pkg-config")
run("${STAGE}/from-pkg-config")
