# velmora_test(ui NAME) for each tst_NAME.cpp of this folder
velmora_test(ui startup)
velmora_test(ui undo)
velmora_test(ui controls)
velmora_test(ui screens)
velmora_test(ui results)
velmora_test(ui selection_table)
velmora_test(ui tabs)
