# mmslib_enable_warnings(<target>): the warnings that all code of this project compiles without,
# with g++ as well as with clang++.

function(mmslib_enable_warnings target)
    target_compile_options(${target} PRIVATE
        -Wall
        -Wextra
        -Wpedantic
        -Wconversion
        -Wsign-conversion
        -Wshadow
        -Wcast-qual
        -Wformat=2
        -Wundef
        -Wnull-dereference
        $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>
        $<$<COMPILE_LANGUAGE:C>:-Wstrict-prototypes>)

    if(MMSLIB_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
        if(MMSLIB_SANITIZE)
            # The checks that a sanitizer inserts make g++ see paths that the code does not have.
            # These warnings stay visible there; the other builds keep them as errors.
            target_compile_options(${target} PRIVATE
                -Wno-error=null-dereference
                $<$<COMPILE_LANG_AND_ID:C,GNU>:-Wno-error=maybe-uninitialized>
                $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-error=maybe-uninitialized>)
        endif()
    endif()
endfunction()

# mmslib_allow_inlined_library_code(<target>): for C++ code that uses containers and strings of the
# standard library; g++ suspects null pointers inside of them once they are inlined.
function(mmslib_allow_inlined_library_code target)
    target_compile_options(${target} PRIVATE
        $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-null-dereference>)
endfunction()
