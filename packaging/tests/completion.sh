#!/usr/bin/env bash
# Completion offers options, project files with folders, and after --salida folders alone.
set -euo pipefail

completion=$(cd -- "$(dirname -- "$0")/.." && pwd)/velmora-master.bash-completion
library=/usr/share/bash-completion/bash_completion
if [[ ! -f $library ]]; then
    echo "bash-completion is not installed: not tried"
    exit 77
fi
set +eu # the library is not written for them
# shellcheck source=/dev/null
. "$library"
# shellcheck source=packaging/velmora-master.bash-completion
. "$completion"

scratch=$(mktemp -d)
trap 'rm -rf -- "$scratch"' EXIT
cd "$scratch" || exit 1
touch uno.rig dos.json tres.txt
mkdir carpeta

# expect EXPECTED WORD… completes the last WORD; EXPECTED is sorted, separated by blanks.
expect()
{
    local expected=$1
    shift
    COMP_WORDS=(velmora-master "$@")
    COMP_CWORD=$#
    COMP_LINE=${COMP_WORDS[*]}
    COMP_POINT=${#COMP_LINE}
    COMPREPLY=()
    _velmora_master
    local actual
    actual=$(printf '%s\n' "${COMPREPLY[@]}" | sort | paste -sd ' ')
    [[ $actual == "$expected" ]] && return
    printf '%s\n  expected: %s\n  actual:   %s\n' "${COMP_WORDS[*]}" "$expected" "$actual" >&2
    exit 1
}

# A folder before the word: outside of a terminal some versions of bash take the quotes that the
# library puts around an empty word for a part of it.
expect "./carpeta ./dos.json ./uno.rig" ./
expect "uno.rig" u
options="--contraste --csv --flecha --help --informe --json --memoria --recuperar --resumen --salida"
expect "$options --sin-contraste --sobrescribir --version" --
expect "--recuperar --resumen" --r
expect "--resumen" --res
expect "--contraste --csv" --c
expect "" --contraste --flecha 1
expect "./carpeta" --informe --salida ./
expect "./carpeta ./dos.json ./uno.rig" --informe --salida carpeta ./
expect "carpeta" --informe --salida = car
expect "" -- --r
