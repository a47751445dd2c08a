#!/usr/bin/env bash
# Runs clang-tidy with the checks of .clang-tidy over the program's sources:
#     tools/tidy.sh [REGULAR EXPRESSION FOR FILES]
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

need_packages "${velmora_program_packages[@]}" "${velmora_test_packages[@]}" \
    "${velmora_clang_packages[@]}" clang-tidy-14
lock_build
generate lint
unlock_build
log=$velmora_root/build/tidy.log
if ! run-clang-tidy-14 -quiet -j "$(nproc)" -p "$velmora_root/build/lint" \
    "${1:-^$velmora_root/src/}" >"$log" 2>&1; then
    sed -E 's,\x1b\[[0-9;]*m,,g' "$log" | grep -vE '^(clang-tidy-14|[0-9]+ warnings generated)' >&2 || true
    fail "clang-tidy found something"
fi
say "clang-tidy found nothing"
