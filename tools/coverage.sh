#!/usr/bin/env bash
# Runs all tests in a build that counts, prints what they execute of the program, and fails below
# what is promised: src/engine and src/io all lines and 95 % of the branches, the whole of src
# 95 % of the lines.
#     tools/coverage.sh [OPTION OF CTEST …]
# Branches that only an exception takes are not counted: the compiler adds them to every call.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

need_packages "${velmora_program_packages[@]}" "${velmora_test_packages[@]}" gcovr
lock_build
build coverage
unlock_build
folder=$velmora_root/build/coverage
find "$folder" -name '*.gcda' -delete
ctest --test-dir "$folder" --output-on-failure --no-tests=error --parallel "$(nproc)" "$@"

cd -- "$velmora_root"
# Counted once; the tables below are made of the counts.
gcovr --root . --object-directory "$folder" --filter src/ --exclude-throw-branches \
    --exclude-unreachable-branches --json "$folder/coverage.json" "$folder/src" "$folder/tests"

# table NAME OPTION …: prints the table of the folder, or fails as gcovr's options say.
table()
{
    local name=$1
    shift
    gcovr --root . --add-tracefile "$folder/coverage.json" "$@" >"$folder/$name.txt" && return
    result=failed
}

result=passed
gcovr --root . --add-tracefile "$folder/coverage.json" --txt -
gcovr --root . --add-tracefile "$folder/coverage.json" --txt - --branches --filter src/engine/ --filter src/io/
table strict --filter src/engine/ --filter src/io/ --fail-under-line 100 --fail-under-branch 95
table whole --fail-under-line 95
strict=$(grep '^TOTAL' "$folder/strict.txt")
whole=$(grep '^TOTAL' "$folder/whole.txt")
printf 'Coverage %s: engine and io %s of lines (100 %% needed), all %s (95 %% needed)\n' "$result" \
    "$(awk '{print $4}' <<<"$strict")" "$(awk '{print $4}' <<<"$whole")"
[[ $result == passed ]]
