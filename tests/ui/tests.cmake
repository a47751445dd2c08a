# velmora_test(ui NAME) for each tst_NAME.cpp of this folder
