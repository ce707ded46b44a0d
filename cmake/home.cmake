# The home: one set of install rules lays it out, for the staged home of every build (the target
# "home") and for `cmake --install` alike.

set(toolkit toolkit/embedzy)

# The library and its copies are the same bytes, each a file of its own: the loader knows a file by
# device and inode, so links would give all instances one image. They are written by `cp`, not by
# CMake: of a file written in large pieces the system keeps large blocks in its cache, and mapping
# those takes a sixth off the whole life of an instance.
install(CODE "set(library \"$<TARGET_FILE:embedzy>\")\nset(copies ${ZY_COPIES})")
install(CODE [[
    set(folder "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/toolkit/embedzy/extern/lib")
    file(MAKE_DIRECTORY "${folder}")
    set(names libembedzy.so)
    foreach(number RANGE 1 ${copies})
        list(APPEND names zymt${number}.dl)
    endforeach()
    foreach(name ${names})
        # Never in place: a running instance keeps the old file.
        execute_process(COMMAND cp --remove-destination "${library}" "${folder}/${name}"
                        COMMAND_ERROR_IS_FATAL ANY)
        list(APPEND CMAKE_INSTALL_MANIFEST_FILES "${folder}/${name}")
    endforeach()
]])
install(FILES extern/include/embedzy.h DESTINATION ${toolkit}/extern/include)

install(PROGRAMS $<TARGET_FILE:zy> DESTINATION bin)
install(DIRECTORY home/config home/include home/lib DESTINATION .)
install(DIRECTORY home/config/ DESTINATION ${toolkit}/config)
install(CODE [[
    set(home "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}")
    file(MAKE_DIRECTORY "${home}/include" "${home}/lib" "${home}/dl")
    file(CREATE_LINK zy "${home}/bin/zys" SYMBOLIC)
    foreach(folder include lib dl)
        file(CREATE_LINK ../../${folder} "${home}/toolkit/embedzy/${folder}" SYMBOLIC)
    endforeach()
]])

# How a host finds the library: pkg-config and CMake, both relative to where they lie.
configure_file(cmake/embedzy.pc.in embedzy.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/embedzy.pc DESTINATION lib/pkgconfig)
include(CMakePackageConfigHelpers)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/embedzyConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES cmake/embedzyConfig.cmake ${CMAKE_BINARY_DIR}/embedzyConfigVersion.cmake
        DESTINATION lib/cmake/embedzy)

# Staged anew when something in it changed.
file(GLOB_RECURSE homeSources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/home/*)
add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/home.stamp
    COMMAND ${CMAKE_COMMAND} -DCMAKE_INSTALL_PREFIX=${ZY_HOME_DIR} -DCMAKE_INSTALL_LOCAL_ONLY=ON
            -DCMAKE_INSTALL_MESSAGE=NEVER -P ${CMAKE_BINARY_DIR}/cmake_install.cmake
    COMMAND ${CMAKE_COMMAND} -E touch ${CMAKE_BINARY_DIR}/home.stamp
    DEPENDS embedzy zy ${homeSources} ${CMAKE_SOURCE_DIR}/extern/include/embedzy.h
            ${CMAKE_CURRENT_LIST_FILE} ${CMAKE_BINARY_DIR}/embedzy.pc
            ${CMAKE_SOURCE_DIR}/cmake/embedzyConfig.cmake
    COMMENT "Staging ${ZY_HOME_DIR}")
add_custom_target(home ALL DEPENDS ${CMAKE_BINARY_DIR}/home.stamp)
