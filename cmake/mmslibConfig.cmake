# find_package(mmslib): the targets mmslib::mmslib (shared) and mmslib::mmslib_static.

include("${CMAKE_CURRENT_LIST_DIR}/mmslibTargets.cmake")

# The objects come from C++ and use nothing of its runtime: programs in C link without it.
get_target_property(mmslib_configurations mmslib::mmslib_static IMPORTED_CONFIGURATIONS)
foreach(configuration IN LISTS mmslib_configurations)
    set_property(TARGET mmslib::mmslib_static
        PROPERTY "IMPORTED_LINK_INTERFACE_LANGUAGES_${configuration}" C)
endforeach()
unset(mmslib_configurations)
