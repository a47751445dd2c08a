# velmora_test(app NAME) for each tst_NAME.cpp of this folder
velmora_test(app locale LIBRARY velmora_batch)
velmora_test(app desktop LIBRARY velmora_batch)
velmora_test(app commandline LIBRARY velmora_batch)
velmora_test(app summary LIBRARY velmora_batch)
velmora_test(app contrast LIBRARY velmora_batch)
velmora_test(app csv LIBRARY velmora_batch)
velmora_test(app appearance LIBRARY velmora_batch)
foreach(name program contrastprogram)
    velmora_test(app ${name} LIBRARY velmora_batch)
    target_compile_definitions(tst_app_${name} PRIVATE
        VELMORA_EXECUTABLE="$<TARGET_FILE:velmora-master>"
    )
    add_dependencies(tst_app_${name} velmora-master)
endforeach()
velmora_test(app guide)
if(TARGET velmora_guide) # the guide is to lie beside the executable
    add_dependencies(tst_app_guide velmora_guide)
endif()
