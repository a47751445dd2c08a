#!/usr/bin/env bash
# Changes operators, constants and conditions in src/engine, src/io and the canvas's geometry, one
# at a time, and runs the tests of that folder, which have to notice:
#     tools/mutate.sh [--sample N] [--seed S] [--jobs J] [--list] [FILE …]
# 95 % of the mutants have to die, and each survivor has to stand in docs/mutation.md with the reason
# why it may live. Builds in build/mutate.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

need_packages "${velmora_program_packages[@]}" "${velmora_test_packages[@]}" python3 lld
exec python3 "$here/mutate.py" "$@"
