#!/usr/bin/env bash
# Feeds the program with what no user would, under the address and undefined-behaviour sanitizers:
#     tools/fuzz.sh SECONDS
# One target opens, calculates, reports and saves project files, one types texts into every field, one
# brings back recovery files; each runs for SECONDS, all at the same time. What they learn stays in build/fuzz/corpus; an
# input that breaks something stays in build/fuzz/found and fails the script.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

seconds=${1:-60}
[[ $seconds =~ ^[1-9][0-9]*$ ]] || fail "usage: tools/fuzz.sh SECONDS"
need_packages "${velmora_program_packages[@]}" "${velmora_clang_packages[@]}"
lock_build
build fuzz
unlock_build
folder=$velmora_root/build/fuzz

# fuzz TARGET: what Qt and the font library keep for good is no leak of ours, so leaks are not
# looked for here; the tests in the sanitizer build do that.
fuzz()
{
    mkdir -p -- "$folder/corpus/$1" "$folder/found/$1"
    ASAN_OPTIONS=detect_leaks=0 "$folder/bin/fuzz_$1" -max_total_time="$seconds" -timeout=60 -rss_limit_mb=4096 -detect_leaks=0 \
        -max_len=8192 -print_final_stats=1 -dict="$velmora_root/fuzz/$1.dict" \
        -artifact_prefix="$folder/found/$1/" "$folder/corpus/$1" "$velmora_root/fuzz/corpus/$1" \
        >"$folder/$1.log" 2>&1
}

targets=(project fields recovery)
processes=()
for target in "${targets[@]}"; do
    fuzz "$target" &
    processes+=($!)
done
failed=
for i in "${!targets[@]}"; do
    wait "${processes[i]}" || failed+=" ${targets[i]}"
done
for target in $failed; do
    tail -n 60 -- "$folder/$target.log" >&2
done

executed() { sed -n 's/^stat::number_of_executed_units: *//p' "$folder/$1.log"; }
[[ -z $failed ]] || fail "Fuzzing failed:$failed (inputs in build/fuzz/found, logs in build/fuzz)"
printf 'Fuzzing passed: %s projects, %s field inputs and %s recovery files in %d s, nothing found\n' \
    "$(executed project)" "$(executed fields)" "$(executed recovery)" "$seconds"
