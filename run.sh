#!/usr/bin/env bash
# Installs what is missing, builds Velmora Master and starts it:
#     ./run.sh [PROJECT.rig …]     or with any of the program's options (./run.sh --help)
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/tools/lib.sh"
# shellcheck source=packaging/confined-browser.sh
source "$here/packaging/confined-browser.sh"

need_packages "${velmora_program_packages[@]}"
lock_build
build release velmora-master
unlock_build
velmora_reports_for_confined_browser
# The folder was never changed: relative files are the caller's.
exec "$velmora_root/build/release/bin/velmora-master" "$@"
