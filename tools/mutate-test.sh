#!/usr/bin/env bash
# Tests tools/mutate.py on a program of two small libraries, where it is known what becomes of each
# mutant. Prints one line a test and ends with their number.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

need_packages cmake g++ ninja-build python3 lld
export VELMORA_MUTATED
VELMORA_MUTATED=$(mktemp -d)
trap 'rm -rf -- "$VELMORA_MUTATED"' EXIT
cd -- "$VELMORA_MUTATED"
mkdir -p src/engine src/io tests/engine tests/io docs

cat >CMakeLists.txt <<'FILE'
cmake_minimum_required(VERSION 3.22)
project(example LANGUAGES CXX)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
add_subdirectory(src)
add_subdirectory(tests)
FILE
cat >src/CMakeLists.txt <<'FILE'
add_library(left STATIC engine/Sum.cpp engine/Unused.cpp)
target_include_directories(left PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
add_library(right STATIC io/Text.cpp)
target_link_libraries(right PUBLIC left)
FILE
cat >tests/CMakeLists.txt <<'FILE'
function(velmora_test folder name)
    add_executable(tst_${folder}_${name} ${folder}/tst_${name}.cpp)
    target_link_libraries(tst_${folder}_${name} PRIVATE right)
endfunction()
include(engine/tests.cmake)
include(io/tests.cmake)
FILE
echo 'velmora_test(engine sum)' >tests/engine/tests.cmake
echo 'velmora_test(io text)' >tests/io/tests.cmake

cat >src/engine/Sum.h <<'FILE'
int sum(int a, int b);
unsigned long long emptied(unsigned long long n);
inline int twice(int a)
{
    return a + a;
}
FILE
cat >src/engine/Sum.cpp <<'FILE'
#include "engine/Sum.h"
int sum(int a, int b)
{
    // a + b, and "a + b" too
    int result = 0;
    result = a + b;
    return result;
}
unsigned long long emptied(unsigned long long n)
{
    while (n > 0) {
        n = n - 1;
    }
    return n;
}
FILE
cat >src/engine/Unused.cpp <<'FILE'
bool unused()
{
    return true;
}
FILE
echo 'int length(const char* text);' >src/io/Text.h
cat >src/io/Text.cpp <<'FILE'
#include "io/Text.h"
#include "engine/Sum.h"
int length(const char* text)
{
    int result = 0;
    while (text[result] != '\0')
        result = sum(result, 1);
    return twice(result) - result;
}
char* end(char* text)
{
    return length(text) + text;
}
FILE
cat >tests/engine/tst_sum.cpp <<'FILE'
#include "engine/Sum.h"
int main()
{
    return sum(2, 3) == 5 && twice(4) == 8 && emptied(3) == 0 ? 0 : 1;
}
FILE
cat >tests/io/tst_text.cpp <<'FILE'
#include "io/Text.h"
#include <cstdio>
int main()
{
    if (length("abc") != 3)
        std::puts("FAIL!  : length");
    return 0;
}
FILE

passed=0
failed=0

# verify NAME COMMAND …: one test; the command says by its exit code whether it holds.
verify()
{
    local name=$1
    shift
    if "$@"; then
        passed=$((passed + 1))
        printf 'PASS   : %s\n' "$name"
    else
        failed=$((failed + 1))
        printf 'FAIL!  : %s\n%s\n' "$name" "$told"
    fi
}

# try FILE …: judges all mutants of the files; output without the times in $told, exit code in $code.
try()
{
    code=0
    told=$(python3 "$here/mutate.py" --jobs 2 "$@" 2>&1) || code=$?
    told=$(sed -E 's/^([a-z ]{9}) +[0-9.]+ s  /\1 /' <<<"$told")
}

tells() { grep -qxF -- "$1" <<<"$told"; }
ends_with() { [[ $code -eq $1 ]]; }

try src/engine/Sum.cpp src/engine/Sum.h
# shellcheck disable=SC2016  # the back quotes are the page's
{
    verify changedResult_isKilled tells 'killed    src/engine/Sum.cpp:6: `result = a + b;` → `result = a - b;`'
    verify comment_isNoMutant [ "$(grep -c 'Sum.cpp:4' <<<"$told")" = 0 ]
    verify lostEnd_isKilledByTheClock tells 'timed out src/engine/Sum.cpp:12: `n = n - 1;` → `n = n + 1;`'
    verify neverEntered_isKilled tells 'killed    src/engine/Sum.cpp:11: `while (n > 0) {` → `while (!(n > 0)) {`'
    verify changedHeader_isKilled tells 'killed    src/engine/Sum.h:5: `return a + a;` → `return a - a;`'
    verify overwrittenValue_survives tells 'survived  src/engine/Sum.cpp:5: `int result = 0;` → `int result = 1;`'
    verify unknownSurvivor_isTold tells 'Survivor without a reason: src/engine/Sum.cpp:5: `int result = 0;` → `int result = 1;`'
}
verify unknownSurvivor_fails ends_with 1

page()
{
    # shellcheck disable=SC2016
    printf '%s\n' '## src/engine/Sum.cpp' '' '- `int result = 0;` → `int result = 1;`' \
        '  It is overwritten.' '- `while (n > 0) {` → `while (n >= 0) {`' '  Made up.' "$@" >docs/mutation.md
}
page
try src/engine/Sum.cpp
verify reasonForADeadMutant_isTold grep -q '^Listed as a survivor, but timed out' <<<"$told"
verify survivorWithAReason_passes ends_with 0
verify score_isTold grep -q '^Mutation passed: [0-9]* of [0-9]* mutants died' <<<"$told"

# shellcheck disable=SC2016
page '- `n = n - 2;` → `n = n + 2;`' '  No such line.'
try src/engine/Sum.h
verify outdatedReason_fails ends_with 1
verify outdatedReason_isTold grep -q '^Listed in mutation.md, but no mutant: src/engine/Sum.cpp' <<<"$told"
page

try src/io/Text.cpp
# shellcheck disable=SC2016
{
    verify otherLibrary_isChanged tells \
        'killed    src/io/Text.cpp:8: `return twice(result) - result;` → `return twice(result) + result;`'
    verify printedFailure_kills grep -q '^killed .*Text.cpp:6: .*!=.*==' <<<"$told"
    verify whatDoesNotCompile_isNoMutant tells \
        'stillborn src/io/Text.cpp:12: `return length(text) + text;` → `return length(text) - text;`'
}
try src/engine/Unused.cpp
verify untestedFile_survives grep -q '^survived .*Unused.cpp:3' <<<"$told"

sed -i 's/== 5/== 6/' tests/engine/tst_sum.cpp
try src/engine/Sum.h
verify brokenTest_stops tells 'tst_engine_sum fails without any change'
printf 'Totals: %d passed, %d failed\n' "$passed" "$failed"
[[ $failed -eq 0 ]]
