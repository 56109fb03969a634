# SPDX-License-Identifier: Apache-2.0
# zr_room(NAME [PUBLIC_HEADERS header...] [ROOM_HEADERS header...] SOURCES source... [MAY_INCLUDE room...])
#
# Declares a room: the object library zr_NAME in the current folder. PUBLIC_HEADERS are the headers in include/ZRCore
# that the room owns; ROOM_HEADERS are those of its own folder that the rooms built on it may read too, as
# <folder/header>. A room sees its own headers and those of the rooms in MAY_INCLUDE (and of the rooms that these see),
# and no others: each room's headers are linked into a folder of their own, and only those folders are on the include
# path. An include that the architecture forbids therefore does not compile.
function(zr_room name)
  cmake_parse_arguments(PARSE_ARGV 1 room "" "" "PUBLIC_HEADERS;ROOM_HEADERS;SOURCES;MAY_INCLUDE")
  set(shelf "${PROJECT_BINARY_DIR}/rooms/${name}")
  foreach(header IN LISTS room_PUBLIC_HEADERS)
    get_filename_component(folder "${shelf}/ZRCore/${header}" DIRECTORY)
    file(MAKE_DIRECTORY "${folder}")
    file(CREATE_LINK "${PROJECT_SOURCE_DIR}/include/ZRCore/${header}" "${shelf}/ZRCore/${header}" SYMBOLIC)
  endforeach()

  get_filename_component(own_folder "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
  foreach(header IN LISTS room_ROOM_HEADERS)
    file(MAKE_DIRECTORY "${shelf}/${own_folder}")
    file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}/${header}" "${shelf}/${own_folder}/${header}" SYMBOLIC)
  endforeach()

  add_library(zr_${name} OBJECT ${room_SOURCES})
  target_include_directories(zr_${name} PUBLIC "${shelf}" PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
  target_compile_definitions(zr_${name} PRIVATE ZRCORE_BUILDING_LIBRARY)
  foreach(other IN LISTS room_MAY_INCLUDE)
    target_link_libraries(zr_${name} PUBLIC zr_${other})
  endforeach()
  set_property(GLOBAL APPEND PROPERTY ZR_ROOMS ${name})
endfunction()
