# SPDX-License-Identifier: Apache-2.0
# How every target of this project is compiled.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Results are promised to the last bit, so the compiler must not fuse a multiplication with an addition.
add_compile_options(-ffp-contract=off)

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion)
add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor> $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual>)
add_compile_options($<$<COMPILE_LANGUAGE:C>:-Wstrict-prototypes>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)  # GCC 12 sees overlaps in std::string's operator+ (PR105651)
endif()
if(ZRCORE_WERROR)
  add_compile_options(-Werror)
endif()

# A fault that an attacker has found is to end the process and not to be of use. Sanitizers see more, and get in the way
# of these.
if(NOT ZRCORE_SANITIZE)
  add_compile_options(-fstack-protector-strong -fstack-clash-protection)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64" AND CMAKE_SIZEOF_VOID_P EQUAL 8)
    add_compile_options(-fcf-protection)
  endif()
  add_compile_options("$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(LINKER:-z,relro,-z,now)
endif()

if(ZRCORE_SANITIZE)
  add_compile_options(-fsanitize=${ZRCORE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${ZRCORE_SANITIZE})
endif()
