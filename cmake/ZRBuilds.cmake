# SPDX-License-Identifier: Apache-2.0
# zr_builds(ROOM [FUSED source...] [WIDE source...])
#
# Numbers are computed by sources that are compiled for several processors, of which the running one is chosen when the
# library is loaded: FUSED for those with AVX2 and fused multiply-add, WIDE for those with AVX-512. Each such source has
# a namespace of its own and inlines what it uses (geometry/exact/Lanes.h). Elsewhere than on x86-64 there is one build.
function(zr_builds room)
  cmake_parse_arguments(PARSE_ARGV 1 build "" "" "FUSED;WIDE")
  # Neither errno nor floating point exceptions are asked for; without this a square root is a call.
  target_compile_options(zr_${room} PRIVATE -fno-math-errno -fno-trapping-math)
  if(NOT CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64" OR NOT CMAKE_SIZEOF_VOID_P EQUAL 8)
    return()
  endif()
  target_compile_definitions(zr_${room} PRIVATE ZR_EXACT_HAS_BUILDS)
  target_sources(zr_${room} PRIVATE ${build_FUSED} ${build_WIDE})
  set_source_files_properties(${build_FUSED} ${build_WIDE} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  set_source_files_properties(${build_FUSED} PROPERTIES COMPILE_OPTIONS "-mavx2;-mfma")
  set_source_files_properties(${build_WIDE} PROPERTIES COMPILE_OPTIONS "-mavx2;-mfma;-mavx512f;-mavx512dq;-mavx512vl")
endfunction()
