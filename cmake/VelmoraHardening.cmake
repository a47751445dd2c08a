# What people run is built so that a mistake of ours in handling memory ends the program instead of being
# used by whoever made the file: libraries and program link to velmora_hardened. tools/hardening.sh looks
# whether it is so in the built program. Only where the optimiser is at work: the source fortification
# needs it, and debuggers do without.
add_library(velmora_hardened INTERFACE)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND UNIX AND NOT APPLE)
    include(CheckCXXCompilerFlag)
    foreach(flag IN ITEMS -fstack-protector-strong -fstack-clash-protection -fcf-protection)
        string(MAKE_C_IDENTIFIER "VELMORA_HAS${flag}" has)
        check_cxx_compiler_flag(${flag} ${has})
        if(${has})
            target_compile_options(velmora_hardened INTERFACE $<$<CONFIG:Release>:${flag}>)
        endif()
    endforeach()
    target_compile_options(velmora_hardened INTERFACE
        $<$<CONFIG:Release>:-U_FORTIFY_SOURCE> $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>
    )
    target_link_options(velmora_hardened INTERFACE
        -pie -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack
    )
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()
