#!/usr/bin/env bash
# Whether a built program is hardened as cmake/VelmoraHardening.cmake asks for:
#     tools/hardening.sh PROGRAM [COMPILE_COMMANDS]
# PROGRAM is an executable file; COMPILE_COMMANDS, the compile_commands.json of its build, shows that every
# source was fortified: there may be no call in which that can be seen.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

[[ $# -ge 1 && -f $1 ]] || fail "usage: tools/hardening.sh PROGRAM [COMPILE_COMMANDS]"
program=$1
commands=${2:-}
need_packages binutils

header=$(readelf --wide --file-header --program-headers --dynamic "$program")
symbols=$(nm --dynamic "$program")
missing=()
has() { grep -qE -e "$1" <<<"$2" || missing+=("$3"); }

has 'Type: +DYN' "$header" "position-independent executable"
has 'GNU_RELRO' "$header" "read-only relocations"
has '\((FLAGS|FLAGS_1)\).*NOW' "$header" "immediate binding"
has 'GNU_STACK +[^E]*RW +' "$header" "stack without code"
has '__stack_chk_fail' "$symbols" "stack protector"
if [[ -n $commands ]]; then
    unfortified=$(sed -nE 's/^ *"command": //p' "$commands" | grep -F -e "-o src/" |
        grep -vcF -e '-D_FORTIFY_SOURCE=2' || true)
    [[ $unfortified -eq 0 ]] || missing+=("source fortification of $unfortified sources")
fi
[[ ${#missing[@]} -eq 0 ]] || fail "$program lacks:" "${missing[@]/#/    }"
say "$program is hardened"
