# SPDX-License-Identifier: Apache-2.0
# zr_room(NAME [APART] [PUBLIC_HEADERS header...] [ROOM_HEADERS header...] SOURCES source... [MAY_INCLUDE room...]
#         [LIBRARIES target...])
#
# Declares a room: the library zr_NAME in the current folder. PUBLIC_HEADERS are the headers in include/ZRCore
# that the room owns; ROOM_HEADERS are those of its own folder that the rooms built on it may read too, as
# <folder/header>. A room sees its own headers and those of the rooms in MAY_INCLUDE (and of the rooms that these see),
# and no others: each room's headers are linked into a folder of their own, and only those folders are on the include
# path. An include that the architecture forbids therefore does not compile.
#
# A room is part of libZRCore; one that is APART is a static library, whose user links libZRCore, or a test the rooms'
# objects, for what it calls of them. LIBRARIES are what the sources stand on besides.
function(zr_room name)
  cmake_parse_arguments(PARSE_ARGV 1 room "APART" "" "PUBLIC_HEADERS;ROOM_HEADERS;SOURCES;MAY_INCLUDE;LIBRARIES")
  set(shelf "${PROJECT_BINARY_DIR}/rooms/${name}")
  file(MAKE_DIRECTORY "${shelf}")
  get_filename_component(own_folder "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
  list(TRANSFORM room_PUBLIC_HEADERS PREPEND "ZRCore/")
  list(TRANSFORM room_ROOM_HEADERS PREPEND "${own_folder}/")
  foreach(header IN LISTS room_PUBLIC_HEADERS room_ROOM_HEADERS)
    set(home "${PROJECT_SOURCE_DIR}/include")
    if(header IN_LIST room_ROOM_HEADERS)
      set(home "${CMAKE_CURRENT_SOURCE_DIR}/..")
    endif()
    get_filename_component(folder "${shelf}/${header}" DIRECTORY)
    file(MAKE_DIRECTORY "${folder}")
    file(CREATE_LINK "${home}/${header}" "${shelf}/${header}" SYMBOLIC)
  endforeach()

  if(room_APART)
    add_library(zr_${name} STATIC ${room_SOURCES})
    foreach(other IN LISTS room_MAY_INCLUDE)
      target_include_directories(zr_${name} PUBLIC $<TARGET_PROPERTY:zr_${other},INTERFACE_INCLUDE_DIRECTORIES>)
    endforeach()
  else()
    add_library(zr_${name} OBJECT ${room_SOURCES})
    target_compile_definitions(zr_${name} PRIVATE ZRCORE_BUILDING_LIBRARY)
    list(TRANSFORM room_MAY_INCLUDE PREPEND zr_ OUTPUT_VARIABLE others)
    target_link_libraries(zr_${name} PUBLIC ${others})
    set_property(GLOBAL APPEND PROPERTY ZR_ROOMS ${name})
  endif()
  target_include_directories(zr_${name} PUBLIC "${shelf}" PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
  target_link_libraries(zr_${name} PRIVATE ${room_LIBRARIES})
endfunction()
