# SPDX-License-Identifier: Apache-2.0
# zr_room(NAME [PART_OF library | APART] [FOLDER folder] [PUBLIC_HEADERS header...] [ROOM_HEADERS header...]
#         [SOURCES source...] [MAY_INCLUDE room...] [LIBRARIES target...] [SMALL])
#
# Declares a room: the library zr_NAME of the current folder, or of FOLDER in it. PUBLIC_HEADERS are the headers in
# include/ZRCore that the room owns; ROOM_HEADERS are those of its own folder that the rooms built on it may read too,
# as <folder/header>. A room sees its own headers and those of the rooms in MAY_INCLUDE (and of the rooms that these
# see), and no others: each room's headers are linked into a folder of their own, and only those folders are on the
# include path. An include that the architecture forbids therefore does not compile.
#
# A room is part of libZRCore, or of the library that PART_OF names; one that is APART is a static library. Rooms of
# other libraries are seen, not linked: whoever links a room links these too, as libraries or as their objects.
# LIBRARIES are what the room stands on besides. A room without sources has headers alone. SMALL: it is compiled for
# size, because nothing in it is done often.
function(zr_room name)
  cmake_parse_arguments(PARSE_ARGV 1 room "APART;SMALL" "PART_OF;FOLDER"
                        "PUBLIC_HEADERS;ROOM_HEADERS;SOURCES;MAY_INCLUDE;LIBRARIES")
  cmake_path(SET home NORMALIZE "${CMAKE_CURRENT_SOURCE_DIR}/${room_FOLDER}/.")
  cmake_path(GET home PARENT_PATH home)
  cmake_path(GET home FILENAME folder)
  set(shelf "${PROJECT_BINARY_DIR}/rooms/${name}")
  foreach(header IN LISTS room_PUBLIC_HEADERS)
    zr_shelve("${PROJECT_SOURCE_DIR}/include/ZRCore/${header}" "${shelf}/ZRCore/${header}")
  endforeach()
  foreach(header IN LISTS room_ROOM_HEADERS)
    zr_shelve("${home}/${header}" "${shelf}/${folder}/${header}")
  endforeach()
  zr_shelve("${home}" "${shelf}.own/${folder}")

  set(scope PUBLIC)
  set(library ZRCore)
  if(room_PART_OF)
    set(library ${room_PART_OF})
  endif()
  if(NOT room_SOURCES)
    set(scope INTERFACE)
    set(library "")
    add_library(zr_${name} INTERFACE)
  elseif(room_APART)
    set(library "")
    add_library(zr_${name} STATIC)
  else()
    add_library(zr_${name} OBJECT)
    target_compile_definitions(zr_${name} PRIVATE ZRCORE_BUILDING_LIBRARY)
    set_property(GLOBAL APPEND PROPERTY ZR_ROOMS_${library} ${name})
  endif()
  if(room_SOURCES)
    list(TRANSFORM room_SOURCES PREPEND "${home}/")
    target_sources(zr_${name} PRIVATE ${room_SOURCES})
    target_include_directories(zr_${name} PRIVATE "${home}" "${shelf}.own")
  endif()
  if(room_SMALL)
    target_compile_options(zr_${name} PRIVATE $<$<CONFIG:Release>:-Os>)
  endif()
  set_target_properties(zr_${name} PROPERTIES ZR_LIBRARY "${library}")
  target_include_directories(zr_${name} ${scope} "${shelf}")
  target_link_libraries(zr_${name} ${scope} ${room_LIBRARIES})
  foreach(other IN LISTS room_MAY_INCLUDE)
    get_target_property(others_library zr_${other} ZR_LIBRARY)
    if(others_library STREQUAL "" OR others_library STREQUAL library)
      target_link_libraries(zr_${name} ${scope} zr_${other})
    else()
      target_include_directories(zr_${name} ${scope} $<TARGET_PROPERTY:zr_${other},INTERFACE_INCLUDE_DIRECTORIES>)
    endif()
  endforeach()
endfunction()

# Links a header, or a folder of them, to its place on a shelf.
function(zr_shelve from to)
  get_filename_component(folder "${to}" DIRECTORY)
  file(MAKE_DIRECTORY "${folder}")
  file(CREATE_LINK "${from}" "${to}" SYMBOLIC)
endfunction()

# All rooms of a library: NAME links them, and shows what `zr_room` hides, for tests that look inside.
function(zr_room_objects name library)
  get_property(rooms GLOBAL PROPERTY ZR_ROOMS_${library})
  add_library(${name} INTERFACE)
  foreach(room IN LISTS rooms)
    target_link_libraries(${name} INTERFACE zr_${room})
    target_sources(${name} INTERFACE $<TARGET_OBJECTS:zr_${room}>)
    target_include_directories(${name} INTERFACE "${PROJECT_BINARY_DIR}/rooms/${room}.own")
  endforeach()
endfunction()
