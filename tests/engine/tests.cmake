# velmora_test(engine NAME) for each tst_NAME.cpp of this folder
velmora_test(engine ledarray)
velmora_test(engine model)
velmora_test(engine numbers)
velmora_test(engine placing)
velmora_test(engine pointloads)
velmora_test(engine properties)
velmora_test(engine reactions)
velmora_test(engine stress)
