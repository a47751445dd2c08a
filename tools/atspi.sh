#!/usr/bin/env bash
# Reads the program over AT-SPI, as screen readers do, on an X server and a bus of its own: names, roles
# and values of what it shows, and what its canvas tells of the selection while keys are pressed.
#     tools/atspi.sh
# VELMORA_PRESET chooses the build, as for ./test.sh.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

preset=${VELMORA_PRESET:-debug}
need_packages "${velmora_program_packages[@]}" "${velmora_test_packages[@]}" "${velmora_reader_packages[@]}"
lock_build
build "$preset" velmora-master
unlock_build

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
Xvfb -displayfd 3 -screen 0 1366x768x24 -nolisten tcp -noreset 3<>"$scratch/display" 2>/dev/null &
processes+=($!)
read -r -t 20 display <"$scratch/display" || fail "Xvfb does not start"
export DISPLAY=:$display XDG_RUNTIME_DIR=$scratch/session HOME=$scratch QT_QPA_PLATFORM=xcb
unset WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS AT_SPI_BUS_ADDRESS
openbox --sm-disable 2>/dev/null &
processes+=($!)

# A reader that is at work switches accessibility on; here nobody asks for it but this variable.
QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 timeout 120 dbus-run-session -- /usr/bin/python3 -W ignore::DeprecationWarning "$here/atspi.py" \
    "$velmora_root/build/$preset/bin/velmora-master" "$velmora_root/examples/concierto.rig" ||
    fail "What a screen reader is told is not all there"
printf 'AT-SPI passed: everything has a name, and the canvas tells its selection\n'
