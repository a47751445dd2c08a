#!/usr/bin/env bash
# Runs clang-tidy with the checks of .clang-tidy over the program's sources:
#     tools/tidy.sh [REGULAR EXPRESSION FOR FILES]
# What was clean before and has not changed is not looked at again: see tools/tidy.py.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

need_packages "${velmora_program_packages[@]}" "${velmora_test_packages[@]}" \
    "${velmora_clang_packages[@]}" clang-tidy-14 python3
lock_build
generate lint
unlock_build
wanted=${1:-^$velmora_root/src/}
mapfile -t sources < <(sed -nE 's/^ *"file": "(.*)",?$/\1/p' "$velmora_root/build/lint/compile_commands.json" |
    grep -E "$wanted" | grep -v _autogen | sort -u)
[[ ${#sources[@]} -gt 0 ]] || fail "no such source: $wanted"
python3 "$here/tidy.py" clang-tidy-14 "$velmora_root/build/lint" "${sources[@]}" >&2 ||
    fail "clang-tidy found something"
say "clang-tidy found nothing"
