#!/usr/bin/env bash
# Installs what is missing, builds Velmora Master with its tests and runs them off screen:
#     ./test.sh [OPTION OF CTEST …]     for example ./test.sh -R engine
# VELMORA_PRESET chooses the build: debug (the default), optimised, clang, clang-optimised, asan or
# coverage.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/tools/lib.sh"

preset=${VELMORA_PRESET:-debug}
packages=("${velmora_program_packages[@]}" "${velmora_test_packages[@]}")
[[ $preset != clang* && $preset != coverage ]] || packages+=("${velmora_clang_packages[@]}")
need_packages "${packages[@]}"
lock_build
build "$preset"
unlock_build
exec ctest --test-dir "$velmora_root/build/$preset" --output-on-failure --no-tests=error \
    --parallel "$(nproc)" "$@"
