# What tools/kill-save.sh kills while it saves.
add_executable(saver robustness/saver.cpp)
target_link_libraries(saver PRIVATE velmora velmora_warnings)

# What tools/kill-session.sh runs.
if(UNIX)
    add_executable(session robustness/session.cpp)
    target_link_libraries(session PRIVATE velmora velmora_warnings)
endif()

# Whether leaks are told at all.
if(CMAKE_CXX_FLAGS MATCHES "-fsanitize=[a-z,-]*address")
    add_executable(leak robustness/leak.cpp)
    target_link_libraries(leak PRIVATE velmora_warnings)
    add_test(NAME robustness.leak COMMAND leak)
    set_tests_properties(robustness.leak PROPERTIES
        LABELS robustness
        PASS_REGULAR_EXPRESSION "LeakSanitizer: detected memory leaks"
    )
endif()
