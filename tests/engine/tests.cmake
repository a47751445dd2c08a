# velmora_test(engine NAME) for each tst_NAME.cpp of this folder
