# velmora_test(app NAME) for each tst_NAME.cpp of this folder
velmora_test(app locale)
velmora_test(app desktop)
velmora_test(app commandline)
velmora_test(app summary)
velmora_test(app guide)
if(TARGET velmora_guide) # the guide is to lie beside the executable
    add_dependencies(tst_app_guide velmora_guide)
endif()
