#!/usr/bin/env bash
# Kills windows at random moments of random work, two over one recovery folder at a time: each time
# what comes back has to be, with its figures and to the bit, what was there at most a second before.
#     tools/kill-session.sh TIMES
# Then the same on a disk that has no room for more than a beginning: what comes back may be old there,
# but has to be whole, and the work goes on.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

times=${1:-500}
[[ $times =~ ^[1-9][0-9]*$ ]] || fail "usage: tools/kill-session.sh TIMES"
need_packages "${velmora_program_packages[@]}"
lock_build
build debug session
unlock_build
session=$velmora_root/build/debug/bin/session

# Each run works and is killed at moments of its own; this seed repeats it.
seed=${VELMORA_SEED:-$RANDOM}
result=$("$session" "$times" "$seed") || fail "$result" "Recovery failed (VELMORA_SEED=$seed)"
full=$("$session" --full $((times / 10 + 2)) "$seed") ||
    fail "$full" "Recovery failed on a full disk (VELMORA_SEED=$seed)"
printf 'Recovery passed: %s; on a full disk %s\n' "$result" "$full"
