# What every target of this project is compiled with: link to velmora_warnings.
add_library(velmora_warnings INTERFACE)
target_compile_definitions(velmora_warnings INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CONTEXTLESS_CONNECT
    QT_NO_FOREACH
)
if(MSVC)
    target_compile_options(velmora_warnings INTERFACE /W4 /WX /utf-8)
else()
    target_compile_options(velmora_warnings INTERFACE
        -Wall -Wextra -Wshadow -Wconversion -Wpedantic -Werror
        -ffp-contract=off # the two shares of a load must add up to it on every processor
    )
endif()
