# What makes a build quicker and nothing else: the same objects and programs come out without it.
# ccache and the linkers are used where they are found.

option(VELMORA_PCH "Read Qt's headers once for each library, not once for each source" ON)

# What the compiler made once in a folder is not made again there. Sources that use precompiled
# headers are kept only with this sloppiness: neither header nor source may ask for the time.
find_program(VELMORA_CCACHE ccache)
if(VELMORA_CCACHE AND UNIX AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        env CCACHE_DEPEND=1 CCACHE_SLOPPINESS=pch_defines,time_macros "${VELMORA_CCACHE}"
    )
endif()
if(VELMORA_PCH AND CMAKE_CXX_COMPILER_ID MATCHES Clang AND NOT MSVC)
    add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
endif()

# velmora_fast_linker(TARGET): whatever links to the INTERFACE library TARGET is linked by the
# quickest linker there is. For the tests: they are many, and nobody installs them.
function(velmora_fast_linker target)
    include(CheckLinkerFlag)
    foreach(linker IN ITEMS mold lld gold)
        check_linker_flag(CXX -fuse-ld=${linker} VELMORA_LINKS_WITH_${linker})
        if(VELMORA_LINKS_WITH_${linker})
            target_link_options(${target} INTERFACE -fuse-ld=${linker})
            return()
        endif()
    endforeach()
endfunction()

# velmora_precompiled(NAME LIBRARIES … HEADERS …): the headers, compiled once as a source is that
# links to the libraries.
function(velmora_precompiled name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES;HEADERS")
    if(NOT VELMORA_PCH)
        return()
    endif()
    set(source "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "")
    add_library(${name} OBJECT "${source}")
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTORCC OFF)
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES})
    target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
endfunction()

# velmora_use_precompiled(NAME TARGET …): the targets' sources find these headers read already.
# They have to include what they use all the same: VELMORA_PCH=OFF is how the tools read them.
function(velmora_use_precompiled name)
    if(NOT VELMORA_PCH)
        return()
    endif()
    foreach(target IN LISTS ARGN)
        target_precompile_headers(${target} REUSE_FROM ${name})
    endforeach()
endfunction()
