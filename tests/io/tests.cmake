# velmora_test(io NAME) for each tst_NAME.cpp of this folder
