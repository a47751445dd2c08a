# velmora_test(io NAME) for each tst_NAME.cpp of this folder
velmora_test(io examples)
velmora_test(io htmlreport)
velmora_test(io projectfigures)
velmora_test(io projectfile)
velmora_test(io reportpage)
velmora_test(io safefile)
velmora_test(io windowfiles)
velmora_test(io windowreports)
