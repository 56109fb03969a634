# SPDX-License-Identifier: Apache-2.0
# A component is installed whole, or it is said what is missing, and nothing is written.
include("${TESTS}/common.cmake")

file(REMOVE_RECURSE "${STAGE}")
set(build "${STAGE}/build")
set(prefix "${STAGE}/prefix")
set(install ${CMAKE_COMMAND} --install "${build}" --prefix "${prefix}")
run(${CMAKE_COMMAND} -S "${PROJECT}" -B "${build}" -G ${GENERATOR} -DCMAKE_BUILD_TYPE=${BUILD_TYPE}
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_C_COMPILER=${CC} -DCMAKE_INSTALL_LIBDIR=${LIBDIR} -DZRCORE_BUILD_TESTS=OFF
    -DZRCORE_BUILD_GTK=${HAS_WINDOW})
expect_failure("Nothing has been built" ${install})

# As far as the demonstration builds.
file(GLOB libraries "${BUILD}/${LIBDIR}/libZRCore.so*" "${BUILD}/${LIBDIR}/libZRCoreLinux.so*")
file(COPY ${libraries} DESTINATION "${build}/${LIBDIR}")
file(COPY "${BUILD}/bin/zrcore" DESTINATION "${build}/bin")
file(COPY "${BUILD}/platform/json/libZRCoreJSON.a" DESTINATION "${build}/platform/json")
file(COPY "${BUILD}/pages" DESTINATION "${build}")

expect_failure("There is no component \"tols\"" ${install} --component tols)
if(HAS_WINDOW)
  expect_failure("--target ZRCoreGtk zrcore-demo" ${install} --component window)
else()
  expect_failure("zrcore-demo is not part of this build" ${install} --component window)
endif()
expect_paths(ABSENT "${prefix}")

set(library "${prefix}/${LIBDIR}/libZRCore.so.1")
run(${install} --component tool)
run("${prefix}/bin/zrcore" --version)
expect_paths(ABSENT "${prefix}/include" "${prefix}/${LIBDIR}/libZRCore.so" "${prefix}/${LIBDIR}/pkgconfig")
run(${install})
expect_paths(EXIST "${library}" "${prefix}/include/ZRCore" "${prefix}/${LIBDIR}/pkgconfig/ZRCoreJSON.pc")
expect_paths(ABSENT "${prefix}/${LIBDIR}/pkgconfig/ZRCoreGtk.pc" "${prefix}/${LIBDIR}/pkgconfig/ZRCoreFake.pc"
             "${prefix}/share/applications")

file(WRITE "${prefix}/share/zrcore/of-the-user" "")
run(${CMAKE_COMMAND} --build "${build}" --target uninstall)
file(GLOB_RECURSE left RELATIVE "${prefix}" "${prefix}/*")
if(NOT left STREQUAL "share/zrcore/of-the-user" OR IS_DIRECTORY "${prefix}/include/ZRCore")
  message(FATAL_ERROR "Left behind: ${left}")
endif()
