#!/usr/bin/env bash
# Runs the tests with real windows on an X server of their own, first without a window manager, then
# with one: focus, activation and sizes are not what they are off screen.
#     tools/xvfb.sh [OPTION OF CTEST …]
# VELMORA_PRESET chooses the build, as for ./test.sh.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

need_packages "${velmora_program_packages[@]}" "${velmora_test_packages[@]}" xvfb openbox
scratch=$(mktemp -d)
processes=()
leave()
{
    [[ ${#processes[@]} -eq 0 ]] || kill "${processes[@]}" 2>/dev/null || true
    wait
    rm -rf -- "$scratch"
}
trap leave EXIT

mkfifo "$scratch/display"
mkdir -m 700 "$scratch/session"
Xvfb -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp -noreset 3<>"$scratch/display" 2>/dev/null &
processes+=($!)
read -r -t 20 display <"$scratch/display" || fail "Xvfb does not start"
export DISPLAY=:$display XDG_RUNTIME_DIR=$scratch/session VELMORA_PLATFORM=xcb
unset WAYLAND_DISPLAY

# One at a time: windows on one screen take the focus from each other. The engine has no window.
failed=()
run()
{
    say "Tests on Xvfb, $1"
    "$velmora_root/test.sh" --parallel 1 --label-exclude '^(engine|packaging)$' "${@:2}" || failed+=("$1")
}
run "without a window manager" "$@"
openbox --sm-disable 2>/dev/null &
processes+=($!)
run "with a window manager" "$@"

[[ ${#failed[@]} -eq 0 ]] || fail "Tests failed: ${failed[*]}"
printf 'Xvfb passed: all tests with windows, with and without a window manager\n'
