#!/usr/bin/env bash
# Checks that all C++ is laid out as .clang-format says; with --fix lays it out so.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

need_packages clang-format-14
options=(--dry-run -Werror)
[[ ${1:-} != --fix ]] || options=(-i)
cd -- "$velmora_root"
mapfile -d '' -t files < <(cxx_files)
clang-format-14 "${options[@]}" "${files[@]}"
say "The layout of ${#files[@]} files is right"
