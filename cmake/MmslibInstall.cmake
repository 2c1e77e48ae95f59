# What `cmake --install` puts where. The components are those of the Debian packages.

include(CMakePackageConfigHelpers)

set(cmake_dir "${CMAKE_INSTALL_LIBDIR}/cmake/mmslib")

# --- libraries -----------------------------------------------------------------------------------

install(TARGETS mmslib mmslib_static
    EXPORT mmslib
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        COMPONENT library NAMELINK_COMPONENT development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        COMPONENT development)

# --- for programs that use them --------------------------------------------------------------------

# The public headers include each other by their places in the source tree, which they keep below
# a directory of their own; a header of one line in front of them is what programs include.
foreach(header
    util/base.h util/util.h vocab/vocab.h model/model.h codec/codec.h decoder/decoder.h
    encoder/encoder.h api/api.h api/mmslib.h api/mmslib.hpp api/cxx/values.hpp api/cxx/bridge.hpp)
    cmake_path(GET header PARENT_PATH folder)
    install(FILES "${PROJECT_SOURCE_DIR}/src/${header}"
        DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/mmslib/${folder}"
        COMPONENT development)
endforeach()
foreach(header mmslib.h mmslib.hpp)
    file(CONFIGURE OUTPUT "${PROJECT_BINARY_DIR}/include/${header}"
        CONTENT "#include \"mmslib/api/@header@\"\n" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/include/${header}"
        DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
        COMPONENT development)
endforeach()

install(EXPORT mmslib
    NAMESPACE mmslib::
    DESTINATION "${cmake_dir}"
    FILE mmslibTargets.cmake
    COMPONENT development)
# Before version 1 a new minor version may change the interface.
write_basic_package_version_file("${PROJECT_BINARY_DIR}/mmslibConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES "${CMAKE_CURRENT_LIST_DIR}/mmslibConfig.cmake"
    "${PROJECT_BINARY_DIR}/mmslibConfigVersion.cmake"
    DESTINATION "${cmake_dir}"
    COMPONENT development)

# The prefix is chosen, and may change, after this file is written: it is named relative to it.
set(pkgconfig_dir "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig")
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY "${pkgconfig_dir}"
    OUTPUT_VARIABLE pkgconfig_prefix)
configure_file("${CMAKE_CURRENT_LIST_DIR}/mmslib.pc.in" "${PROJECT_BINARY_DIR}/mmslib.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/mmslib.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
    COMPONENT development)

# --- the command-line tool -------------------------------------------------------------------------

if(TARGET mmspdu)
    # The tool finds the library of its own prefix, wherever that is. Packages, which install into
    # the directories of the system, set CMAKE_SKIP_INSTALL_RPATH.
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR
        BASE_DIRECTORY "${CMAKE_INSTALL_FULL_BINDIR}" OUTPUT_VARIABLE library_dir)
    set_target_properties(mmspdu PROPERTIES INSTALL_RPATH "$ORIGIN/${library_dir}")
    install(TARGETS mmspdu
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT tool)
    install(FILES "${PROJECT_SOURCE_DIR}/tools/mmspdu/completion/mmspdu"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions"
        COMPONENT tool)
endif()

# --- documents -------------------------------------------------------------------------------------

if(MMSLIB_DEBIAN_PACKAGES)
    include(MmslibPackages)
    return()
endif()
if(TARGET mmspdu)
    install(FILES "${PROJECT_SOURCE_DIR}/docs/mmspdu.1"
        DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tool)
endif()
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" "${PROJECT_SOURCE_DIR}/README.md"
    "${PROJECT_SOURCE_DIR}/SECURITY.md"
    DESTINATION "${CMAKE_INSTALL_DOCDIR}"
    COMPONENT development)
