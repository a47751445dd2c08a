# velmora_test(app NAME) for each tst_NAME.cpp of this folder
velmora_test(app locale LIBRARY velmora_batch)
velmora_test(app desktop LIBRARY velmora_batch)
velmora_test(app commandline LIBRARY velmora_batch)
velmora_test(app summary LIBRARY velmora_batch)
velmora_test(app contrast LIBRARY velmora_batch)
velmora_test(app csv LIBRARY velmora_batch)
velmora_test(app appearance LIBRARY velmora_batch)
velmora_test(app legibility LIBRARY velmora_batch)
foreach(name program contrastprogram sheetprogram)
    velmora_test(app ${name} LIBRARY velmora_batch)
    target_compile_definitions(tst_app_${name} PRIVATE
        VELMORA_EXECUTABLE="$<TARGET_FILE:velmora-master>"
    )
    add_dependencies(tst_app_${name} velmora-master)
endforeach()
# The documents that the program prints, against their published schema.
add_test(NAME app.schema
    COMMAND python3 "${CMAKE_CURRENT_SOURCE_DIR}/app/check_schema.py" "$<TARGET_FILE:velmora-master>"
        "${PROJECT_SOURCE_DIR}"
)
set_tests_properties(app.schema PROPERTIES LABELS app SKIP_RETURN_CODE 77 TIMEOUT 120)
add_dependencies(tst_app_program velmora-master)
velmora_test(app recovery LIBRARY velmora_batch)
target_compile_definitions(tst_app_recovery PRIVATE
    VELMORA_EXECUTABLE="$<TARGET_FILE:velmora-master>"
)
add_dependencies(tst_app_recovery velmora-master)
velmora_test(app guide)
if(TARGET velmora_guide) # the guide is to lie beside the executable
    add_dependencies(tst_app_guide velmora_guide)
endif()
