# velmora_test(io NAME) for each tst_NAME.cpp of this folder
velmora_test(io browser LIBRARY velmora_io)
velmora_test(io calculationsheet LIBRARY velmora_io)
velmora_test(io consolidatedreport LIBRARY velmora_io)
velmora_test(io examples LIBRARY velmora_io)
velmora_test(io htmlreport LIBRARY velmora_io)
velmora_test(io markup)
velmora_test(io paths HEADERS support/Browser.h)
velmora_test(io projectfile LIBRARY velmora_io)
velmora_test(io reportpage)
velmora_test(io reportprogress)
velmora_test(io safefile LIBRARY velmora_io)
# What the program has on systems without POSIX comes before what it has here.
velmora_test(io safefileportable LIBRARY velmora_io HEADERS "${PROJECT_SOURCE_DIR}/src/io/SafeFilePortable.cpp")
velmora_test(io saveway LIBRARY velmora_io)
velmora_test(io sheettext LIBRARY velmora_io)
velmora_test(io windowfiles)
velmora_test(io windowreports HEADERS support/Browser.h)

# Owners, groups, permissions and links are those of POSIX.
if(NOT UNIX)
    return()
endif()
velmora_test(io pipes LIBRARY velmora_io)
velmora_test(io sharedfiles LIBRARY velmora_io)
velmora_test(io sharedfolders LIBRARY velmora_io)
add_dependencies(tst_io_sharedfolders saver)
target_compile_definitions(tst_io_sharedfolders PRIVATE VELMORA_SAVER="$<TARGET_FILE:saver>")

# It puts its own calls in the place of the C library's.
if(NOT CMAKE_SYSTEM_NAME STREQUAL "Linux")
    return()
endif()
velmora_test(io diskfailures LIBRARY velmora_io)
