# Applies the sanitizers named in MMSLIB_SANITIZE to everything below the including directory.

if(MMSLIB_SANITIZE)
    add_compile_options(
        "-fsanitize=${MMSLIB_SANITIZE}"
        -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
    add_link_options("-fsanitize=${MMSLIB_SANITIZE}")
    if(MMSLIB_SANITIZE MATCHES "undefined")
        # These two compare C++ type information, which the library is compiled without.
        add_compile_options(
            $<$<COMPILE_LANGUAGE:CXX>:-fno-sanitize=vptr>
            $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-fno-sanitize=function>)
    endif()
endif()
