#!/usr/bin/env bash
# Lets a monkey at the window: presses, keys, menus, dialogs, tabs, files, reports and undo in a
# random order (the same in every run), under the address and undefined-behaviour sanitizers, and
# checks after each event what must always hold.
#     tools/monkey.sh EVENTS
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

events=${1:-50000}
[[ $events =~ ^[1-9][0-9]*$ ]] || fail "usage: tools/monkey.sh EVENTS"
need_packages "${velmora_program_packages[@]}"
lock_build
build asan tst_ui_monkey
unlock_build
log=$velmora_root/build/asan/monkey.log
# A test function may take five minutes unless told otherwise; a million events take hours.
if ! QT_QPA_PLATFORM=offscreen QTEST_FUNCTION_TIMEOUT=864000000 VELMORA_MONKEY_EVENTS=$events \
    "$velmora_root/build/asan/bin/tst_ui_monkey" >"$log" 2>&1; then
    tail -n 60 -- "$log" >&2
    fail "The monkey failed"
fi
printf 'The monkey passed: %d events, nothing broken\n' "$events"
