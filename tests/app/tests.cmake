# velmora_test(app NAME) for each tst_NAME.cpp of this folder
velmora_test(app locale)
velmora_test(app desktop)
velmora_test(app commandline)
velmora_test(app summary)
