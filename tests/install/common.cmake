# SPDX-License-Identifier: Apache-2.0
cmake_policy(VERSION 3.25)

function(run)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY COMMAND_ECHO STDOUT)
endfunction()

# expect_failure(TEXT program argument...): the program fails, and says so with these words.
function(expect_failure text)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  string(REGEX REPLACE "[ \n]+" " " output "${output}")
  string(FIND "${output}" "${text}" place)
  if(result EQUAL 0 OR place EQUAL -1)
    message(FATAL_ERROR "${ARGN}\nended with ${result}, expected a failure with \"${text}\":\n${output}")
  endif()
endfunction()

# expect_paths(EXIST|ABSENT path...)
function(expect_paths how)
  foreach(path IN LISTS ARGN)
    if((EXISTS "${path}" AND how STREQUAL ABSENT) OR (NOT EXISTS "${path}" AND how STREQUAL EXIST))
      message(FATAL_ERROR "${path}: expected ${how}")
    endif()
  endforeach()
endfunction()
