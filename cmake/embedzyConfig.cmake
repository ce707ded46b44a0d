# find_package(embedzy) gives the target embedzy::embedzy and EMBEDZY_HOME, the folder that a host
# passes as option.zyhome.
get_filename_component(EMBEDZY_HOME "${CMAKE_CURRENT_LIST_DIR}/../../../toolkit/embedzy" ABSOLUTE)
if(NOT TARGET embedzy::embedzy)
    add_library(embedzy::embedzy SHARED IMPORTED)
    set_target_properties(embedzy::embedzy PROPERTIES
        IMPORTED_LOCATION "${EMBEDZY_HOME}/extern/lib/libembedzy.so"
        IMPORTED_NO_SONAME TRUE
        INTERFACE_INCLUDE_DIRECTORIES "${EMBEDZY_HOME}/extern/include"
        # A host that names the library's data must not get a copy of its own.
        INTERFACE_COMPILE_OPTIONS "-fPIC")
endif()
