#!/usr/bin/env bash
# Runs the tests under valgrind's memcheck: no invalid access, no use of what was never set, no
# block that is lost for good.
#     tools/valgrind.sh [OPTION OF CTEST …]     for example tools/valgrind.sh -L engine
# All tests take about half an hour of two processors. What stands in tools/valgrind.supp is
# libraries' doing. VELMORA_PRESET chooses the build, as for ./test.sh.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

preset=${VELMORA_PRESET:-debug}
# libc6-dbg: without the names in the loader valgrind cannot start a program.
need_packages "${velmora_program_packages[@]}" "${velmora_test_packages[@]}" valgrind libc6-dbg
lock_build
build "$preset"
unlock_build
folder=$velmora_root/build/$preset
logs=$folder/valgrind

options=(
    --leak-check=full --show-leak-kinds=definite --errors-for-leak-kinds=definite
    --error-exitcode=99 --num-callers=40
    # The program itself is started by its tests; the system's commands that are started are not ours.
    --trace-children=yes '--trace-children-skip=/bin/*,/usr/bin/*,/usr/sbin/*'
    # Each process has a log of its own, in a folder whose name may hold spaces.
    '--log-file=%q{VELMORA_VALGRIND_LOGS}/%p'
)
export VELMORA_VALGRIND_LOGS=$logs
# Regular expressions are interpreted: the code that they are compiled to while the program runs
# reads whole words, over the ends of texts, and belongs to no library that could be named.
export QT_ENABLE_REGEXP_JIT=0
# Time limits are for programs that run by themselves.
slowness=50
rm -rf -- "$logs"
mkdir -- "$logs"
# The tests of what surrounds an installed program start no program of ours.
if ! VELMORA_SLOWNESS=$slowness QTEST_FUNCTION_TIMEOUT=$((300000 * slowness)) \
    ctest --test-dir "$folder" -T memcheck --timeout $((120 * slowness)) --no-tests=error --parallel "$(nproc)" \
    --label-exclude packaging --output-on-failure \
    --overwrite MemoryCheckCommand="$(command -v valgrind)" \
    --overwrite MemoryCheckCommandOptions="${options[*]}" \
    --overwrite MemoryCheckSuppressionFile="$velmora_root/tools/valgrind.supp" "$@" >"$logs/tests" 2>&1; then
    for log in "$logs"/[0-9]*; do
        ! grep -qsE 'ERROR SUMMARY: [1-9]' -- "$log" || cat -- "$log" >&2
    done
    tail -n 60 -- "$logs/tests" >&2
    fail "Valgrind found something (build/$preset/valgrind)"
fi
printf 'Valgrind passed: %d tests, no invalid access and nothing lost\n' \
    "$(grep -c 'MemCheck *#.*Passed' "$logs/tests")"
