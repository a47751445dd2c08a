# Read by CTest when it starts: windows stay off screen, unless VELMORA_PLATFORM names another of
# Qt's platforms.
set(ENV{QT_QPA_PLATFORM} offscreen)
if(NOT "$ENV{VELMORA_PLATFORM}" STREQUAL "")
    set(ENV{QT_QPA_PLATFORM} "$ENV{VELMORA_PLATFORM}")
endif()
