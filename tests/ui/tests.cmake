# velmora_test(ui NAME) for each tst_NAME.cpp of this folder
velmora_test(ui startup)
velmora_test(ui undo)
