#!/usr/bin/env bash
# Reads the code without running it: clazy (levels 0 and 1) for the use of Qt, over the program and
# its tests or the folders named, and cppcheck for what compilers do not look for, over the program.
# What either finds fails the script; an exception stands in the code, beside its reason.
#     tools/static.sh [FOLDER …]     for example tools/static.sh src
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

need_packages "${velmora_program_packages[@]}" "${velmora_test_packages[@]}" \
    "${velmora_clang_packages[@]}" clazy cppcheck
lock_build
generate lint
unlock_build
cd -- "$velmora_root"

findings=$velmora_root/build/static.txt
[[ $# -gt 0 ]] || set -- src tests
mapfile -d '' -t files < <(find "$@" -name '*.cpp' -print0 | sort -z)
result=0
printf '%s\0' "${files[@]}" | xargs -0 -n 4 -P "$(nproc)" clazy-standalone -p build/lint \
    --checks=level0,level1 --header-filter='/(src|tests)/' >"$findings" 2>&1 || result=$?
cppcheck --quiet -j "$(nproc)" --std=c++17 --library=qt --enable=warning,performance,portability \
    --inline-suppr --error-exitcode=1 -I src src >>"$findings" 2>&1 || result=$?
if [[ $result -ne 0 ]]; then
    cat -- "$findings" >&2
    fail "clazy or cppcheck found something"
fi
printf 'Static analysis passed: clazy over %d files, cppcheck over src, nothing found\n' "${#files[@]}"
