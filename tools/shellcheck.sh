#!/usr/bin/env bash
# Checks all shell scripts with shellcheck.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

need_packages shellcheck
cd -- "$velmora_root"
mapfile -d '' -t files < <(shell_files)
shellcheck --external-sources "${files[@]}"
say "${#files[@]} shell scripts are clean"
