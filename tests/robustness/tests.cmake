# What tools/kill-save.sh kills while it saves.
add_executable(saver robustness/saver.cpp)
target_link_libraries(saver PRIVATE velmora velmora_warnings)
