# What tools/kill-save.sh kills while it saves.
add_executable(saver robustness/saver.cpp)
target_link_libraries(saver PRIVATE velmora velmora_warnings)

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
