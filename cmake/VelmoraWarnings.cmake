# What every target of this project is compiled with: link to velmora_warnings.
#
# Warnings are errors for whoever works on the code. For whoever only builds the program they are
# not: a later compiler that warns of more must not keep it from them.
option(VELMORA_WARNINGS_AS_ERRORS "Stop at the first warning" ON)

add_library(velmora_warnings INTERFACE)
target_compile_definitions(velmora_warnings INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CONTEXTLESS_CONNECT
    QT_NO_FOREACH
)
if(MSVC)
    target_compile_options(velmora_warnings INTERFACE /W4 /utf-8)
else()
    target_compile_options(velmora_warnings INTERFACE
        -Wall -Wextra -Wshadow -Wconversion -Wpedantic
        -ffp-contract=off # the two shares of a load must add up to it on every processor
    )
    # Qt declares "QSKIP(statement, ...)" and documents its use with a statement alone.
    target_compile_options(velmora_warnings INTERFACE
        "$<$<CXX_COMPILER_ID:Clang,AppleClang>:-Wno-gnu-zero-variadic-macro-arguments>"
    )
endif()
if(VELMORA_WARNINGS_AS_ERRORS)
    target_compile_options(velmora_warnings INTERFACE "$<IF:$<CXX_COMPILER_ID:MSVC>,/WX,-Werror>")
endif()
