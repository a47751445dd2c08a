#!/usr/bin/env bash
# Writes docs/verification.md: textbook cases, the program's figures for them, and the difference.
#     tools/verification.sh [--check]     --check: writes nothing, fails where the page is out of date
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

need_packages "${velmora_program_packages[@]}"
lock_build
build debug verification
unlock_build
program=$velmora_root/build/debug/bin/verification
page=$velmora_root/docs/verification.md
if [[ ${1:-} == --check ]]; then
    "$program" "$page" || fail "Verification failed"
else
    new=$(mktemp)
    trap 'rm -f -- "$new"' EXIT
    "$program" >"$new" || fail "Verification failed"
    cat -- "$new" >"$page"
fi
printf 'Verification passed: %d figures agree with the textbook\n' "$(grep -c '^| .*[0-9] |$' "$page")"
