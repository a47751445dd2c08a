# velmora_test(canvas NAME) for each tst_NAME.cpp of this folder
