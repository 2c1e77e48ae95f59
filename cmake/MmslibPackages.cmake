# The Debian packages libmmslib0, libmmslib-dev and mmspdu, one for each component, built by cpack.
# To be configured with the prefix /usr, as scripts/check-packages does.

set(debian_dir "${PROJECT_SOURCE_DIR}/packaging/debian")
find_program(MMSLIB_GZIP gzip REQUIRED)

# The version of the packages is that of the changelog's first entry.
file(STRINGS "${debian_dir}/changelog" changelog_head LIMIT_COUNT 1)
if(NOT changelog_head MATCHES "^mmslib \\(${PROJECT_VERSION}-([0-9]+)\\) ")
    message(FATAL_ERROR "packaging/debian/changelog does not begin with version ${PROJECT_VERSION}")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE "${CMAKE_MATCH_1}")

# compress(<file> <name>): <name>.gz in the build directory, without a time stamp.
function(compress file name)
    execute_process(COMMAND "${MMSLIB_GZIP}" -9n
        INPUT_FILE "${file}"
        OUTPUT_FILE "${PROJECT_BINARY_DIR}/${name}.gz"
        COMMAND_ERROR_IS_FATAL ANY)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${file}")
endfunction()
compress("${debian_dir}/changelog" changelog.Debian)
compress("${PROJECT_SOURCE_DIR}/docs/mmspdu.1" mmspdu.1)

install(FILES "${PROJECT_BINARY_DIR}/mmspdu.1.gz"
    DESTINATION "${CMAKE_INSTALL_MANDIR}/man1"
    COMPONENT tool)

# debian_package(<component> <name> <section> <summary> <description line>...)
function(debian_package component name section summary)
    install(FILES "${debian_dir}/copyright" "${PROJECT_BINARY_DIR}/changelog.Debian.gz"
        DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/${name}"
        COMPONENT ${component})
    string(TOUPPER ${component} key)
    list(JOIN ARGN "\n" description)
    set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name} PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_SECTION "${section}" PARENT_SCOPE)
    set(CPACK_COMPONENT_${key}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
endfunction()

# CPack has no variable for the field Multi-Arch here; it follows the section on a line of its own.
debian_package(library libmmslib0 "libs\nMulti-Arch: same"
    "library to read and write MMS PDUs"
    "mmslib takes the binary messages of the Multimedia Messaging Service apart"
    "into headers and body parts, and puts them together again."
    "."
    "This package has the shared library.")
debian_package(development libmmslib-dev "libdevel\nMulti-Arch: same"
    "library to read and write MMS PDUs (development files)"
    "mmslib takes the binary messages of the Multimedia Messaging Service apart"
    "into headers and body parts, and puts them together again."
    "."
    "This package has the headers for C and C++, the static library, and files"
    "for pkg-config and CMake.")
debian_package(tool mmspdu utils
    "command-line tool that shows, recodes and checks MMS PDUs"
    "mmspdu reads binary messages of the Multimedia Messaging Service from files,"
    "prints their headers and parts, encodes them anew, and checks them.")

set(package_version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
# The trigger has ldconfig run. CPack adds scripts that run it too, unless it is told of scripts of
# these names; it leaves out files that are not there.
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${debian_dir}/triggers"
    "${debian_dir}/postinst" "${debian_dir}/postrm")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libmmslib0 (= ${package_version}), libc6-dev")
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "libmmslib0 (>= ${package_version})")
# The library is not installed when the packages are built.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL library development tool)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGE_CONTACT
    "Seed f0166b19 maintainers <maintainers@users.noreply.c-seed-f0166b19.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_DEBIAN_PACKAGE_SOURCE mmslib)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
