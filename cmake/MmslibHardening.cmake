# mmslib_enable_hardening(<target>): compile and link options that make faults harder to exploit.

function(mmslib_enable_hardening target)
    # With immediate binding, calls go through the table of addresses without a stub in between.
    target_compile_options(${target} PRIVATE -fstack-protector-strong -fno-plt)
    target_link_options(${target} PRIVATE
        LINKER:-z,relro,-z,now
        LINKER:-z,noexecstack)

    # Fortified functions need optimisation, and they hide faults from the sanitizers.
    if(NOT MMSLIB_SANITIZE)
        target_compile_options(${target} PRIVATE
            $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE>
            $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-D_FORTIFY_SOURCE=2>)
    endif()
endfunction()
