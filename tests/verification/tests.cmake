# Prints docs/verification.md; the test tells whether that page is up to date.
add_executable(verification
    verification/Case.h
    verification/ContinuousBeamCases.cpp
    verification/ContinuousBeamCases.h
    verification/verification.cpp
)
target_link_libraries(verification PRIVATE velmora_test_support velmora_engine)
target_compile_definitions(verification PRIVATE VELMORA_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
add_test(NAME engine.verification COMMAND verification "${PROJECT_SOURCE_DIR}/docs/verification.md")
set_tests_properties(engine.verification PROPERTIES LABELS engine)
